// The list behind the timeline and the card stacks: which events are listed, in which order, and
// which of them the timeline draws as rows. Pure functions of the events, the filter settings and
// the clock, so that the list models and the tests share one definition.
#pragma once

#include "calendar/Calendar.h"
#include "engine/computeFunc.h"
#include "records/eventInfo.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tidemark {

/// The three persisted settings that shape the timeline, with their defaults.
struct TimelineFilter {
    /// 9 all, 0 not repeating, 1 repeating without interval, 2 repeating with interval, 3 starred.
    std::int64_t showWhichKindEventSelection = 9;
    /// "-" every colour, "" events without a colour, else one colour key.
    std::string filterSelectionFromUserForColorString = "-";
    /// False hides the rows of events that are over (they still count in the list).
    bool timelineViewShowEndEventOrNot = true;
};

/// The events of the chosen kind, narrowed by colour, newest creation stamp first (compared as
/// strings; equal stamps keep store order), one card each. An unknown kind gives no cards.
std::vector<stackCardItem> filteredEventList(const std::vector<eventInfo>& events,
                                             const TimelineFilter& filter);

/// What the timeline draws: the eventIds of its rows, and whether the "nothing here" box shows.
/// The box follows the list, not the rows: a list of only ended events under
/// timelineViewShowEndEventOrNot == false draws neither rows nor the box.
struct TimelineRows {
    std::vector<stackCardItem> items;
    std::vector<std::string> rowEventIds;
    bool showEmptyBox = false;
};

TimelineRows timelineRows(const std::vector<eventInfo>& events, const TimelineFilter& filter,
                          Date now, const Calendar& calendar);

/// The key of the kind menu's title for a value of showWhichKindEventSelection; "" for an
/// unknown value.
std::string kindMenuTitleKey(std::int64_t showWhichKindEventSelection);

} // namespace tidemark
