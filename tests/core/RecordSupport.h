// Shared pieces of the core tests that work with records: event values built from their rule,
// sample events and memos, writing records to the default store and naming them by id.
#pragma once

#include "TestSupport.h"
#include "records/DayListArchive.h"
#include "records/Defaults.h"
#include "records/EventJson.h"
#include "records/SettingsKeys.h"
#include "records/Store.h"
#include "records/eventInfo.h"

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

namespace tidemark::testing {

/// An event of `type` (0 one-off, 1 daily, 2 weekly, 3 monthly, 4 yearly) from a start date.
inline EventFields makeEvent(std::int64_t type, std::int64_t year, std::int64_t month,
                             std::int64_t day) {
    EventFields e;
    e.eventId = "event";
    e.eventTitle = "Title";
    e.eventType = type;
    e.eventRepeatOrNot = type != 0;
    e.eventStartDateYear = year;
    e.eventStartDateMonth = month;
    e.eventStartDateDay = day;
    return e;
}

inline EventFields dailyEvent(std::int64_t year, std::int64_t month, std::int64_t day,
                              std::int64_t hour, std::int64_t minute) {
    EventFields e = makeEvent(1, year, month, day);
    e.eventDateWhenEveryDayHour = hour;
    e.eventDateWhenEveryDayMin = minute;
    return e;
}

inline EventFields weeklyEvent(std::int64_t year, std::int64_t month, std::int64_t day,
                               const std::vector<std::int64_t>& codes) {
    EventFields e = makeEvent(2, year, month, day);
    e.eventDateWhenEveryWeek = encodeDayListArchive(codes);
    return e;
}

inline EventFields monthlyEvent(std::int64_t year, std::int64_t month, std::int64_t day,
                                const std::vector<std::int64_t>& codes) {
    EventFields e = makeEvent(3, year, month, day);
    e.eventDateWhenEveryMonth = encodeDayListArchive(codes);
    return e;
}

inline EventFields withStep(EventFields e, std::int64_t skippedUnits) {
    e.eventHaveCustomizeInterval = true;
    e.eventDateWhenCustomizeRepeatTimes = skippedUnits;
    return e;
}

inline EventFields withEnd(EventFields e, std::int64_t year, std::int64_t month, std::int64_t day) {
    e.eventHaveEndDateOrNot = true;
    e.eventEndDateYear = year;
    e.eventEndDateMonth = month;
    e.eventEndDateDay = day;
    return e;
}

/// `fields` as a store record named `id`.
inline eventInfo stored(const std::string& id, EventFields fields) {
    fields.eventId = id;
    fields.eventTitle = "Event " + id;
    return eventAs<eventInfo>(fields);
}

/// A monthly event with a value in every kind of field: a flag set and one clear, an empty and
/// a filled blob, a negative number and a reserved text.
inline eventObject sampleEvent(const std::string& id, const std::string& title = "Title") {
    eventObject e;
    e.eventId = id;
    e.eventTitle = title;
    e.eventContent = "Content";
    e.eventStartDateYear = 2026;
    e.eventStartDateMonth = 3;
    e.eventStartDateDay = 10;
    e.eventRepeatOrNot = true;
    e.eventType = 3;
    e.eventDateWhenEveryMonth = {0x62, 0x70, 0x6c, 0x69, 0x73, 0x74};
    e.eventStarOrNot = true;
    e.eventNotiId = id + "@@n";
    e.eventColorString = "colorForUserSelection02";
    e.backupDataType01 = -7;
    e.backupDataType02 = "kept in the store";
    return e;
}

inline memoDataForNotiObject sampleMemo(const std::string& id, const std::string& title,
                                        const std::string& eventId = "E1",
                                        const std::string& timeStamp = "2026-03-10 / 08:00") {
    return {id, eventId, timeStamp, title, "Body", 0, "", ""};
}

/// Adds `records` in one write, to the default store unless another is given.
template <class R> void storeAll(const std::vector<R>& records, Store store = Store::open()) {
    store.write([&] {
        for (const R& record : records) {
            store.add(record);
        }
    });
}

template <class R> void storeAll(std::initializer_list<R> records) {
    storeAll(std::vector<R>(records));
}

/// The ids of records in order: memo ids for memos, event ids for events.
template <class R> std::vector<std::string> idsOf(const std::vector<R>& records) {
    std::vector<std::string> ids;
    for (const R& record : records) {
        if constexpr (requires { record.memoId; }) {
            ids.push_back(record.memoId);
        } else {
            ids.push_back(record.eventId);
        }
    }
    return ids;
}

/// The widget data as the app last published it in the shared suite, or nothing.
inline std::optional<std::string> publishedWidgetData() {
    auto* suite = DefaultsSuite::named(kSharedSuiteName);
    const auto value = suite ? suite->value(kWidgetDataKey) : std::nullopt;
    const auto* bytes = value ? std::get_if<Bytes>(&*value) : nullptr;
    return bytes ? std::optional<std::string>(std::in_place, bytes->begin(), bytes->end())
                 : std::nullopt;
}

/// The published events, decoded; none when there is no data or it can't be read.
inline std::vector<eventObjectAtWidget> publishedEvents() {
    const auto data = publishedWidgetData();
    return data ? decodeWidgetEventArray(*data).value_or(std::vector<eventObjectAtWidget>{})
                : std::vector<eventObjectAtWidget>{};
}

} // namespace tidemark::testing
