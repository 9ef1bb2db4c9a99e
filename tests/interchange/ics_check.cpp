// Writes the files that check_calendar_files.py compares: for each of four places, a seeded mix
// of events exported as a calendar file, the engine's dates of every event for the checked years,
// and the file again after importing it into an empty date book and exporting that.
#include "EventMix.h"
#include "engine/LocalClock.h"
#include "engine/Occurrences.h"
#include "engine/RuleBatch.h"
#include "interchange/CalendarExport.h"
#include "interchange/CalendarImport.h"
#include "interchange/IcalRules.h"

#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

using namespace tidemark;

namespace {

struct Place {
    const char* zone;
    const char* locale;
    DateComponents now;
};

std::string dayText(std::int64_t day) {
    const CivilDate d = civilFromDays(day);
    char text[16];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", static_cast<int>(d.year),
                  static_cast<int>(d.month), static_cast<int>(d.day));
    return text;
}

DateComponents at(int year, int month, int day, int hour) {
    DateComponents c;
    c.year = year;
    c.month = month;
    c.day = day;
    c.hour = hour;
    return c;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s OUTPUT-FOLDER\n", argv[0]);
        return 2;
    }
    const std::string folder = argv[1];
    // Clock changes inside the first days, a Sunday- and a Monday-first week, the turn of a year.
    const Place places[] = {
        {"Europe/Berlin", "de_DE", at(2026, 3, 27, 8)},
        {"America/New_York", "en_US", at(2026, 10, 31, 23)},
        {"Asia/Shanghai", "zh_CN", at(2026, 12, 31, 12)},
        {"Pacific/Auckland", "en_NZ", at(2027, 4, 3, 9)},
    };
    nlohmann::json summary = nlohmann::json::array();
    int index = 0;
    for (const Place& place : places) {
        CalendarEnvironment environment;
        environment.timeZoneId = place.zone;
        environment.localeId = place.locale;
        const Calendar calendar(environment);
        const Date now = *calendar.date(place.now);
        const auto mix = testing::makeEventMix(20261125 + index, 250, now, calendar);

        const CalendarExport first = exportCalendar(mix.events, mix.memos, now, calendar);
        const DayWindow window = DayWindow::from(now, calendar);
        // Every day asks every event: the export's own narrowing of the days is not trusted here.
        const RuleBatch batch(mix.events, calendar);
        std::vector<std::vector<std::int64_t>> days(mix.events.size());
        for (std::int64_t day = window.firstDay; day < window.endDay; ++day) {
            const CivilDate d = civilFromDays(day);
            for (const std::size_t i :
                 batch.indicesOnDate(*calendar.date(dayComponents(d.year, d.month, d.day)))) {
                days[i].push_back(day);
            }
        }
        nlohmann::json expected = nlohmann::json::object();
        for (std::size_t i = 0; i < mix.events.size(); ++i) {
            const eventInfo& e = mix.events[i];
            nlohmann::json list = nlohmann::json::array();
            for (const std::int64_t day : days[i]) {
                std::string text = dayText(day);
                if (e.eventType == 1) {
                    char time[8];
                    std::snprintf(time, sizeof time, "T%02d:%02d",
                                  static_cast<int>(e.eventDateWhenEveryDayHour),
                                  static_cast<int>(e.eventDateWhenEveryDayMin));
                    text += time;
                }
                list.push_back(text);
            }
            expected[e.eventId] = list;
        }

        // The file read into an empty date book and written again.
        const ImportPlan plan = planImport(first.text, {}, ImportTexts{}, now, calendar);
        if (!plan.error.empty()) {
            std::fprintf(stderr, "%s: the exported file can't be read again: %s\n", place.zone,
                         plan.error.c_str());
            return 1;
        }
        std::vector<eventInfo> imported;
        for (const ImportedEvent& item : plan.events) {
            imported.push_back(eventAs<eventInfo>(item.event));
        }
        const CalendarExport again = exportCalendar(imported, {}, now, calendar);

        const std::string stem = folder + "/place" + std::to_string(index);
        std::ofstream(stem + ".ics", std::ios::binary) << first.text;
        std::ofstream(stem + ".again.ics", std::ios::binary) << again.text;
        std::ofstream(stem + ".expected.json") << nlohmann::json{
            {"zone", place.zone},
            {"first", dayText(window.firstDay)},
            {"end", dayText(window.endDay)},
            {"events", expected}}.dump();
        summary.push_back({{"zone", place.zone},
                           {"events", first.summary.events},
                           {"rule", first.summary.asRule},
                           {"single", first.summary.singleDates},
                           {"dates", first.summary.asDates},
                           {"imported", plan.events.size()},
                           {"skipped", plan.skipped.size()}});
        ++index;
    }
    std::printf("%s\n", summary.dump().c_str());
    return 0;
}
