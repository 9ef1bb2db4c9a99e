// The date book as an iCalendar file (RFC 5545): one VEVENT per event. A rule goes out as an
// RRULE only where the RRULE gives exactly the days the engine gives over the next years (it is
// expanded and compared before it is written); any other repeating event goes out as the
// explicit dates the engine computes for that time, and the summary counts those.
#pragma once

#include "calendar/Calendar.h"
#include "records/eventInfo.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tidemark {

struct CalendarExportSummary {
    std::size_t events = 0;
    /// Repeating events written as an RRULE.
    std::size_t asRule = 0;
    /// Events of one date (no repeat rule).
    std::size_t singleDates = 0;
    /// Repeating events written as their dates of the next years.
    std::size_t asDates = 0;
};

struct CalendarExport {
    std::string text;
    CalendarExportSummary summary;
};

/// The iCalendar text of the events, in their order. Memos of an event follow its content in
/// the DESCRIPTION. Times are in the calendar's time zone; `now` fixes the years that are checked
/// and, for rules without an RRULE form, written out.
CalendarExport exportCalendar(const std::vector<eventInfo>& events,
                              const std::vector<memoDataForNotiObject>& memos, Date now,
                              const Calendar& calendar);

/// The property that carries the app's own rule of a repeating event, so that importing the file
/// again restores the rule exactly (as long as the file's dates are still the rule's).
inline constexpr const char* kOwnRuleProperty = "X-TIDEMARK-RULE";

} // namespace tidemark
