// The plain rules behind the repeat and reminder editors: how a tap changes a weekday or
// month-day selection, when a repeat rule is complete, which lead-time codes each repeat type
// offers, and which single-field writes an edited rule makes to its stored event. No Qt here, so
// that the rules can be checked on their own.
#pragma once

#include "records/EventCodes.h"
#include "records/Store.h"
#include "records/eventInfo.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// A weekday (1 Monday .. 7 Sunday) or month-day (1 .. 31, 99 the last day) selection, in tap
/// order, without duplicates.
using DayList = std::vector<std::int64_t>;

/// Appends `code`, or removes it at its first index when it is already there.
void toggleDayCode(DayList& list, std::int64_t code);

/// True when 1, 2, 3, 4, 5 stand in the list as one unbroken run in this order.
bool weekdayShortcutLit(const DayList& week);

/// The Monday-to-Friday shortcut: when lit, removes 1 to 5 wherever they stand; otherwise removes
/// any of them and appends 1, 2, 3, 4, 5 in order. Other codes keep their places.
void tapWeekdayShortcut(DayList& week);

/// A tap on a day cell: toggles the code; selecting 29, 30 or 31 drops 99, selecting 99 drops 29,
/// 30 and 31. Deselecting never touches another code.
void tapMonthDay(DayList& month, std::int64_t code);

/// A rule can be confirmed: every day or every year, or a weekly or monthly rule with at least
/// one day chosen.
bool repeatRuleComplete(std::int64_t type, const DayList& week, const DayList& month);

/// Rows of the interval wheel for a repeat type (1 to N), 0 for no type.
int intervalRowCount(std::int64_t type);
/// The unit text key shown behind the wheel's number; "" for no type.
const char* intervalUnitKey(std::int64_t type);

/// `notiByEventType`: the lead-time codes offered for a repeat type, in display order. A type
/// outside 0 to 4 offers nothing.
const std::vector<std::int64_t>& notiByEventType(std::int64_t type);
/// The text key of a lead-time code (from notiFunc's `notiSelectionStringForEvent`), "" for 10
/// and unknown codes.
std::string notiCodeKey(std::int64_t code);
/// Codes 4 to 9 fire at a time of day, which the page asks for.
bool notiCodeNeedsTime(std::int64_t code);
bool notiCodeOffered(std::int64_t type, std::int64_t code);

/// The editable copy of an event's repeat rule, with the interval as the wheel shows it (the
/// stored interval minus one) and the end date.
struct RepeatRuleDraft {
    std::int64_t type = 0;
    std::int64_t hour = 0;
    std::int64_t minute = 0;
    DayList week;
    DayList month;
    std::int64_t startYear = 0;
    std::int64_t startMonth = 0;
    std::int64_t startDay = 0;
    bool intervalOn = false;
    std::int64_t intervalValue = 0;
    bool endDateOn = false;
    std::int64_t endYear = 0;
    std::int64_t endMonth = 0;
    std::int64_t endDay = 0;

    bool operator==(const RepeatRuleDraft&) const = default;
};

/// The draft of a stored event; undecodable lists stop with "Can't encode data: ".
RepeatRuleDraft repeatDraftOf(const eventInfo& event);

/// One write through realmDataFunc::editEventData: a field name and its new value.
struct FieldWrite {
    std::string key;
    FieldValue value;
    bool operator==(const FieldWrite&) const = default;
};

/// Whether the edit page may save: something differs from the record (a reordered list counts),
/// and a weekly or monthly rule still has a day.
bool repeatDraftSavable(const RepeatRuleDraft& draft, const eventInfo& record);

/// The writes of a save, in order: the rule of the type (all of it after a type change, followed
/// by the reminder switched off; otherwise only what differs), then the interval, then the end
/// date.
std::vector<FieldWrite> repeatDraftWrites(const RepeatRuleDraft& draft, const eventInfo& record);

/// The reminder as the edit page holds it.
struct NotiDraft {
    bool on = false;
    std::int64_t code = kNoNotiCode;
    std::int64_t hour = 0;
    std::int64_t minute = 0;
};

NotiDraft notiDraftOf(const eventInfo& event);
/// The confirm writes, in order: "eventNotiOrNot", "eventNotiType", "eventNotiDateDayHour",
/// "eventNotiDateDayMin".
std::vector<FieldWrite> notiDraftWrites(const NotiDraft& draft);

/// Applies writes one field at a time through realmDataFunc::editEventData, each handed the live
/// record as the previous write left it (`fallback` when the event is gone, which writes
/// nothing but still publishes). Returns how many writes found the event.
int applyFieldWrites(const std::string& eventId, const std::vector<FieldWrite>& writes,
                     const eventInfo& fallback);

} // namespace tidemark
