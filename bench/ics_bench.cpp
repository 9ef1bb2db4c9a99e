// tidemark-ics-bench: writing and reading calendar files of 10,000 events (the seeded mix of the
// calendar-file check), in seconds and against the budget of 2 s each: the export (engine days of
// five years, every RRULE checked against them, the text), the import's plan (parsing, mapping
// each RRULE and checking it against the engine) and its additions to a store of its own.
#include "EventMix.h"
#include "TestSupport.h"
#include "interchange/CalendarExport.h"
#include "interchange/CalendarImport.h"
#include "records/realmDataFunc.h"

#include <chrono>
#include <cstdio>
#include <ctime>

using namespace tidemark;

namespace {

double secondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Processor seconds of this process so far: on a busy machine the wall clock also counts the
/// time other programs had the processor.
double cpuSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

} // namespace

int main() {
    constexpr std::size_t kEvents = 10'000;
    constexpr double kBudget = 2.0;
    testing::IsolatedStorage storage;
    CalendarEnvironment environment;
    environment.timeZoneId = "Europe/Berlin";
    environment.localeId = "de_DE";
    const Calendar calendar(environment);
    DateComponents at;
    at.year = 2026;
    at.month = 3;
    at.day = 10;
    at.hour = 8;
    const Date now = *calendar.date(at);
    const auto mix = testing::makeEventMix(7, kEvents, now, calendar);

    double cpu = cpuSeconds();
    auto start = std::chrono::steady_clock::now();
    const CalendarExport file = exportCalendar(mix.events, mix.memos, now, calendar);
    const double exportSeconds = secondsSince(start);
    const double exportCpu = cpuSeconds() - cpu;
    cpu = cpuSeconds();

    start = std::chrono::steady_clock::now();
    const ImportPlan plan = planImport(file.text, {}, ImportTexts{}, now, calendar);
    const double planSeconds = secondsSince(start);
    start = std::chrono::steady_clock::now();
    std::vector<eventObject> events;
    for (const ImportedEvent& item : plan.events) {
        events.push_back(item.event);
    }
    realmDataFunc().addEventsData(events);
    const double addSeconds = secondsSince(start);
    const double importCpu = cpuSeconds() - cpu;

    const double importSeconds = planSeconds + addSeconds;
    std::printf("ics export  %zu events  %.3f s (processor %.3f s, %.0f%% of the %.0f s budget)  "
                "%zu as RRULE, %zu single dates, %zu as dates, %.1f MB\n",
                kEvents, exportSeconds, exportCpu, 100 * exportSeconds / kBudget, kBudget,
                file.summary.asRule, file.summary.singleDates, file.summary.asDates,
                static_cast<double>(file.text.size()) / 1e6);
    std::printf("ics import  %zu events  %.3f s (processor %.3f s, %.0f%% of the %.0f s budget)  "
                "plan %.3f s, store %.3f s, %zu skipped%s\n",
                plan.events.size(), importSeconds, importCpu, 100 * importSeconds / kBudget,
                kBudget, planSeconds, addSeconds, plan.skipped.size(),
                plan.error.empty() ? "" : (" error: " + plan.error).c_str());
    return exportSeconds <= kBudget && importSeconds <= kBudget && plan.error.empty() ? 0 : 1;
}
