// A seeded mix of events of every kind the date book stores, for the calendar-file check and
// benchmark: all repeat types, steps, week and month codes (the last-day code and codes some
// months lack included), end dates before and after the start, start days past a month's end,
// reminders of every lead time, colours and memos.
#pragma once

#include "calendar/Calendar.h"
#include "records/eventInfo.h"

#include <cstdint>
#include <vector>

namespace tidemark::testing {

struct EventMix {
    std::vector<eventInfo> events;
    std::vector<memoDataForNotiObject> memos;
};

/// `count` events starting within six years before and two after `now`.
EventMix makeEventMix(std::uint64_t seed, std::size_t count, Date now, const Calendar& calendar);

} // namespace tidemark::testing
