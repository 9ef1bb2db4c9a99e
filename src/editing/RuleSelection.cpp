#include "editing/RuleSelection.h"

#include "base/Fatal.h"
#include "notifications/notiFunc.h"
#include "records/DayListArchive.h"
#include "records/realmDataFunc.h"

#include <algorithm>
#include <array>
#include <variant>

namespace tidemark {

namespace {

bool holds(const DayList& list, std::int64_t code) {
    return std::find(list.begin(), list.end(), code) != list.end();
}

void removeAll(DayList& list, std::int64_t code) {
    list.erase(std::remove(list.begin(), list.end(), code), list.end());
}

constexpr std::array<std::int64_t, 5> kWorkdays{1, 2, 3, 4, 5};
constexpr std::array<std::int64_t, 3> kShortMonthDays{29, 30, 31};

bool sameDate(std::int64_t y1, std::int64_t m1, std::int64_t d1, std::int64_t y2, std::int64_t m2,
              std::int64_t d2) {
    return y1 == y2 && m1 == m2 && d1 == d2;
}

/// The fields that hold the rule of one repeat type, with the draft's values.
void appendRuleOfType(std::vector<FieldWrite>& out, const RepeatRuleDraft& draft) {
    switch (draft.type) {
    case 1:
        out.push_back({"eventDateWhenEveryDayHour", draft.hour});
        out.push_back({"eventDateWhenEveryDayMin", draft.minute});
        break;
    case 2:
        out.push_back({"eventDateWhenEveryWeek", encodeDayListArchive(draft.week)});
        break;
    case 3:
        out.push_back({"eventDateWhenEveryMonth", encodeDayListArchive(draft.month)});
        break;
    case 4:
        out.push_back({"eventStartDateYear", draft.startYear});
        out.push_back({"eventStartDateMonth", draft.startMonth});
        out.push_back({"eventStartDateDay", draft.startDay});
        break;
    default:
        break;
    }
}

/// Whether the rule of the draft's type differs from the record's (same type on both sides).
bool ruleOfTypeDiffers(const RepeatRuleDraft& draft, const RepeatRuleDraft& stored) {
    switch (draft.type) {
    case 1:
        return draft.hour != stored.hour || draft.minute != stored.minute;
    case 2:
        return draft.week != stored.week;
    case 3:
        return draft.month != stored.month;
    case 4:
        return !sameDate(draft.startYear, draft.startMonth, draft.startDay, stored.startYear,
                         stored.startMonth, stored.startDay);
    default:
        return false;
    }
}

bool endDateDiffers(const RepeatRuleDraft& a, const RepeatRuleDraft& b) {
    return !sameDate(a.endYear, a.endMonth, a.endDay, b.endYear, b.endMonth, b.endDay);
}

} // namespace

void toggleDayCode(DayList& list, std::int64_t code) {
    auto it = std::find(list.begin(), list.end(), code);
    if (it == list.end()) {
        list.push_back(code);
    } else {
        list.erase(it);
    }
}

bool weekdayShortcutLit(const DayList& week) {
    return std::search(week.begin(), week.end(), kWorkdays.begin(), kWorkdays.end()) != week.end();
}

void tapWeekdayShortcut(DayList& week) {
    const bool lit = weekdayShortcutLit(week);
    for (auto code : kWorkdays) {
        removeAll(week, code);
    }
    if (!lit) {
        week.insert(week.end(), kWorkdays.begin(), kWorkdays.end());
    }
}

void tapMonthDay(DayList& month, std::int64_t code) {
    const bool selecting = !holds(month, code);
    toggleDayCode(month, code);
    if (!selecting) {
        return;
    }
    if (std::find(kShortMonthDays.begin(), kShortMonthDays.end(), code) != kShortMonthDays.end()) {
        removeAll(month, kLastDayOfMonthCode);
    } else if (code == kLastDayOfMonthCode) {
        for (auto day : kShortMonthDays) {
            removeAll(month, day);
        }
    }
}

bool repeatRuleComplete(std::int64_t type, const DayList& week, const DayList& month) {
    switch (type) {
    case 1:
    case 4:
        return true;
    case 2:
        return !week.empty();
    case 3:
        return !month.empty();
    default:
        return false;
    }
}

int intervalRowCount(std::int64_t type) {
    switch (type) {
    case 1:
        return 100;
    case 2:
    case 4:
        return 10;
    case 3:
        return 12;
    default:
        return 0;
    }
}

const char* intervalUnitKey(std::int64_t type) {
    switch (type) {
    case 1:
        return "customizeStringAfterNumByDay";
    case 2:
        return "customizeStringAfterNumByWeek";
    case 3:
        return "customizeStringAfterNumByMonth";
    case 4:
        return "customizeStringAfterNumByYear";
    default:
        return "";
    }
}

const std::vector<std::int64_t>& notiByEventType(std::int64_t type) {
    static const std::array<std::vector<std::int64_t>, 5> offered{{
        {4, 5, 7, 9},
        {0, 1, 2, 3},
        {4, 5},
        {4, 5},
        {4, 5, 7, 9},
    }};
    static const std::vector<std::int64_t> none;
    if (type < 0 || type >= static_cast<std::int64_t>(offered.size())) {
        return none;
    }
    return offered[static_cast<std::size_t>(type)];
}

std::string notiCodeKey(std::int64_t code) {
    if (code < 0 || code >= static_cast<std::int64_t>(notiSelectionStringForEvent.size())) {
        return {};
    }
    return std::string(notiSelectionStringForEvent[static_cast<std::size_t>(code)]);
}

bool notiCodeNeedsTime(std::int64_t code) {
    return code >= 4 && code <= 9;
}

bool notiCodeOffered(std::int64_t type, std::int64_t code) {
    return holds(notiByEventType(type), code);
}

RepeatRuleDraft repeatDraftOf(const eventInfo& event) {
    RepeatRuleDraft d;
    d.type = event.eventType;
    d.hour = event.eventDateWhenEveryDayHour;
    d.minute = event.eventDateWhenEveryDayMin;
    d.week = decodeDayListArchive(event.eventDateWhenEveryWeek);
    d.month = decodeDayListArchive(event.eventDateWhenEveryMonth);
    d.startYear = event.eventStartDateYear;
    d.startMonth = event.eventStartDateMonth;
    d.startDay = event.eventStartDateDay;
    d.intervalOn = event.eventHaveCustomizeInterval;
    d.intervalValue = checkedSub(event.eventDateWhenCustomizeRepeatTimes, 1);
    d.endDateOn = event.eventHaveEndDateOrNot;
    d.endYear = event.eventEndDateYear;
    d.endMonth = event.eventEndDateMonth;
    d.endDay = event.eventEndDateDay;
    return d;
}

bool repeatDraftSavable(const RepeatRuleDraft& draft, const eventInfo& record) {
    if ((draft.type == 2 && draft.week.empty()) || (draft.type == 3 && draft.month.empty())) {
        return false;
    }
    const RepeatRuleDraft stored = repeatDraftOf(record);
    if (draft.type != stored.type || ruleOfTypeDiffers(draft, stored)) {
        return true;
    }
    if (draft.intervalOn != stored.intervalOn ||
        (draft.intervalOn && draft.intervalValue != stored.intervalValue)) {
        return true;
    }
    return draft.endDateOn != stored.endDateOn ||
           (draft.endDateOn && endDateDiffers(draft, stored));
}

std::vector<FieldWrite> repeatDraftWrites(const RepeatRuleDraft& draft, const eventInfo& record) {
    const RepeatRuleDraft stored = repeatDraftOf(record);
    std::vector<FieldWrite> out;
    if (draft.type == stored.type) {
        if (ruleOfTypeDiffers(draft, stored)) {
            appendRuleOfType(out, draft);
        }
    } else {
        out.push_back({"eventType", draft.type});
        appendRuleOfType(out, draft);
        out.push_back({"eventNotiOrNot", false});
    }

    if (draft.intervalOn != stored.intervalOn) {
        out.push_back({"eventHaveCustomizeInterval", draft.intervalOn});
    }
    if (draft.intervalOn && draft.intervalValue != stored.intervalValue) {
        out.push_back({"eventDateWhenCustomizeRepeatTimes", checkedAdd(draft.intervalValue, 1)});
    }

    if (draft.endDateOn != stored.endDateOn) {
        out.push_back({"eventHaveEndDateOrNot", draft.endDateOn});
    }
    if (draft.endDateOn && endDateDiffers(draft, stored)) {
        out.push_back({"eventEndDateYear", draft.endYear});
        out.push_back({"eventEndDateMonth", draft.endMonth});
        out.push_back({"eventEndDateDay", draft.endDay});
    }
    return out;
}

NotiDraft notiDraftOf(const eventInfo& event) {
    return {event.eventNotiOrNot, event.eventNotiType, event.eventNotiDateDayHour,
            event.eventNotiDateDayMin};
}

std::vector<FieldWrite> notiDraftWrites(const NotiDraft& draft) {
    return {
        {"eventNotiOrNot", draft.on},
        {"eventNotiType", draft.code},
        {"eventNotiDateDayHour", draft.hour},
        {"eventNotiDateDayMin", draft.minute},
    };
}

int applyFieldWrites(const std::string& eventId, const std::vector<FieldWrite>& writes,
                     const eventInfo& fallback) {
    realmDataFunc data;
    int found = 0;
    for (const auto& write : writes) {
        auto live = Store::open().object<eventInfo>(eventId);
        if (live) {
            ++found;
        }
        const eventInfo& target = live ? *live : fallback;
        std::visit(
            [&](const auto& value) {
                using V = std::decay_t<decltype(value)>;
                if constexpr (std::is_same_v<V, std::string>) {
                    data.editEventData(target, write.key, value);
                } else if constexpr (std::is_same_v<V, std::int64_t>) {
                    data.editEventData(target, write.key, std::nullopt, value);
                } else if constexpr (std::is_same_v<V, bool>) {
                    data.editEventData(target, write.key, std::nullopt, std::nullopt, value);
                } else {
                    data.editEventData(target, write.key, std::nullopt, std::nullopt, std::nullopt,
                                       value);
                }
            },
            write.value);
    }
    return found;
}

} // namespace tidemark
