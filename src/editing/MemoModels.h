// The memos of one event: the list of its memo cards and the form that adds or edits one.
#pragma once

#include "calendar/Calendar.h"
#include "engine/computeFunc.h"
#include "records/Defaults.h"
#include "records/Store.h"
#include "records/eventInfo.h"

#include <QAbstractListModel>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>
#include <optional>
#include <vector>

namespace tidemark {

/// The moment that a memo's stamp ("yyyy-MM-dd / HH:mm") names in the current calendar, or none
/// for a stamp of another shape.
std::optional<Date> memoStampDate(const std::string& timeStamp);

/// The memo cards of an event, ordered by memoItemsForEvent: with ascendingForList set the newest
/// stamp comes first. Rebuilt when the event is set, when the order changes and after every
/// committed write to the memos.
class MemoListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString eventId READ eventId WRITE setEventId NOTIFY eventIdChanged)
    Q_PROPERTY(bool ascendingForList READ ascendingForList NOTIFY ascendingForListChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(QStringList memoIds READ memoIds NOTIFY countChanged)
public:
    enum Role { ItemIdRole = Qt::UserRole + 1, MemoIdRole, TitleRole, ContentRole, DateTextRole };

    explicit MemoListModel(QObject* parent = nullptr);

    QString eventId() const { return eventId_; }
    void setEventId(const QString& eventId);
    bool ascendingForList() const { return ascendingForList_.get(); }
    int count() const { return static_cast<int>(rows_.size()); }
    /// The memoIds in list order.
    QStringList memoIds() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Asks memoItemsForEvent again.
    Q_INVOKABLE void rebuild();
    /// Flips ascendingForList and rebuilds.
    Q_INVOKABLE void toggleOrder();
    /// Removes the memo's card, then deletes the memo from the store. No confirmation.
    Q_INVOKABLE void deleteMemo(const QString& memoId);

signals:
    void eventIdChanged();
    void ascendingForListChanged();
    void countChanged();

private:
    struct Row {
        stackMemoItem item;
        memoDataForNotiObject memo;
    };
    QString eventId_;
    std::vector<Row> rows_;
    Setting<bool> ascendingForList_{"UI_User_AscendingForListAtMemoForCardViewPage", false};
    Results<memoDataForNotiObject> memoData_;
    ObservationToken memoObservation_;
    ObservationToken orderObservation_;
};

/// The add and edit form of a memo (the half-height sheet and the centred popup share it).
class MemoEditorModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString eventId READ eventId WRITE setEventId NOTIFY changed)
    Q_PROPERTY(QString memoId READ memoId NOTIFY changed)
    Q_PROPERTY(bool editOrAddNewMemoStatu READ editMode NOTIFY changed)
    Q_PROPERTY(
        QString titleForEventMemo READ titleForEventMemo WRITE setTitleForEventMemo NOTIFY changed)
    Q_PROPERTY(QString contentForEventMemo READ contentForEventMemo WRITE setContentForEventMemo
                   NOTIFY changed)
    Q_PROPERTY(int year READ year NOTIFY changed)
    Q_PROPERTY(int month READ month NOTIFY changed)
    Q_PROPERTY(int day READ day NOTIFY changed)
    Q_PROPERTY(int hour READ hour NOTIFY changed)
    Q_PROPERTY(int minute READ minute NOTIFY changed)
    Q_PROPERTY(QString dateText READ dateText NOTIFY changed)
    Q_PROPERTY(bool canSave READ canSave NOTIFY changed)
public:
    explicit MemoEditorModel(QObject* parent = nullptr);

    QString eventId() const { return eventId_; }
    void setEventId(const QString& eventId);
    QString memoId() const { return memoId_; }
    bool editMode() const { return editMode_; }
    QString titleForEventMemo() const { return title_; }
    void setTitleForEventMemo(const QString& title);
    QString contentForEventMemo() const { return content_; }
    void setContentForEventMemo(const QString& content);
    int year() const;
    int month() const;
    int day() const;
    int hour() const;
    int minute() const;
    /// The memo's date as "yyyy-MM-dd / HH:mm".
    QString dateText() const;
    /// A title is needed; an edit must also change the title, the content or the date.
    bool canSave() const;

    /// Add mode: empty title and content, the date now (to the minute), no memoId yet.
    Q_INVOKABLE void startAdd();
    /// Edit mode: the memo's values, also kept as the before-edit values. False for an unknown
    /// memo.
    Q_INVOKABLE bool startEdit(const QString& memoId);
    /// Sets the date; out-of-range numbers carry over as the calendar composes them.
    Q_INVOKABLE void setDate(int year, int month, int day, int hour, int minute);
    Q_INVOKABLE int daysInMonth(int year, int month) const;
    /// Writes the memo through addMemoData (a new memoId in add mode); false, nothing written,
    /// while canSave is false.
    Q_INVOKABLE bool save();

signals:
    void changed();

private:
    DateComponents parts() const;

    QString eventId_;
    QString memoId_;
    bool editMode_ = false;
    QString title_;
    QString content_;
    Date date_;
    QString titleBeforeEdit_;
    QString contentBeforeEdit_;
    Date dateBeforeEdit_;
};

} // namespace tidemark
