// Shared helpers of the shell's tests: events to seed the store with.
#pragma once

#include "records/DayListArchive.h"
#include "records/realmDataFunc.h"

#include <QStringList>
#include <functional>
#include <string>

namespace tidemark::testing {

/// An event without repeat rule on one day, with a colour ("" for none).
inline eventObject dayEvent(const std::string& id, const std::string& title, int year, int month,
                            int day, const std::string& color = "") {
    eventObject event;
    event.eventId = id;
    event.eventTitle = title;
    event.timeStampGenerate = "20260101000000";
    event.eventStartDateYear = year;
    event.eventStartDateMonth = month;
    event.eventStartDateDay = day;
    event.eventColorString = color;
    return event;
}

/// A one-off event on 10 March 2026 titled by its id, changed by `edit`.
inline eventInfo makeEvent(std::string id, std::string stamp,
                           const std::function<void(eventInfo&)>& edit = {}) {
    eventInfo e;
    e.eventId = std::move(id);
    e.eventTitle = e.eventId;
    e.timeStampGenerate = std::move(stamp);
    e.eventStartDateYear = 2026;
    e.eventStartDateMonth = 3;
    e.eventStartDateDay = 10;
    if (edit) {
        edit(e);
    }
    return e;
}

/// A repeating event of `type` that ended on `endDay` March 2026.
inline eventInfo endedEvent(std::string id, std::string stamp, std::int64_t type, int endDay) {
    return makeEvent(std::move(id), std::move(stamp), [&](eventInfo& e) {
        e.eventRepeatOrNot = true;
        e.eventType = type;
        e.eventHaveEndDateOrNot = true;
        e.eventEndDateYear = 2026;
        e.eventEndDateMonth = 3;
        e.eventEndDateDay = endDay;
    });
}

/// One event of every kind: one-off, daily, weekly, monthly, yearly, starred, with memo and
/// reminder marks, an ended one, and colours across the palette.
inline void seedEventsOfEveryKind() {
    realmDataFunc data;
    auto oneOff = dayEvent("E1", "Dentist appointment", 2026, 3, 12, "colorForUserSelection01");
    oneOff.eventContent = "Bring the insurance card.";
    data.addEventData(oneOff);

    auto daily = dayEvent("E2", "Evening walk", 2026, 2, 1, "colorForUserSelection03");
    daily.eventRepeatOrNot = true;
    daily.eventType = 1;
    daily.eventDateWhenEveryDayHour = 19;
    daily.eventDateWhenEveryDayMin = 30;
    daily.eventNotiOrNot = true;
    data.addEventData(daily);

    auto weekly = dayEvent("E3", "Choir rehearsal", 2026, 1, 6, "colorForUserSelection04");
    weekly.eventRepeatOrNot = true;
    weekly.eventType = 2;
    weekly.eventDateWhenEveryWeek = encodeDayListArchive({2, 4});
    weekly.eventStarOrNot = true;
    data.addEventData(weekly);

    auto monthly = dayEvent("E4", "Pay the rent", 2025, 11, 1, "colorForUserSelection02");
    monthly.eventRepeatOrNot = true;
    monthly.eventType = 3;
    monthly.eventDateWhenEveryMonth = encodeDayListArchive({1, 15});
    monthly.eventHaveMemoOrNot = true;
    data.addEventData(monthly);

    auto yearly = dayEvent("E5", "Mira's birthday", 1990, 3, 20, "colorForUserSelection05");
    yearly.eventRepeatOrNot = true;
    yearly.eventType = 4;
    yearly.eventStarOrNot = true;
    data.addEventData(yearly);

    auto ended = dayEvent("E6", "Winter course", 2026, 1, 5, "-");
    ended.eventRepeatOrNot = true;
    ended.eventType = 2;
    ended.eventDateWhenEveryWeek = encodeDayListArchive({1});
    ended.eventHaveEndDateOrNot = true;
    ended.eventEndDateYear = 2026;
    ended.eventEndDateMonth = 3;
    ended.eventEndDateDay = 2;
    data.addEventData(ended);

    data.addEventData(dayEvent("E7", "Tax return due", 2026, 3, 20, ""));
    data.addEventData(dayEvent("E8", "Concert", 2026, 3, 20, "colorForUserSelection07"));
}

} // namespace tidemark::testing
