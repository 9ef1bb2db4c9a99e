// The timeline's rows as a list model: filteredEventList over the store's events under the three
// persisted filter settings, without the rows of ended events when those are hidden. It reads the
// store again after every committed write to the events table and after every write of one of the
// filter settings, whoever made it.
#pragma once

#include "browsing/TimelineList.h"
#include "records/Defaults.h"
#include "records/Store.h"
#include "records/eventInfo.h"

#include <QAbstractListModel>
#include <QString>
#include <QtQml/qqmlregistration.h>
#include <vector>

namespace tidemark {

class FilteredEventListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    /// The number of rows drawn.
    Q_PROPERTY(int count READ count NOTIFY rowsChanged)
    /// True when the filtered list itself is empty (the "nothing here" box).
    Q_PROPERTY(bool showEmptyBox READ showEmptyBox NOTIFY rowsChanged)
    /// The kind menu's title for the current kind setting ("" for an unknown value).
    Q_PROPERTY(QString kindMenuTitle READ kindMenuTitle NOTIFY rowsChanged)
    Q_PROPERTY(int showWhichKindEventSelection READ showWhichKindEventSelection NOTIFY rowsChanged)
    /// True: one row per item of the filtered list, ended events included (the card stacks);
    /// false: the timeline's rows.
    Q_PROPERTY(bool allItems READ allItems WRITE setAllItems NOTIFY allItemsChanged)
public:
    enum Role { EventIdRole = Qt::UserRole + 1, ItemIdRole };

    explicit FilteredEventListModel(QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int count() const { return static_cast<int>(rows_.size()); }
    bool showEmptyBox() const { return showEmptyBox_; }
    QString kindMenuTitle() const;
    int showWhichKindEventSelection() const {
        return static_cast<int>(filter_.showWhichKindEventSelection);
    }

    bool allItems() const { return allItems_; }
    void setAllItems(bool allItems);

    /// The eventIds of the rows, in order (for tests and for screens that want the whole list).
    Q_INVOKABLE QStringList eventIds() const;

    /// Reads the settings and the store again.
    Q_INVOKABLE void reload();

signals:
    void rowsChanged();
    void allItemsChanged();

private:
    Setting<std::int64_t> showWhichKindEventSelection_{"TL_UIOptions_showWhichKindEventSelection",
                                                       9};
    Setting<std::string> filterSelectionFromUserForColorString_{
        "ALL_APP_filterSelectionFromUserForColorString", "-"};
    Setting<bool> timelineViewShowEndEventOrNot_{"TL_UIOptions_timelineViewShowEndEventOrNot",
                                                 true};
    Results<eventInfo> eventInfoData_;
    std::vector<ObservationToken> observations_;

    TimelineFilter filter_;
    std::vector<stackCardItem> rows_;
    bool showEmptyBox_ = true;
    bool allItems_ = false;
};

} // namespace tidemark
