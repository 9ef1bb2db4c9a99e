#include "browsing/TimelineList.h"

#include "records/EventCodes.h"
#include "records/SettingsKeys.h"

#include <QUuid>
#include <algorithm>
#include <unordered_map>

namespace tidemark {

namespace {

/// Whether an event belongs to the source list of a kind; no event does for an unknown kind.
bool inSource(const eventInfo& e, std::int64_t kind) {
    switch (kind) {
    case 9:
        return true;
    case 0:
        return repeatTypeOf(e) == RepeatType::none;
    case 1:
        return e.eventRepeatOrNot && !e.eventHaveCustomizeInterval;
    case 2:
        return e.eventRepeatOrNot && e.eventHaveCustomizeInterval;
    case 3:
        return e.eventStarOrNot;
    default:
        return false;
    }
}

bool matchesColour(const eventInfo& e, const std::string& selection) {
    if (selection.empty()) {
        return e.eventColorString.empty();
    }
    const bool isColourKey =
        std::find(colorString.begin(), colorString.end(), selection) != colorString.end();
    return !isColourKey || e.eventColorString == selection;
}

std::string newItemId() {
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper().toStdString();
}

} // namespace

std::vector<stackCardItem> filteredEventList(const std::vector<eventInfo>& events,
                                             const TimelineFilter& filter) {
    std::vector<const eventInfo*> chosen;
    for (const auto& e : events) {
        if (inSource(e, filter.showWhichKindEventSelection) &&
            matchesColour(e, filter.filterSelectionFromUserForColorString)) {
            chosen.push_back(&e);
        }
    }
    std::stable_sort(chosen.begin(), chosen.end(), [](const eventInfo* a, const eventInfo* b) {
        return a->timeStampGenerate > b->timeStampGenerate;
    });
    std::vector<stackCardItem> items;
    items.reserve(chosen.size());
    for (const auto* e : chosen) {
        items.push_back({newItemId(), e->eventId});
    }
    return items;
}

TimelineRows timelineRows(const std::vector<eventInfo>& events, const TimelineFilter& filter,
                          Date now, const Calendar& calendar) {
    TimelineRows rows;
    rows.items = filteredEventList(events, filter);
    rows.showEmptyBox = rows.items.empty();
    std::unordered_map<std::string, const eventInfo*> byId;
    for (const auto& e : events) {
        byId.emplace(e.eventId, &e);
    }
    for (const auto& item : rows.items) {
        auto found = byId.find(item.eventId);
        if (found == byId.end()) {
            continue;
        }
        if (!filter.timelineViewShowEndEventOrNot && eventIsOver(*found->second, now, calendar)) {
            continue;
        }
        rows.rowEventIds.push_back(item.eventId);
    }
    return rows;
}

std::string kindMenuTitleKey(std::int64_t kind) {
    switch (kind) {
    case 0:
        return "menuShowNotRepeatEventStringForTimelineView";
    case 1:
        return "menuShowRepeatType1EventStringForTimelineView";
    case 2:
        return "menuShowRepeatType2EventStringForTimelineView";
    case 3:
        return "menuShowStarEventStringForTimelineView";
    case 9:
        return "menuShowAllEventStringForTimelineView";
    default:
        return "";
    }
}

} // namespace tidemark
