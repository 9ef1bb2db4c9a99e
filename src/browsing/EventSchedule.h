// The schedule page of one event (timelineEventSchedulePage): its coming dates as text, kept in
// the page's state, and the next-few-days page (nextFewDaysEventView), which shows a short
// loading spinner and then an empty page; its day operations are here for a list of the coming
// days.
#pragma once

#include "calendar/Calendar.h"
#include "records/eventInfo.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>
#include <cstdint>
#include <vector>

namespace tidemark {

/// Each occurrence composed and formatted, in the list's order: "yyyy-MM-dd / HH:mm" for a daily
/// rule (`eventType` 1), "yyyy-MM-dd" otherwise. An occurrence that does not compose is a fatal
/// stop.
QStringList scheduleDateStrings(std::int64_t eventType, const std::vector<DateComponents>& dates,
                                const Calendar& calendar);

/// Today's year, month and day + `offset`, composed and formatted with `pattern`; a day that
/// does not compose is a fatal stop.
QString dateStringForDayOffset(std::int64_t offset, Date now, const Calendar& calendar);
/// The same with the weekday's full name ("EEEE").
QString weekdayStringForDayOffset(std::int64_t offset, Date now, const Calendar& calendar);

/// The page's state: the event's coming dates as text. Every load appends a full run, so a page
/// that appears again (after the card it opened closes) holds the texts twice.
class EventScheduleModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString eventId READ eventId WRITE setEventId NOTIFY eventIdChanged)
    Q_PROPERTY(QStringList dateStringInfo READ dateStringInfo NOTIFY dateStringInfoChanged)
public:
    explicit EventScheduleModel(QObject* parent = nullptr);

    QString eventId() const { return eventId_; }
    void setEventId(const QString& eventId);
    QStringList dateStringInfo() const { return dateStringInfo_; }

    /// Takes the occurrence list of the event by its type and appends its texts.
    Q_INVOKABLE void loadEventSchedule();

signals:
    void eventIdChanged();
    void dateStringInfoChanged();

private:
    QString eventId_;
    QStringList dateStringInfo_;
};

/// The day numbers of the next-few-days page and its day texts.
class NextFewDaysModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QVariantList numArrayForLoading READ numArrayForLoading WRITE setNumArrayForLoading
                   NOTIFY numArrayForLoadingChanged)
public:
    explicit NextFewDaysModel(QObject* parent = nullptr);

    QVariantList numArrayForLoading() const { return numArrayForLoading_; }
    void setNumArrayForLoading(const QVariantList& numbers);

    Q_INVOKABLE QString dateStringForDayOffset(int offset) const;
    Q_INVOKABLE QString weekdayStringForDayOffset(int offset) const;
    /// Appends the next day number every 0.2 s until the list holds eight.
    Q_INVOKABLE void loadNextDayNumber();

signals:
    void numArrayForLoadingChanged();

private:
    QVariantList numArrayForLoading_;
};

} // namespace tidemark
