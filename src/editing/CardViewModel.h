// The card of one event and the small pages it opens. Each page changes only the fields it owns,
// one realmDataFunc::editEventData call per field, and hands in the record as it stands in the
// store at that moment, so that a later write of the same page keeps what an earlier one changed.
// Every model follows store commits: an event deleted while a page is open reads as gone
// (exists == false) and no page writes anything for it any more.
#pragma once

#include "calendar/Calendar.h"
#include "records/Store.h"
#include "records/eventInfo.h"
#include "toolkit/StoredEventModel.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>
#include <optional>

namespace tidemark {

/// The stored event with that id, read now.
std::optional<eventInfo> storedEvent(const QString& eventId);

/// Writes one field of a stored event through realmDataFunc::editEventData, from the record as
/// it is stored now. Returns false, and writes nothing, when the event is gone.
bool writeEventField(const QString& eventId, const std::string& key, const FieldValue& value);

/// The next dates of a repeating event after `now`, earliest first, at most `limit` of them, as
/// "yyyy-MM-dd" (with " HH:mm" for a daily rule). Empty for an event that does not repeat or
/// whose series is over.
QStringList nextDateStrings(const eventInfo& event, Date now, const Calendar& calendar,
                            int limit = 3);

/// The card: colour, star, the two-step delete and the next dates of one event.
class CardViewModel : public tidemark::StoredEventModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString colorName READ colorName NOTIFY changed)
    Q_PROPERTY(bool starred READ starred NOTIFY changed)
    Q_PROPERTY(bool shared READ shared NOTIFY changed)
    Q_PROPERTY(QStringList nextDates READ nextDates NOTIFY changed)
    Q_PROPERTY(QStringList colorKeys READ colorKeys CONSTANT)
    Q_PROPERTY(bool deleteArmed READ deleteArmed NOTIFY deleteArmedChanged)
    Q_PROPERTY(bool animationToggle READ animationToggle NOTIFY animationToggleChanged)
public:
    explicit CardViewModel(QObject* parent = nullptr);

    QString title() const;
    QString colorName() const;
    bool starred() const { return event() && event()->eventStarOrNot; }
    bool shared() const { return event() && event()->eventShareOrNot; }
    QStringList nextDates() const { return nextDates_; }
    QStringList colorKeys() const;
    bool deleteArmed() const { return deleteArmed_; }
    bool animationToggle() const { return animationToggle_; }

    /// Writes "eventColorString" ("" clears the colour). False when the event is gone.
    Q_INVOKABLE bool setColor(const QString& colorKey);
    /// Writes "eventStarOrNot" as the opposite of its stored value and flips animationToggle.
    Q_INVOKABLE bool toggleStar();
    /// The trash button: arms the delete; the xmark button disarms it.
    Q_INVOKABLE void armDelete();
    Q_INVOKABLE void disarmDelete();
    /// Deletes the event if the delete is armed and the event still exists; true when it did.
    Q_INVOKABLE bool confirmDelete();

signals:
    void deleteArmedChanged();
    void animationToggleChanged();

protected:
    void eventLoaded() override;
    void eventIdSet() override { setDeleteArmed(false); }

private:
    void setDeleteArmed(bool armed);

    QStringList nextDates_;
    bool deleteArmed_ = false;
    bool animationToggle_ = false;
};

/// The title and content page: filled from the record when the event is set; the save writes
/// "eventTitle" and then "eventContent", each only if it differs from the record.
class EditEventTitleContentModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString eventId READ eventId WRITE setEventId NOTIFY eventIdChanged)
    Q_PROPERTY(bool exists READ exists NOTIFY existsChanged)
    Q_PROPERTY(QString titleForEvent READ titleForEvent WRITE setTitleForEvent NOTIFY inputChanged)
    Q_PROPERTY(
        QString contentForEvent READ contentForEvent WRITE setContentForEvent NOTIFY inputChanged)
    Q_PROPERTY(bool canSave READ canSave NOTIFY inputChanged)
public:
    explicit EditEventTitleContentModel(QObject* parent = nullptr);

    QString eventId() const { return eventId_; }
    void setEventId(const QString& eventId);
    bool exists() const { return exists_; }
    QString titleForEvent() const { return title_; }
    void setTitleForEvent(const QString& title);
    QString contentForEvent() const { return content_; }
    void setContentForEvent(const QString& content);
    bool canSave() const { return exists_ && !title_.isEmpty(); }

    /// Fills the fields from the stored record.
    Q_INVOKABLE void load();
    /// Writes what changed; false (nothing written) while the title is empty or the event is gone.
    Q_INVOKABLE bool save();

signals:
    void eventIdChanged();
    void existsChanged();
    void inputChanged();

private:
    void setExists(bool exists);

    QString eventId_;
    QString title_;
    QString content_;
    bool exists_ = false;
    Results<eventInfo> eventInfoData_;
    ObservationToken observation_;
};

/// The start date page: a start picker and, only for an event with an end date, an end picker
/// that cannot go before the start or past 3000-12-31. The save writes the three start fields
/// and then, with an end date, the three end fields, each even if only another changed.
class EditEventStartDateModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString eventId READ eventId WRITE setEventId NOTIFY eventIdChanged)
    Q_PROPERTY(bool exists READ exists NOTIFY recordChanged)
    Q_PROPERTY(bool hasEndDate READ hasEndDate NOTIFY recordChanged)
    Q_PROPERTY(int startYear READ startYear NOTIFY pickersChanged)
    Q_PROPERTY(int startMonth READ startMonth NOTIFY pickersChanged)
    Q_PROPERTY(int startDay READ startDay NOTIFY pickersChanged)
    Q_PROPERTY(int endYear READ endYear NOTIFY pickersChanged)
    Q_PROPERTY(int endMonth READ endMonth NOTIFY pickersChanged)
    Q_PROPERTY(int endDay READ endDay NOTIFY pickersChanged)
    Q_PROPERTY(QString startText READ startText NOTIFY pickersChanged)
    Q_PROPERTY(QString endText READ endText NOTIFY pickersChanged)
    Q_PROPERTY(bool differs READ differs NOTIFY pickersChanged)
public:
    explicit EditEventStartDateModel(QObject* parent = nullptr);

    QString eventId() const { return eventId_; }
    void setEventId(const QString& eventId);
    bool exists() const { return record_.has_value(); }
    bool hasEndDate() const { return record_ && record_->eventHaveEndDateOrNot; }
    int startYear() const { return start_.year; }
    int startMonth() const { return start_.month; }
    int startDay() const { return start_.day; }
    int endYear() const { return end_.year; }
    int endMonth() const { return end_.month; }
    int endDay() const { return end_.day; }
    QString startText() const;
    QString endText() const;
    /// Whether a shown picker differs from the record (the save is offered only then).
    bool differs() const;

    /// Sets a picker; the day is kept within the month and the end within its range.
    Q_INVOKABLE void setStartDate(int year, int month, int day);
    Q_INVOKABLE void setEndDate(int year, int month, int day);
    /// The days of a month of the current calendar.
    Q_INVOKABLE int daysInMonth(int year, int month) const;
    /// Sets both pickers from the record's numbers.
    Q_INVOKABLE void reset();
    /// Writes the fields in order; false (nothing written) while no picker differs or the event
    /// is gone.
    Q_INVOKABLE bool save();

    struct Day {
        int year = 0;
        int month = 0;
        int day = 0;
        bool operator==(const Day&) const = default;
        /// Calendar order.
        bool operator<(const Day& other) const {
            return year != other.year     ? year < other.year
                   : month != other.month ? month < other.month
                                          : day < other.day;
        }
    };

signals:
    void eventIdChanged();
    void recordChanged();
    void pickersChanged();

private:
    /// The day that the record's numbers compose to; numbers that don't compose stop the program.
    static Day composedDay(std::int64_t year, std::int64_t month, std::int64_t day);
    Day clamped(Day day) const;
    Day recordStart() const;
    Day recordEnd() const;
    void readRecord();

    QString eventId_;
    std::optional<eventInfo> record_;
    Day start_;
    Day end_;
    Results<eventInfo> eventInfoData_;
    ObservationToken observation_;
};

/// The share page: the event's share switch and the group that its eventShareGroupId names.
class EditShareSettingModel : public tidemark::StoredEventModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool shareOn READ shareOn NOTIFY changed)
    Q_PROPERTY(QString shareGroupId READ shareGroupId NOTIFY changed)
    Q_PROPERTY(bool groupFound READ groupFound NOTIFY changed)
    Q_PROPERTY(QString groupTitle READ groupTitle NOTIFY changed)
public:
    explicit EditShareSettingModel(QObject* parent = nullptr);

    bool shareOn() const { return shareOn_; }
    QString shareGroupId() const { return groupId_; }
    bool groupFound() const { return groupFound_; }
    QString groupTitle() const { return groupTitle_; }

protected:
    void eventLoaded() override;

private:
    bool shareOn_ = false;
    QString groupId_;
    bool groupFound_ = false;
    QString groupTitle_;
    Results<shareGroup> groups_;
    ObservationToken groupObservation_;
};

} // namespace tidemark
