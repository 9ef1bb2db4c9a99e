#include "interchange/CalendarImport.h"

#include "base/Fatal.h"
#include "engine/LocalClock.h"
#include "engine/Occurrences.h"
#include "engine/RuleBatch.h"
#include "interchange/CalendarExport.h"
#include "interchange/IcalRules.h"
#include "notifications/notiFunc.h"
#include "records/DayListArchive.h"
#include "records/EventCodes.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <libical/ical.h>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <regex>
#include <tuple>
#include <unordered_set>

namespace tidemark {

std::size_t ImportPlan::count(ImportedEvent::Kind kind) const {
    return static_cast<std::size_t>(std::count_if(
        events.begin(), events.end(), [kind](const ImportedEvent& e) { return e.kind == kind; }));
}

namespace {

using Kind = ImportedEvent::Kind;
using Reason = SkippedItem::Reason;

std::string replaced(std::string text, const std::string& value) {
    if (const auto at = text.find("%1"); at != std::string::npos) {
        text.replace(at, 2, value);
    }
    return text;
}

/// The lead times a reminder of each repeat type can have, as in the reminder editor.
const std::vector<std::int64_t>& leadTimesOf(std::int64_t type) {
    static const std::array<std::vector<std::int64_t>, 5> table{{
        {4, 5, 7, 9},
        {0, 1, 2, 3},
        {4, 5},
        {4, 5},
        {4, 5, 7, 9},
    }};
    return table[static_cast<std::size_t>(std::clamp<std::int64_t>(type, 0, 4))];
}

/// The reminder whose lead time gives `seconds` relative to the start, if the app has one.
void setReminder(EventFields& e, int seconds) {
    for (const std::int64_t row : leadTimesOf(e.eventType)) {
        const auto base = static_cast<std::int64_t>(leadTimeOffset(row, 0, 0));
        const std::int64_t rest = seconds - base;
        const bool dayLead = row >= 4;
        if ((!dayLead && rest == 0) || (dayLead && rest >= 0 && rest < 86400 && rest % 60 == 0)) {
            e.eventNotiOrNot = true;
            e.eventNotiType = row;
            e.eventNotiDateDayHour = dayLead ? rest / 3600 : 0;
            e.eventNotiDateDayMin = dayLead ? rest % 3600 / 60 : 0;
            return;
        }
    }
}

/// A new event with what every imported event has.
eventObject newEvent(const std::string& uid, const std::string& title, Date now,
                     const Calendar& calendar) {
    eventObject e;
    e.eventId = newUUIDString();
    e.eventNotiId = e.eventId;
    e.eventTitle = title;
    e.timeStampGenerate = calendar.format(now, "yyyyMMddHHmmss");
    e.backupDataType02 = uid;
    return e;
}

/// What makes an imported event the same as a stored one when the file's identifier is gone from
/// the stored copy (a full edit clears the reserve field that keeps it): its title and start day.
std::string shapeOf(const std::string& title, std::int64_t year, std::int64_t month,
                    std::int64_t day) {
    return title + '\n' + std::to_string(year) + '-' + std::to_string(month) + '-' +
           std::to_string(day);
}

/// The identifiers and shapes of the stored events, so that an import never adds one twice.
struct KnownEvents {
    explicit KnownEvents(const std::vector<eventInfo>& existing) {
        for (const auto& e : existing) {
            ids.insert(e.eventId);
            if (!e.backupDataType02.empty()) {
                ids.insert(e.backupDataType02);
            }
            shapes.insert(shapeOf(e.eventTitle, e.eventStartDateYear, e.eventStartDateMonth,
                                  e.eventStartDateDay));
        }
    }
    /// False when the identifier or the title on that start day is already there; otherwise
    /// records the identifier (two items of one file with one identifier come in once).
    bool admit(const std::string& id, const std::string& title, std::int64_t startDay) {
        const CivilDate date = civilFromDays(startDay);
        if (shapes.count(shapeOf(title, date.year, date.month, date.day)) != 0) {
            return false;
        }
        return ids.insert(id).second;
    }
    std::unordered_set<std::string> ids;
    std::unordered_set<std::string> shapes;
};

void setStart(EventFields& e, std::int64_t day) {
    const CivilDate date = civilFromDays(day);
    e.eventStartDateYear = date.year;
    e.eventStartDateMonth = date.month;
    e.eventStartDateDay = date.day;
}

void setEnd(EventFields& e, std::int64_t day) {
    const CivilDate date = civilFromDays(day);
    e.eventHaveEndDateOrNot = true;
    e.eventEndDateYear = date.year;
    e.eventEndDateMonth = date.month;
    e.eventEndDateDay = date.day;
}

/// The IANA name of a zone of the file, as far as it gives one.
std::string zoneName(const icaltimezone* zone) {
    auto* z = const_cast<icaltimezone*>(zone);
    if (z == nullptr) {
        return "";
    }
    if (const char* location = icaltimezone_get_location(z)) {
        return location;
    }
    const char* tzid = icaltimezone_get_tzid(z);
    return tzid != nullptr ? tzid : "";
}

/// A wall time in the user's zone: day and minutes of the day.
struct LocalTime {
    std::int64_t day = 0;
    int hour = 0;
    int minute = 0;
};

class CalendarReader {
public:
    CalendarReader(const std::vector<eventInfo>& existing, const ImportTexts& texts, Date now,
                   const Calendar& calendar)
        : texts_(texts), now_(now), calendar_(calendar), window_(DayWindow::from(now, calendar)),
          userZoneId_(calendar.timeZoneId()), known_(existing) {}

    ImportPlan read(std::string_view text) {
        ImportPlan plan;
        const std::string source(text);
        if (source.find("BEGIN:VCALENDAR") == std::string::npos) {
            plan.error = "no calendar (BEGIN:VCALENDAR) in the file";
            return plan;
        }
        std::unique_ptr<icalcomponent, void (*)(icalcomponent*)> root(
            icalparser_parse_string(source.c_str()), icalcomponent_free);
        if (!root) {
            plan.error = "the file is not an iCalendar file";
            return plan;
        }
        if (const std::string error = firstError(root.get()); !error.empty()) {
            plan.error = error;
            return plan;
        }
        std::vector<icalcomponent*> calendars;
        if (icalcomponent_isa(root.get()) == ICAL_VCALENDAR_COMPONENT) {
            calendars.push_back(root.get());
        } else {
            for (icalcomponent* c =
                     icalcomponent_get_first_component(root.get(), ICAL_VCALENDAR_COMPONENT);
                 c != nullptr;
                 c = icalcomponent_get_next_component(root.get(), ICAL_VCALENDAR_COMPONENT)) {
                calendars.push_back(c);
            }
        }
        for (icalcomponent* cal : calendars) {
            for (icalcomponent* c = icalcomponent_get_first_component(cal, ICAL_ANY_COMPONENT);
                 c != nullptr; c = icalcomponent_get_next_component(cal, ICAL_ANY_COMPONENT)) {
                readComponent(c, plan);
            }
        }
        checkRules(plan);
        return plan;
    }

private:
    /// What a series needs to be checked against the engine once all events are read.
    struct Pending {
        std::size_t index = 0;
        icalcomponent* component = nullptr;
        /// The file's dates in the window, which the engine must give too.
        std::vector<std::int64_t> fileDays;
        /// A day the engine must give as well (the file's start, where it is a date).
        std::optional<std::int64_t> mustHit;
        /// Whether the event holds the app's own rule from the file.
        bool own = false;
    };

    static std::string firstError(icalcomponent* c) {
        for (icalproperty* p = icalcomponent_get_first_property(c, ICAL_XLICERROR_PROPERTY);
             p != nullptr; p = icalcomponent_get_next_property(c, ICAL_XLICERROR_PROPERTY)) {
            const char* text = icalproperty_get_xlicerror(p);
            return text != nullptr ? text : "unreadable line";
        }
        for (icalcomponent* child = icalcomponent_get_first_component(c, ICAL_ANY_COMPONENT);
             child != nullptr; child = icalcomponent_get_next_component(c, ICAL_ANY_COMPONENT)) {
            if (std::string error = firstError(child); !error.empty()) {
                return error;
            }
        }
        return "";
    }

    void readComponent(icalcomponent* c, ImportPlan& plan) {
        const icalcomponent_kind kind = icalcomponent_isa(c);
        if (kind == ICAL_VTIMEZONE_COMPONENT) {
            return;
        }
        const char* summary = icalcomponent_get_summary(c);
        const std::string title = summary != nullptr ? summary : "";
        if (kind != ICAL_VEVENT_COMPONENT) {
            plan.skipped.push_back({title, Reason::notAnEvent});
            return;
        }
        if (icalcomponent_get_first_property(c, ICAL_RECURRENCEID_PROPERTY) != nullptr) {
            plan.skipped.push_back({title, Reason::changedOccurrence});
            return;
        }
        if (icalcomponent_get_status(c) == ICAL_STATUS_CANCELLED) {
            plan.skipped.push_back({title, Reason::cancelled});
            return;
        }
        if (icalcomponent_get_first_property(c, ICAL_DTSTART_PROPERTY) == nullptr) {
            plan.skipped.push_back({title, Reason::noDate});
            return;
        }
        const icaltimetype start = icalcomponent_get_dtstart(c);
        if (icaltime_is_null_time(start) || !icaltime_is_valid_time(start)) {
            plan.skipped.push_back({title, Reason::unreadableDate});
            return;
        }
        const char* uidText = icalcomponent_get_uid(c);
        const std::string uid = uidText != nullptr && *uidText != '\0'
                                    ? uidText
                                    : title + "@" + icaltime_as_ical_string(start);
        if (!known_.admit(uid, title, localTimeOf(start).day)) {
            plan.skipped.push_back({title, Reason::alreadyThere});
            return;
        }

        ImportedEvent imported{newEvent(uid, title, now_, calendar_), Kind::singleDate};
        EventFields& e = imported.event;
        if (const char* description = icalcomponent_get_description(c)) {
            e.eventContent = description;
        }
        if (icalproperty* color = icalcomponent_get_first_property(c, ICAL_COLOR_PROPERTY)) {
            e.eventColorString = colorNameOfCss(icalproperty_get_color(color));
        }
        setStart(e, localTimeOf(start).day);
        if (icalcomponent_get_first_property(c, ICAL_RRULE_PROPERTY) == nullptr &&
            icalcomponent_get_first_property(c, ICAL_RDATE_PROPERTY) == nullptr &&
            !daysOfProperties(c, ICAL_EXDATE_PROPERTY, start).empty() &&
            daysOfProperties(c, ICAL_EXDATE_PROPERTY, start).front() == localTimeOf(start).day) {
            plan.skipped.push_back({title, Reason::noDate});
            return;
        }
        const std::size_t index = plan.events.size();
        bool restored = false;
        if (const auto own = ownRule(c); own && restoreOwnRule(e, *own)) {
            // The app's own rule, as long as it still gives the dates the file gives.
            if (auto days = datesOfFile(c, start)) {
                imported.kind = repeatTypeOf(e) == RepeatType::none ? Kind::singleDate : Kind::rule;
                pending_.push_back({index, c, std::move(*days), std::nullopt, true});
                restored = true;
            } else {
                clearRule(e, localTimeOf(start).day);
            }
        }
        if (!restored) {
            mapComponent(imported, index, c, start);
        }
        if (icalcomponent* alarm = icalcomponent_get_first_component(c, ICAL_VALARM_COMPONENT)) {
            if (icalproperty* trigger =
                    icalcomponent_get_first_property(alarm, ICAL_TRIGGER_PROPERTY)) {
                const icaltriggertype t = icalproperty_get_trigger(trigger);
                if (icaltime_is_null_time(t.time)) {
                    setReminder(e, icaldurationtype_as_int(t.duration));
                }
            }
        }
        plan.events.push_back(std::move(imported));
    }

    /// The series of the file's RRULE as an app rule when it has one of that shape (checked later),
    /// its first date with a note when it has another, or the single date.
    void mapComponent(ImportedEvent& imported, std::size_t index, icalcomponent* c,
                      const icaltimetype& start) {
        const bool hasDates = icalcomponent_get_first_property(c, ICAL_RDATE_PROPERTY) != nullptr;
        const bool hasExceptions =
            icalcomponent_get_first_property(c, ICAL_EXDATE_PROPERTY) != nullptr;
        icalproperty* ruleProperty = icalcomponent_get_first_property(c, ICAL_RRULE_PROPERTY);
        if (ruleProperty == nullptr && !hasDates) {
            imported.kind = Kind::singleDate;
            return;
        }
        std::string ruleText = texts_.datesRule;
        if (ruleProperty != nullptr) {
            icalrecurrencetype rule = icalproperty_get_rrule(ruleProperty);
            if (const char* text = icalrecurrencetype_as_string(&rule)) {
                ruleText = text;
            }
            const bool oneRule = icalcomponent_get_next_property(c, ICAL_RRULE_PROPERTY) == nullptr;
            if (oneRule && !hasDates && !hasExceptions) {
                if (auto pattern = mapRule(imported.event, rule, start)) {
                    imported.kind = Kind::rule;
                    pending_.push_back(
                        {index, c, fileDays(*pattern, start), localTimeOf(start).day, false});
                    return;
                }
                clearRule(imported.event, localTimeOf(start).day);
            }
        }
        noteFirstDateOnly(imported, ruleText);
    }

    /// The dates of the file's VEVENT in the window, in the user's zone: its start, its RRULE,
    /// its RDATEs, without its EXDATEs. Nothing when its RRULE is of a shape the app lacks.
    std::optional<std::vector<std::int64_t>> datesOfFile(icalcomponent* c,
                                                         const icaltimetype& start) const {
        std::vector<std::int64_t> days;
        if (icalproperty* ruleProperty = icalcomponent_get_first_property(c, ICAL_RRULE_PROPERTY)) {
            EventFields scratch;
            auto pattern = mapRule(scratch, icalproperty_get_rrule(ruleProperty), start);
            if (!pattern) {
                return std::nullopt;
            }
            days = fileDays(*pattern, start);
        } else if (const std::int64_t first = localTimeOf(start).day; window_.contains(first)) {
            days.push_back(first);
        }
        for (const std::int64_t day : daysOfProperties(c, ICAL_RDATE_PROPERTY, start)) {
            if (window_.contains(day)) {
                days.push_back(day);
            }
        }
        std::sort(days.begin(), days.end());
        const auto excluded = daysOfProperties(c, ICAL_EXDATE_PROPERTY, start);
        std::vector<std::int64_t> kept;
        std::set_difference(days.begin(), days.end(), excluded.begin(), excluded.end(),
                            std::back_inserter(kept));
        kept.erase(std::unique(kept.begin(), kept.end()), kept.end());
        return kept;
    }

    /// The days of the RDATEs or EXDATEs of a VEVENT in the user's zone, ascending; a time
    /// without zone is in the start's.
    std::vector<std::int64_t> daysOfProperties(icalcomponent* c, icalproperty_kind kind,
                                               const icaltimetype& start) const {
        std::vector<std::int64_t> days;
        for (icalproperty* p = icalcomponent_get_first_property(c, kind); p != nullptr;
             p = icalcomponent_get_next_property(c, kind)) {
            icaltimetype t = kind == ICAL_RDATE_PROPERTY ? icalproperty_get_rdate(p).time
                                                         : icalproperty_get_exdate(p);
            if (icaltime_is_null_time(t)) {
                continue;
            }
            if (t.zone == nullptr && !icaltime_is_utc(t)) {
                t.zone = start.zone;
            }
            days.push_back(localTimeOf(t).day);
        }
        std::sort(days.begin(), days.end());
        return days;
    }

    /// Back to an event of one date, `day`.
    static void clearRule(EventFields& e, std::int64_t day) {
        e.eventType = storedValue(RepeatType::none);
        e.eventRepeatOrNot = false;
        e.eventHaveCustomizeInterval = false;
        e.eventDateWhenCustomizeRepeatTimes = 0;
        e.eventDateWhenEveryWeek.clear();
        e.eventDateWhenEveryMonth.clear();
        e.eventDateWhenEveryDayHour = 0;
        e.eventDateWhenEveryDayMin = 0;
        e.eventHaveEndDateOrNot = false;
        e.eventEndDateYear = e.eventEndDateMonth = e.eventEndDateDay = 0;
        setStart(e, day);
    }

    void noteFirstDateOnly(ImportedEvent& imported, const std::string& rule) const {
        EventFields& e = imported.event;
        e.eventType = storedValue(RepeatType::none);
        e.eventRepeatOrNot = false;
        e.eventContent +=
            (e.eventContent.empty() ? "" : "\n\n") + replaced(texts_.firstDateNote, rule);
        imported.kind = Kind::firstDateOnly;
    }

    /// A time of the file as a wall time of the user's zone.
    LocalTime localTimeOf(const icaltimetype& t) const {
        if (t.is_date != 0) {
            return {dayOfIcalTime(t), 0, 0};
        }
        const bool floating = t.zone == nullptr && !icaltime_is_utc(t);
        if (floating || (!icaltime_is_utc(t) && zoneName(t.zone) == userZoneId_)) {
            return {dayOfIcalTime(t), t.hour, t.minute};
        }
        const Date moment{static_cast<double>(icaltime_as_timet_with_zone(t, t.zone))};
        const DateComponents c =
            calendar_.dateComponents(kYear | kMonth | kDay | kHour | kMinute, moment);
        return {daysFromCivil(unwrap(c.year), unwrap(c.month), unwrap(c.day)),
                static_cast<int>(unwrap(c.hour)), static_cast<int>(unwrap(c.minute))};
    }

    static std::optional<std::string> ownRule(icalcomponent* c) {
        for (icalproperty* p = icalcomponent_get_first_property(c, ICAL_X_PROPERTY); p != nullptr;
             p = icalcomponent_get_next_property(c, ICAL_X_PROPERTY)) {
            const char* name = icalproperty_get_x_name(p);
            if (name != nullptr && std::string_view(name) == kOwnRuleProperty) {
                const char* value = icalproperty_get_x(p);
                return value != nullptr ? value : "";
            }
        }
        return std::nullopt;
    }

    static bool restoreOwnRule(EventFields& e, const std::string& text) {
        const auto rule = nlohmann::json::parse(text, nullptr, false);
        if (!rule.is_object()) {
            return false;
        }
        try {
            e.eventType = rule.at("type").get<std::int64_t>();
            e.eventRepeatOrNot = repeatTypeOf(e) != RepeatType::none;
            const auto start = rule.at("start").get<std::vector<std::int64_t>>();
            const auto time = rule.at("time").get<std::vector<std::int64_t>>();
            e.eventStartDateYear = start.at(0);
            e.eventStartDateMonth = start.at(1);
            e.eventStartDateDay = start.at(2);
            e.eventDateWhenEveryDayHour = time.at(0);
            e.eventDateWhenEveryDayMin = time.at(1);
            e.eventHaveCustomizeInterval = rule.at("custom").get<bool>();
            e.eventDateWhenCustomizeRepeatTimes = rule.at("times").get<std::int64_t>();
            const auto week = rule.at("week").get<std::vector<std::int64_t>>();
            const auto month = rule.at("month").get<std::vector<std::int64_t>>();
            e.eventDateWhenEveryWeek = week.empty() ? Bytes{} : encodeDayListArchive(week);
            e.eventDateWhenEveryMonth = month.empty() ? Bytes{} : encodeDayListArchive(month);
            if (rule.contains("end")) {
                const auto end = rule.at("end").get<std::vector<std::int64_t>>();
                e.eventHaveEndDateOrNot = true;
                e.eventEndDateYear = end.at(0);
                e.eventEndDateMonth = end.at(1);
                e.eventEndDateDay = end.at(2);
            }
        } catch (const std::exception&) {
            return false;
        }
        return true;
    }

    /// The app's rule for an RRULE, if it has one of that shape, and the RRULE's pattern;
    /// whether the two give the same dates is checked afterwards.
    std::optional<RepeatPattern> mapRule(EventFields& e, const icalrecurrencetype& rule,
                                         const icaltimetype& start) const {
        auto pattern = patternOf(rule);
        if (!pattern) {
            return std::nullopt;
        }
        using Frequency = RepeatPattern::Frequency;
        const std::int64_t sourceStart = dayOfIcalTime(start);
        const LocalTime local = localTimeOf(start);
        switch (pattern->frequency) {
        case Frequency::daily:
            e.eventType = storedValue(RepeatType::daily);
            e.eventDateWhenEveryDayHour = local.hour;
            e.eventDateWhenEveryDayMin = local.minute;
            break;
        case Frequency::weekly: {
            if (pattern->weekdays.empty()) {
                pattern->weekdays.push_back(static_cast<int>(weekdayOfDays(sourceStart)));
            }
            std::vector<std::int64_t> codes;
            for (const int weekday : pattern->weekdays) {
                // Calendar weekday 1 Sunday ... 7 Saturday to week code 1 Monday ... 7 Sunday.
                codes.push_back(weekday == 1 ? 7 : weekday - 1);
            }
            e.eventType = storedValue(RepeatType::weekly);
            e.eventDateWhenEveryWeek = encodeDayListArchive(codes);
            break;
        }
        case Frequency::monthly: {
            if (pattern->monthDays.empty()) {
                pattern->monthDays.push_back(static_cast<int>(civilFromDays(sourceStart).day));
            }
            std::vector<std::int64_t> codes;
            for (const int day : pattern->monthDays) {
                codes.push_back(day == -1 ? 99 : day);
            }
            e.eventType = storedValue(RepeatType::monthly);
            e.eventDateWhenEveryMonth = encodeDayListArchive(codes);
            break;
        }
        case Frequency::yearly:
            e.eventType = storedValue(RepeatType::yearly);
            break;
        }
        e.eventRepeatOrNot = true;
        if (pattern->interval > 1) {
            e.eventHaveCustomizeInterval = true;
            e.eventDateWhenCustomizeRepeatTimes = pattern->interval - 1;
        }
        if (!icaltime_is_null_time(rule.until)) {
            icaltimetype until = rule.until;
            if (start.is_date == 0 && until.is_date == 0) {
                // The end in the start's own wall time; an instance counts while it isn't later.
                if (start.zone != nullptr && (until.zone != nullptr || icaltime_is_utc(until))) {
                    until = icaltime_convert_to_zone(until, const_cast<icaltimezone*>(start.zone));
                }
                std::int64_t day = dayOfIcalTime(until);
                if (std::tuple(until.hour, until.minute, until.second) <
                    std::tuple(start.hour, start.minute, start.second)) {
                    --day;
                }
                pattern->untilDay = day;
            } else {
                pattern->untilDay = dayOfIcalTime(until);
            }
        }
        if (pattern->untilDay || pattern->count) {
            const auto instances =
                patternDays(*pattern, sourceStart, sourceStart, window_.endDay + 400 * 366);
            if (instances.empty()) {
                return std::nullopt;
            }
            icaltimetype last = start;
            const CivilDate lastDate = civilFromDays(instances.back());
            last.year = static_cast<int>(lastDate.year);
            last.month = static_cast<int>(lastDate.month);
            last.day = static_cast<int>(lastDate.day);
            setEnd(e, localTimeOf(last).day);
        }
        return pattern;
    }

    /// Series whose app rule gives other dates than the file: a restored own rule falls back to
    /// the file's RRULE, a mapped RRULE to the first date with a note.
    void checkRules(ImportPlan& plan) {
        while (!pending_.empty()) {
            const std::vector<Pending> round = std::move(pending_);
            pending_.clear();
            std::vector<eventInfo> candidates;
            candidates.reserve(round.size());
            for (const Pending& p : round) {
                candidates.push_back(eventAs<eventInfo>(plan.events[p.index].event));
            }
            const RuleBatch batch(candidates, calendar_);
            const auto engineDays = engineDaysInWindow(batch, window_, calendar_);
            for (std::size_t i = 0; i < round.size(); ++i) {
                const Pending& p = round[i];
                if (sameDays(engineDays[i], p.fileDays, p.own) &&
                    (!p.mustHit || engineHasDay(batch, i, *p.mustHit, calendar_))) {
                    continue;
                }
                ImportedEvent& imported = plan.events[p.index];
                const icaltimetype start = icalcomponent_get_dtstart(p.component);
                clearRule(imported.event, localTimeOf(start).day);
                if (p.own) {
                    mapComponent(imported, p.index, p.component, start);
                } else {
                    icalrecurrencetype rule = icalproperty_get_rrule(
                        icalcomponent_get_first_property(p.component, ICAL_RRULE_PROPERTY));
                    const char* text = icalrecurrencetype_as_string(&rule);
                    noteFirstDateOnly(imported, text != nullptr ? text : "");
                }
            }
        }
    }

    /// Whether the engine gives the file's dates. A rule from another program is the app's rule
    /// also where the engine's day test differs on the days a clock change shortens or lengthens
    /// (as it does for every event); the app's own rule must give the file's dates exactly.
    bool sameDays(const std::vector<std::int64_t>& engine, const std::vector<std::int64_t>& file,
                  bool exactly) const {
        if (exactly || engine == file) {
            return engine == file;
        }
        const auto withoutChangeDays = [this](const std::vector<std::int64_t>& days) {
            std::vector<std::int64_t> kept;
            std::set_difference(days.begin(), days.end(), changeDays_.begin(), changeDays_.end(),
                                std::back_inserter(kept));
            return kept;
        };
        return withoutChangeDays(engine) == withoutChangeDays(file);
    }

    /// The days of the window whose length isn't 24 hours, and the days after them.
    static std::vector<std::int64_t> clockChangeDays(const DayWindow& window,
                                                     const Calendar& calendar) {
        std::vector<std::int64_t> days;
        std::optional<Date> previous;
        for (std::int64_t day = window.firstDay - 1; day <= window.endDay; ++day) {
            const CivilDate date = civilFromDays(day);
            const auto midnight = calendar.date(dayComponents(date.year, date.month, date.day));
            if (previous && midnight && midnight->timeIntervalSince(*previous) != 86400.0) {
                days.push_back(day - 1);
                days.push_back(day);
            }
            previous = midnight;
        }
        std::sort(days.begin(), days.end());
        days.erase(std::unique(days.begin(), days.end()), days.end());
        return days;
    }

    /// The days of the window on which the file's series falls, in the user's zone.
    std::vector<std::int64_t> fileDays(const RepeatPattern& pattern,
                                       const icaltimetype& start) const {
        const std::int64_t sourceStart = dayOfIcalTime(start);
        const bool sameWall = start.is_date != 0 ||
                              (start.zone == nullptr && !icaltime_is_utc(start)) ||
                              (!icaltime_is_utc(start) && zoneName(start.zone) == userZoneId_);
        if (sameWall) {
            return patternDays(pattern, sourceStart, window_.firstDay, window_.endDay);
        }
        // Another zone: every date is moved into the user's, with a day of margin either side.
        std::vector<std::int64_t> days;
        for (const std::int64_t day :
             patternDays(pattern, sourceStart, window_.firstDay - 1, window_.endDay + 1)) {
            icaltimetype t = start;
            const CivilDate date = civilFromDays(day);
            t.year = static_cast<int>(date.year);
            t.month = static_cast<int>(date.month);
            t.day = static_cast<int>(date.day);
            const std::int64_t local = localTimeOf(t).day;
            if (window_.contains(local)) {
                days.push_back(local);
            }
        }
        std::sort(days.begin(), days.end());
        days.erase(std::unique(days.begin(), days.end()), days.end());
        return days;
    }

    const ImportTexts& texts_;
    Date now_;
    const Calendar& calendar_;
    DayWindow window_;
    std::string userZoneId_;
    KnownEvents known_;
    std::vector<std::int64_t> changeDays_ = clockChangeDays(window_, calendar_);
    std::vector<Pending> pending_;
};

// ---- contacts --------------------------------------------------------------------------------

/// One content line of a vCard: its name (upper case, without group) and its value.
struct CardLine {
    std::string name;
    std::string params;
    std::string value;
};

std::vector<std::string> unfoldedLines(std::string_view text) {
    std::vector<std::string> lines;
    std::string current;
    std::size_t at = 0;
    while (at <= text.size()) {
        std::size_t end = text.find('\n', at);
        if (end == std::string_view::npos) {
            end = text.size();
        }
        std::string line(text.substr(at, end - at));
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (!line.empty() && (line[0] == ' ' || line[0] == '\t') && !lines.empty()) {
            lines.back() += line.substr(1);
        } else if (!line.empty()) {
            lines.push_back(line);
        }
        at = end + 1;
    }
    return lines;
}

std::optional<CardLine> cardLine(const std::string& line) {
    const std::size_t colon = line.find(':');
    if (colon == std::string::npos) {
        return std::nullopt;
    }
    std::string head = line.substr(0, colon);
    CardLine result;
    result.value = line.substr(colon + 1);
    const std::size_t semicolon = head.find(';');
    if (semicolon != std::string::npos) {
        result.params = head.substr(semicolon + 1);
        head.resize(semicolon);
    }
    if (const std::size_t dot = head.find('.'); dot != std::string::npos) {
        head = head.substr(dot + 1);
    }
    std::transform(head.begin(), head.end(), head.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    result.name = head;
    return result;
}

/// A vCard date: year, month, day; year 0 when the card gives none ("--0415").
std::optional<CivilDate> cardDate(const std::string& value) {
    static const std::regex full(R"(^(\d{4})-?(\d{2})-?(\d{2})(T.*)?$)");
    static const std::regex yearless(R"(^--(\d{2})-?(\d{2})(T.*)?$)");
    std::smatch m;
    CivilDate date;
    if (std::regex_match(value, m, full)) {
        date = {std::stoll(m[1]), std::stoll(m[2]), std::stoll(m[3])};
    } else if (std::regex_match(value, m, yearless)) {
        date = {0, std::stoll(m[1]), std::stoll(m[2])};
    } else {
        return std::nullopt;
    }
    if (date.month < 1 || date.month > 12 || date.day < 1 ||
        date.day > daysInMonth(date.year == 0 ? 2000 : date.year, date.month)) {
        return std::nullopt;
    }
    return date;
}

ImportPlan readContacts(std::string_view text, const std::vector<eventInfo>& existing,
                        const ImportTexts& texts, Date now, const Calendar& calendar) {
    ImportPlan plan;
    KnownEvents known(existing);
    const std::int64_t thisYear = unwrap(calendar.dateComponents(kYear, now).year);
    std::vector<CardLine> card;
    bool inCard = false;
    std::size_t lineNumber = 0;
    for (const std::string& raw : unfoldedLines(text)) {
        ++lineNumber;
        const auto line = cardLine(raw);
        if (!line) {
            plan = {};
            plan.error = "line " + std::to_string(lineNumber) + " is no vCard line: " + raw;
            return plan;
        }
        if (line->name == "BEGIN" && line->value == "VCARD") {
            if (inCard) {
                plan = {};
                plan.error =
                    "a card begins inside another (line " + std::to_string(lineNumber) + ")";
                return plan;
            }
            inCard = true;
            card.clear();
            continue;
        }
        if (line->name == "END" && line->value == "VCARD") {
            if (!inCard) {
                plan = {};
                plan.error =
                    "a card ends that never began (line " + std::to_string(lineNumber) + ")";
                return plan;
            }
            inCard = false;
            std::string name;
            std::string uid;
            for (const CardLine& l : card) {
                if (l.name == "FN" || (l.name == "N" && name.empty())) {
                    name = l.name == "FN" ? l.value : l.value.substr(0, l.value.find(';'));
                } else if (l.name == "UID") {
                    uid = l.value;
                }
            }
            bool any = false;
            for (const CardLine& l : card) {
                const bool birthday = l.name == "BDAY";
                if (!birthday && l.name != "ANNIVERSARY" && l.name != "X-ANNIVERSARY") {
                    continue;
                }
                any = true;
                const std::string sourceId =
                    (uid.empty() ? name : uid) + (birthday ? "#BDAY" : "#ANNIVERSARY");
                const auto date = cardDate(l.value);
                if (!date) {
                    plan.skipped.push_back({name, Reason::unreadableDate});
                    continue;
                }
                // Without a year: this year, or for 29 February the last leap year.
                std::int64_t year = date->year;
                if (year == 0) {
                    year = thisYear;
                    while (date->month == 2 && date->day == 29 && !isLeapYear(year)) {
                        --year;
                    }
                }
                const std::string title =
                    replaced(birthday ? texts.birthdayTitle : texts.anniversaryTitle, name);
                if (!known.admit(sourceId, title, daysFromCivil(year, date->month, date->day))) {
                    plan.skipped.push_back({name, Reason::alreadyThere});
                    continue;
                }
                ImportedEvent imported{newEvent(sourceId, title, now, calendar),
                                       birthday ? Kind::birthday : Kind::anniversary};
                EventFields& e = imported.event;
                e.eventType = storedValue(RepeatType::yearly);
                e.eventRepeatOrNot = true;
                setStart(e, daysFromCivil(year, date->month, date->day));
                plan.events.push_back(std::move(imported));
            }
            if (!any) {
                plan.skipped.push_back({name, Reason::noDate});
            }
            continue;
        }
        if (inCard) {
            card.push_back(*line);
        }
    }
    if (inCard) {
        plan = {};
        plan.error = "the last card has no END:VCARD";
    } else if (lineNumber == 0) {
        plan.error = "the file is empty";
    }
    return plan;
}

} // namespace

ImportPlan planImport(std::string_view text, const std::vector<eventInfo>& existing,
                      const ImportTexts& texts, Date now, const Calendar& calendar) {
    const std::size_t firstContent = text.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
    const std::string_view head =
        firstContent == std::string_view::npos ? std::string_view() : text.substr(firstContent);
    if (head.size() >= 11 &&
        (head.substr(0, 11) == "BEGIN:VCARD" || head.substr(0, 11) == "begin:vcard")) {
        return readContacts(text, existing, texts, now, calendar);
    }
    if (head.empty()) {
        ImportPlan plan;
        plan.error = "the file is empty";
        return plan;
    }
    return CalendarReader(existing, texts, now, calendar).read(text);
}

} // namespace tidemark
