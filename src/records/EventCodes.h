// The coded integers that events store, by name. The stored values never change; these names
// only say what each one means where the code tests for it.
#pragma once

#include "records/eventInfo.h"

#include <cstdint>

namespace tidemark {

/// What an event repeats by: the stored `eventType`. `none` has two readings: a day query sees
/// one date only, while the occurrence lists treat it like `yearly` (its anniversaries).
enum class RepeatType : std::int64_t { none = 0, daily = 1, weekly = 2, monthly = 3, yearly = 4 };

/// The event's repeat type. A stored value outside 0 to 4 stays as it is and matches no name.
constexpr RepeatType repeatTypeOf(const EventFields& event) {
    return RepeatType{event.eventType};
}
constexpr RepeatType repeatTypeOf(std::int64_t storedType) {
    return RepeatType{storedType};
}
constexpr std::int64_t storedValue(RepeatType type) {
    return static_cast<std::int64_t>(type);
}

/// The month-day code for "the last day of the month", whatever its number.
inline constexpr std::int64_t kLastDayOfMonthCode = 99;

/// The reminder lead-time code that means "none chosen yet"; it never reaches the store of a
/// valid event.
inline constexpr std::int64_t kNoNotiCode = 10;

} // namespace tidemark
