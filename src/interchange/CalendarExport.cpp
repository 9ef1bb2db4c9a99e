#include "interchange/CalendarExport.h"

#include "base/Fatal.h"
#include "engine/LocalClock.h"
#include "engine/Occurrences.h"
#include "engine/RuleBatch.h"
#include "interchange/IcalRules.h"
#include "notifications/notiFunc.h"
#include "records/DayListArchive.h"
#include "records/EventCodes.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <libical/ical.h>
#include <map>
#include <memory>
#include <mutex>
#include <nlohmann/json.hpp>
#include <unordered_map>

namespace tidemark {

namespace {

/// The calendar's zone for times of day: the UTC zone for UTC; libical's description of the
/// zone under its plain IANA name, which every reader knows; or none (floating times) for a zone
/// libical doesn't know. Made once per zone and kept.
icaltimezone* zoneFor(const std::string& zoneId) {
    if (zoneId == "UTC" || zoneId == "Etc/UTC" || zoneId == "GMT" || zoneId == "Etc/GMT") {
        return icaltimezone_get_utc_timezone();
    }
    // Made once per zone and kept for the process; freed with it (with their descriptions).
    struct ZoneFree {
        void operator()(icaltimezone* zone) const { icaltimezone_free(zone, 1); }
    };
    static std::mutex mutex;
    static std::map<std::string, std::unique_ptr<icaltimezone, ZoneFree>> zones;
    std::lock_guard lock(mutex);
    if (const auto known = zones.find(zoneId); known != zones.end()) {
        return known->second.get();
    }
    icaltimezone* zone = nullptr;
    if (icaltimezone* builtin = icaltimezone_get_builtin_timezone(zoneId.c_str())) {
        icalcomponent* description = icalcomponent_new_clone(icaltimezone_get_component(builtin));
        icalproperty* tzid = icalcomponent_get_first_property(description, ICAL_TZID_PROPERTY);
        icalproperty_set_tzid(tzid, zoneId.c_str());
        zone = icaltimezone_new();
        icaltimezone_set_component(zone, description);
    }
    zones[zoneId].reset(zone);
    return zone;
}

/// The rule fields of an event, for kOwnRuleProperty.
std::string ownRule(const EventFields& e) {
    nlohmann::json rule{
        {"type", e.eventType},
        {"start", {e.eventStartDateYear, e.eventStartDateMonth, e.eventStartDateDay}},
        {"time", {e.eventDateWhenEveryDayHour, e.eventDateWhenEveryDayMin}},
        {"custom", e.eventHaveCustomizeInterval},
        {"times", e.eventDateWhenCustomizeRepeatTimes},
        {"week", decodeDayListArchive(e.eventDateWhenEveryWeek)},
        {"month", decodeDayListArchive(e.eventDateWhenEveryMonth)},
    };
    if (e.eventHaveEndDateOrNot) {
        rule["end"] = {e.eventEndDateYear, e.eventEndDateMonth, e.eventEndDateDay};
    }
    return rule.dump();
}

class EventWriter {
public:
    EventWriter(Date now, const Calendar& calendar, icaltimezone* zone)
        : calendar_(calendar), zone_(zone), window_(DayWindow::from(now, calendar)),
          stamp_(icaltime_from_timet_with_zone(static_cast<time_t>(now.secondsSince1970), 0,
                                               icaltimezone_get_utc_timezone())) {}

    const DayWindow& window() const { return window_; }

    /// One VEVENT; `days` are the engine's days of the event in the window.
    icalcomponent* write(const eventInfo& e, const RuleBatch& batch, std::size_t index,
                         const std::vector<std::int64_t>& days, const std::string& memoText,
                         CalendarExportSummary& summary) const {
        icalcomponent* event = icalcomponent_new_vevent();
        const std::string& uid = e.backupDataType02.empty() ? e.eventId : e.backupDataType02;
        icalcomponent_add_property(event, icalproperty_new_uid(uid.c_str()));
        icalcomponent_add_property(event, icalproperty_new_dtstamp(stamp_));
        icalcomponent_add_property(event, icalproperty_new_summary(e.eventTitle.c_str()));
        std::string description = e.eventContent;
        if (!memoText.empty()) {
            description += (description.empty() ? "" : "\n\n") + memoText;
        }
        if (!description.empty()) {
            icalcomponent_add_property(event, icalproperty_new_description(description.c_str()));
        }
        if (const std::string css = cssColorOf(e.eventColorString); !css.empty()) {
            icalcomponent_add_property(event, icalproperty_new_color(css.c_str()));
        }

        timed_ = repeatTypeOf(e) == RepeatType::daily;
        hour_ = static_cast<int>(std::clamp<std::int64_t>(e.eventDateWhenEveryDayHour, 0, 23));
        minute_ = static_cast<int>(std::clamp<std::int64_t>(e.eventDateWhenEveryDayMin, 0, 59));
        const bool plainTime =
            hour_ == e.eventDateWhenEveryDayHour && minute_ == e.eventDateWhenEveryDayMin;
        const std::int64_t startDay = startDayOf(e);

        if (repeatTypeOf(e) == RepeatType::none || e.eventType < 0 || e.eventType > 4) {
            // One date: the start, unless the engine has no date at all.
            icalcomponent_set_dtstart(event, at(startDay));
            if (!engineHasDay(batch, index, startDay, calendar_)) {
                addDateList(event, ICAL_EXDATE_PROPERTY, {startDay});
            }
            ++summary.singleDates;
        } else if (auto rule = plainTime ? checkedRule(e, batch, index, days) : std::nullopt) {
            icalcomponent_set_dtstart(event, at(rule->first));
            icalcomponent_add_property(event, icalproperty_new_rrule(rule->second));
            addDateList(event, ICAL_RDATE_PROPERTY, corrections_.extra);
            addDateList(event, ICAL_EXDATE_PROPERTY, corrections_.missing);
            ++summary.asRule;
        } else {
            if (days.empty()) {
                icalcomponent_set_dtstart(event, at(startDay));
                addDateList(event, ICAL_EXDATE_PROPERTY, {startDay});
            } else {
                icalcomponent_set_dtstart(event, at(days.front()));
                addDateList(event, ICAL_RDATE_PROPERTY, {days.begin() + 1, days.end()});
            }
            ++summary.asDates;
        }
        if (e.eventType >= 1 && e.eventType <= 4) {
            icalproperty* own = icalproperty_new_x(ownRule(e).c_str());
            icalproperty_set_x_name(own, kOwnRuleProperty);
            icalcomponent_add_property(event, own);
        }

        if (e.eventNotiOrNot) {
            const double lead =
                leadTimeOffset(e.eventNotiType, e.eventNotiDateDayHour, e.eventNotiDateDayMin);
            icalcomponent* alarm = icalcomponent_new_valarm();
            icalcomponent_add_property(alarm, icalproperty_new_action(ICAL_ACTION_DISPLAY));
            icaltriggertype trigger{};
            trigger.time = icaltime_null_time();
            trigger.duration = icaldurationtype_from_int(static_cast<int>(lead));
            icalcomponent_add_property(alarm, icalproperty_new_trigger(trigger));
            icalcomponent_add_property(alarm, icalproperty_new_description(e.eventTitle.c_str()));
            icalcomponent_add_component(event, alarm);
        }
        return event;
    }

    bool usedZone() const { return usedZone_; }

private:
    /// The DTSTART day and the RRULE, if an RRULE gives exactly the engine's days.
    std::optional<std::pair<std::int64_t, icalrecurrencetype>>
    checkedRule(const eventInfo& e, const RuleBatch& batch, std::size_t index,
                const std::vector<std::int64_t>& days) const {
        auto pattern = patternOf(e, calendar_.firstWeekday());
        if (!pattern) {
            return std::nullopt;
        }
        pattern->untilDay = endDayOf(e);
        // An iCalendar series always has its start as a date: where the engine's series does
        // not fall on its start (a weekday or month day not in the rule), the file's series
        // starts at the rule's first date after it.
        std::int64_t first = startDayOf(e);
        if (!engineHasDay(batch, index, first, calendar_)) {
            const auto next = patternDays(*pattern, first, first + 1, window_.endDay, 1);
            if (next.empty() || !engineHasDay(batch, index, next.front(), calendar_)) {
                return std::nullopt;
            }
            first = next.front();
        }
        // A few dates apart (the engine's day test on days shortened or lengthened by a clock
        // change) are said by RDATE and EXDATE beside the rule.
        const auto ruleDays = patternDays(*pattern, first, window_.firstDay, window_.endDay);
        corrections_.extra.clear();
        corrections_.missing.clear();
        std::set_difference(days.begin(), days.end(), ruleDays.begin(), ruleDays.end(),
                            std::back_inserter(corrections_.extra));
        std::set_difference(ruleDays.begin(), ruleDays.end(), days.begin(), days.end(),
                            std::back_inserter(corrections_.missing));
        if (corrections_.extra.size() + corrections_.missing.size() > kMostCorrections) {
            return std::nullopt;
        }
        std::string text = pattern->text();
        if (pattern->untilDay) {
            text += ";UNTIL=" + untilText(*pattern->untilDay);
        }
        const icalrecurrencetype rule = icalrecurrencetype_from_string(text.c_str());
        if (rule.freq == ICAL_NO_RECURRENCE) {
            return std::nullopt;
        }
        return std::pair{first, rule};
    }

    /// The last moment of the end day: a date for day events, UTC for events at a time.
    std::string untilText(std::int64_t endDay) const {
        const CivilDate end = civilFromDays(endDay);
        char text[32];
        if (!timed_) {
            std::snprintf(text, sizeof text, "%04d%02d%02d", static_cast<int>(end.year),
                          static_cast<int>(end.month), static_cast<int>(end.day));
            return text;
        }
        if (zone_ == nullptr) {
            std::snprintf(text, sizeof text, "%04d%02d%02dT235959", static_cast<int>(end.year),
                          static_cast<int>(end.month), static_cast<int>(end.day));
            return text;
        }
        DateComponents last = dayComponents(end.year, end.month, end.day);
        last.hour = 23;
        last.minute = 59;
        last.second = 59;
        const Date moment = unwrap(calendar_.date(last));
        const icaltimetype utc = icaltime_from_timet_with_zone(
            static_cast<time_t>(moment.secondsSince1970), 0, icaltimezone_get_utc_timezone());
        return icaltime_as_ical_string(utc);
    }

    /// A day as the event's kind of time: a date, or the time of day in the calendar's zone.
    icaltimetype at(std::int64_t day) const {
        if (!timed_) {
            return icalDate(day);
        }
        icaltimetype t = icalWallTime(day, hour_, minute_);
        t.zone = zone_;
        usedZone_ = usedZone_ || zone_ != nullptr;
        return t;
    }

    void addDateList(icalcomponent* event, icalproperty_kind kind,
                     const std::vector<std::int64_t>& days) const {
        for (const std::int64_t day : days) {
            const icaltimetype t = at(day);
            icalproperty* property = nullptr;
            if (kind == ICAL_RDATE_PROPERTY) {
                icaldatetimeperiodtype value{};
                value.time = t;
                value.period = icalperiodtype_null_period();
                property = icalproperty_new_rdate(value);
            } else {
                property = icalproperty_new_exdate(t);
            }
            if (!timed_) {
                icalproperty_add_parameter(property, icalparameter_new_value(ICAL_VALUE_DATE));
            } else if (zone_ != nullptr && zone_ != icaltimezone_get_utc_timezone()) {
                icalproperty_add_parameter(property,
                                           icalparameter_new_tzid(icaltimezone_get_tzid(zone_)));
            }
            icalcomponent_add_property(event, property);
        }
    }

    /// The dates that an RRULE needs beside it: the engine's dates that the rule lacks, and the
    /// rule's dates that the engine lacks.
    struct Corrections {
        std::vector<std::int64_t> extra;
        std::vector<std::int64_t> missing;
    };
    /// More corrections than this and the event goes out as its dates.
    static constexpr std::size_t kMostCorrections = 12;

    const Calendar& calendar_;
    icaltimezone* zone_;
    mutable Corrections corrections_;
    DayWindow window_;
    icaltimetype stamp_;
    mutable bool timed_ = false;
    mutable int hour_ = 0;
    mutable int minute_ = 0;
    mutable bool usedZone_ = false;
};

} // namespace

CalendarExport exportCalendar(const std::vector<eventInfo>& events,
                              const std::vector<memoDataForNotiObject>& memos, Date now,
                              const Calendar& calendar) {
    std::unordered_map<std::string, std::string> memoTexts;
    for (const auto& memo : memos) {
        std::string& text = memoTexts[memo.eventId];
        text += (text.empty() ? "" : "\n\n") + memo.title;
        if (!memo.content.empty()) {
            text += "\n" + memo.content;
        }
    }

    icaltimezone* zone = zoneFor(calendar.timeZoneId());
    const EventWriter writer(now, calendar, zone);
    const RuleBatch batch(events, calendar);
    const auto days = engineDaysInWindow(batch, writer.window(), calendar);

    CalendarExport result;
    icalcomponent* file = icalcomponent_new_vcalendar();
    icalcomponent_add_property(file, icalproperty_new_prodid("-//Tide Mark//Tide Mark//EN"));
    icalcomponent_add_property(file, icalproperty_new_version("2.0"));
    icalcomponent_add_property(file, icalproperty_new_calscale("GREGORIAN"));
    std::vector<icalcomponent*> written;
    written.reserve(events.size());
    for (std::size_t i = 0; i < events.size(); ++i) {
        const auto memo = memoTexts.find(events[i].eventId);
        written.push_back(writer.write(events[i], batch, i, days[i],
                                       memo == memoTexts.end() ? std::string() : memo->second,
                                       result.summary));
    }
    result.summary.events = events.size();
    if (writer.usedZone() && zone != icaltimezone_get_utc_timezone()) {
        icalcomponent_add_component(file,
                                    icalcomponent_new_clone(icaltimezone_get_component(zone)));
    }
    for (icalcomponent* event : written) {
        icalcomponent_add_component(file, event);
    }
    char* text = icalcomponent_as_ical_string_r(file);
    result.text = text;
    std::free(text);
    icalcomponent_free(file);
    return result;
}

} // namespace tidemark
