// Reading calendar files (iCalendar, RFC 5545) and contact files (vCard) into new events. An
// import is planned first and applied after: the plan lists what would be added and what is left
// out and why, and nothing in it touches the store. A file that can't be read gives an error and
// no events at all.
#pragma once

#include "calendar/Calendar.h"
#include "records/eventInfo.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// The display texts that end up in imported events; "%1" stands for the variable part.
struct ImportTexts {
    std::string birthdayTitle = "%1's birthday";
    std::string anniversaryTitle = "%1's anniversary";
    /// Added to the content of a series that became one date: %1 is the source's rule.
    std::string firstDateNote = "Repeats in the original calendar: %1";
    std::string datesRule = "on dates of its own";
};

struct ImportedEvent {
    enum class Kind {
        rule,          ///< a series with a rule of the app
        singleDate,    ///< an event of one date
        firstDateOnly, ///< a series that no rule of the app matches: its first date, with a note
        birthday,      ///< a yearly event from a contact's birthday
        anniversary,   ///< a yearly event from a contact's anniversary
    };
    eventObject event;
    Kind kind = Kind::singleDate;
};

struct SkippedItem {
    enum class Reason {
        alreadyThere,      ///< imported before (or exported from this date book)
        notAnEvent,        ///< a task, journal entry or other non-event
        changedOccurrence, ///< a changed single date of a series
        cancelled,
        noDate, ///< an event without a start, a contact without a birthday or anniversary
        unreadableDate,
    };
    std::string name;
    Reason reason = Reason::noDate;
};

struct ImportPlan {
    /// Set when the file can't be read; then there is nothing to add.
    std::string error;
    std::vector<ImportedEvent> events;
    std::vector<SkippedItem> skipped;

    std::size_t count(ImportedEvent::Kind kind) const;
};

/// Plans the import of a calendar or contact file (told apart by its content). `existing` are the
/// events of the date book, for recognising what was imported before.
ImportPlan planImport(std::string_view text, const std::vector<eventInfo>& existing,
                      const ImportTexts& texts, Date now, const Calendar& calendar);

} // namespace tidemark
