// tidemark-bench: how long the engine takes for what the screens and the planner ask of it, next
// to the walks that define its answers and to a general recurrence library (libical).
//
//   tidemark-bench [--events N]... [--seed S] [--cpu-time]
//
// For each N (default 100, 1,000 and 10,000) it makes a seeded, realistic mix of N events and
// prints one line per measure: the month view (eventsOnDate for the 42 cells of a month and
// eventIdsOnDate for the selected day; with the rules compiled for the call, and kept from the
// month before as the grid keeps them until a commit), the occurrence work of a notification
// plan, and the encoding of the widget publication. Figures are medians of repeated runs, of
// the time on the wall or, with --cpu-time, of the thread's processor time (for a machine shared
// with other work; the main-screen and stack-scroll lines stay on the wall clock). Engine and
// walk answers are compared in full (on the sampled events where the walk is sampled); libical
// is compared with the engine, and its agreement is reported apart, since it reads some rules
// differently.
//
// In the default build (with the shell) a last line per N, "main-screen", brings up the app's
// window offscreen (QT_QPA_PLATFORM=offscreen, Material style) on a private XDG data and config
// folder whose store holds the same mix (in the app's colour names) and whose first launch is
// marked done, so no sample events join them: the time from the start of launch() to the
// window's first frame (median of fresh apps, engines and windows, each after a commit so that
// nothing read before is kept, next to the 500 ms it should stay under) and the cost of a month
// change of the calendar grid, median and worst of a year forward and back, with the store read
// and the engine's 42 days of a month apart; then the same for the first change after a commit,
// which reads the store and compiles the rules anew. For N = 1,000
// a "stack-scroll" line follows: the frame times (median and worst) of scrolling the vertical
// card stack over those events offscreen. The core-only build has neither line.
#include "base/Fatal.h"
#include "calendar/Calendar.h"
#include "engine/LocalClock.h"
#include "engine/Occurrences.h"
#include "engine/RuleBatch.h"
#include "records/DayListArchive.h"
#include "records/eventInfo.h"
#include "widgets/widgetFunc.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <functional>
#include <libical/ical.h>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <vector>

#ifdef TIDEMARK_BENCH_WITH_SHELL
#include "records/Defaults.h"
#include "records/Store.h"
#include "shell/QmlTypes.h"
#include "shell/tideMarkApp.h"
#include "toolkit/MonthModel.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickView>
#include <QQuickWindow>
#include <QTimer>
#include <filesystem>
#include <memory>
#include <unistd.h>
#endif

using namespace tidemark;

namespace {

constexpr std::uint64_t kDefaultSeed = 42;

// ---------------------------------------------------------------------------------------------
// The mix

class Random {
public:
    explicit Random(std::uint64_t seed) : engine_(seed) {}
    std::int64_t between(std::int64_t low, std::int64_t high) {
        const auto span = static_cast<std::uint64_t>(high - low) + 1;
        return low + static_cast<std::int64_t>(engine_() % span);
    }
    bool chance(int percent) { return between(0, 99) < percent; }
    /// A version 4 UUID text made from this source, so that a seed gives the same ids.
    std::string uuid() {
        static constexpr char kHex[] = "0123456789ABCDEF";
        std::string text;
        for (int i = 0; i < 32; ++i) {
            if (i == 8 || i == 12 || i == 16 || i == 20) {
                text.push_back('-');
            }
            const std::int64_t digit = i == 12 ? 4 : i == 16 ? between(8, 11) : between(0, 15);
            text.push_back(kHex[digit]);
        }
        return text;
    }

private:
    std::mt19937_64 engine_;
};

/// Whether a monthly code ever finds a month long enough on its walk (the editor offers no rule
/// that never does).
bool lands(std::int64_t year, std::int64_t month, std::int64_t step, std::int64_t code) {
    if (code < 29 || code > 31) {
        return true;
    }
    for (std::int64_t k = 0; k < 4800; ++k) {
        const std::int64_t n = year * 12 + month - 1 + k * step;
        if (daysInMonth(floorDiv(n, 12), floorMod(n, 12) + 1) >= code) {
            return true;
        }
    }
    return false;
}

/// About 30% one-off, 15% yearly, 20% daily, 20% weekly (1-3 weekdays), 15% monthly (1-4 days,
/// 29-31 and 99 among them); starts up to ten years back; some intervals and end dates; about
/// 60% with a reminder.
std::vector<eventInfo> makeEvents(std::int64_t count, std::uint64_t seed, std::int64_t today) {
    Random random(seed);
    static const char* kColors[] = {"blue", "green", "orange", "pink", "purple", "red", "yellow"};
    std::vector<eventInfo> events;
    events.reserve(static_cast<std::size_t>(count));
    for (std::int64_t n = 0; n < count; ++n) {
        eventInfo e;
        e.eventId = random.uuid();
        e.eventTitle = "Event " + std::to_string(n + 1);
        e.eventContent = n % 3 == 0 ? "" : "Notes for event " + std::to_string(n + 1);
        e.timeStampGenerate = "20260101120000";
        e.eventColorString = kColors[n % 7];
        e.eventStarOrNot = random.chance(10);
        const std::int64_t roll = random.between(0, 99);
        e.eventType = roll < 30 ? 0 : roll < 45 ? 4 : roll < 65 ? 1 : roll < 85 ? 2 : 3;
        e.eventRepeatOrNot = e.eventType != 0;

        std::int64_t startDay = today - random.between(0, 3652);
        if (e.eventType == 0 && random.chance(30)) {
            startDay = today + random.between(1, 365); // a count-down
        }
        const CivilDate start = civilFromDays(startDay);
        e.eventStartDateYear = start.year;
        e.eventStartDateMonth = start.month;
        e.eventStartDateDay = start.day;
        e.eventDateWhenEveryDayHour = random.between(6, 22);
        e.eventDateWhenEveryDayMin = random.between(0, 3) * 15;

        if (e.eventType != 0 && random.chance(25)) {
            e.eventHaveCustomizeInterval = true;
            e.eventDateWhenCustomizeRepeatTimes = random.between(1, e.eventType == 1 ? 6 : 3);
        }
        const std::int64_t step =
            e.eventHaveCustomizeInterval ? e.eventDateWhenCustomizeRepeatTimes + 1 : 1;
        if (e.eventType == 2) {
            std::vector<std::int64_t> codes;
            const std::int64_t days = random.between(1, 3);
            while (static_cast<std::int64_t>(codes.size()) < days) {
                const std::int64_t code = random.between(1, 7);
                if (std::find(codes.begin(), codes.end(), code) == codes.end()) {
                    codes.push_back(code);
                }
            }
            e.eventDateWhenEveryWeek = encodeDayListArchive(codes);
        }
        if (e.eventType == 3) {
            std::vector<std::int64_t> codes;
            const std::int64_t days = random.between(1, 4);
            while (static_cast<std::int64_t>(codes.size()) < days) {
                const std::int64_t pick = random.between(0, 9);
                const std::int64_t code = pick == 0   ? 99
                                          : pick <= 2 ? random.between(29, 31)
                                                      : random.between(1, 28);
                if (std::find(codes.begin(), codes.end(), code) == codes.end() &&
                    lands(start.year, start.month, step, code)) {
                    codes.push_back(code);
                }
            }
            e.eventDateWhenEveryMonth = encodeDayListArchive(codes);
        }
        if (e.eventType != 0 && random.chance(15)) {
            const CivilDate end = civilFromDays(startDay + random.between(30, 15 * 365));
            e.eventHaveEndDateOrNot = true;
            e.eventEndDateYear = end.year;
            e.eventEndDateMonth = end.month;
            e.eventEndDateDay = end.day;
        }
        if (random.chance(60)) {
            static const std::vector<std::vector<std::int64_t>> kLeads = {
                {4, 5, 7, 9}, {0, 1, 2, 3}, {4, 5}, {4, 5}, {4, 5, 7, 9}};
            const auto& leads = kLeads[static_cast<std::size_t>(e.eventType)];
            e.eventNotiOrNot = true;
            e.eventNotiType = leads[static_cast<std::size_t>(
                random.between(0, static_cast<std::int64_t>(leads.size()) - 1))];
            e.eventNotiDateDayHour = 9;
            e.eventNotiId = random.uuid();
        }
        e.backupDataType02 = "reserved";
        events.push_back(std::move(e));
    }
    return events;
}

// ---------------------------------------------------------------------------------------------
// Timing

/// Whether the medians below count the calling thread's processor time instead of the time on
/// the wall (--cpu-time): on a machine shared with other work the wall clock also counts the
/// time the bench waited for a processor.
bool cpuTime = false;

double clockMillis() {
    if (cpuTime) {
        timespec t{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
        return static_cast<double>(t.tv_sec) * 1e3 + static_cast<double>(t.tv_nsec) / 1e6;
    }
    return std::chrono::duration<double, std::milli>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t n = values.size();
    return n % 2 == 1 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

/// Median of `runs` timed calls.
double medianMillis(int runs, const std::function<void()>& work) {
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        const double start = clockMillis();
        work();
        times.push_back(clockMillis() - start);
    }
    return median(times);
}

std::string millisText(double ms) {
    char text[32];
    std::snprintf(text, sizeof text, ms < 10 ? "%.2f" : "%.1f", ms);
    return text;
}

std::string ratioText(double slow, double fast) {
    char text[32];
    std::snprintf(text, sizeof text, "%.0fx", fast > 0 ? slow / fast : 0.0);
    return text;
}

// ---------------------------------------------------------------------------------------------
// The month view

/// The answers of one month view: the events of each cell, then the ids of the selected day.
struct MonthAnswers {
    std::vector<std::vector<std::size_t>> cells;
    std::vector<std::string> selected;
    bool operator==(const MonthAnswers&) const = default;
};

MonthAnswers monthByBatch(const RuleBatch& batch, const std::vector<Date>& cells, Date selected) {
    MonthAnswers answers;
    answers.cells = batch.indicesOnDates(cells);
    answers.selected = batch.eventIdsOnDate(selected);
    return answers;
}

/// With the rules compiled for this call, as the first month after a commit does.
MonthAnswers monthByEngine(const std::vector<eventInfo>& events, const std::vector<Date>& cells,
                           Date selected, const Calendar& calendar) {
    const RuleBatch batch(events, calendar);
    return monthByBatch(batch, cells, selected);
}

/// The walks, over the events at positions `sample` only.
MonthAnswers monthByWalk(const std::vector<eventInfo>& events,
                         const std::vector<std::size_t>& sample, const std::vector<Date>& cells,
                         Date selected, const Calendar& calendar) {
    MonthAnswers answers;
    for (const Date cell : cells) {
        std::vector<std::size_t> on;
        for (const std::size_t i : sample) {
            if (eventHappensOnDay(events[i], cell, calendar)) {
                on.push_back(i);
            }
        }
        answers.cells.push_back(std::move(on));
    }
    for (const std::size_t i : sample) {
        if (eventHappensOnDay(events[i], selected, calendar)) {
            answers.selected.push_back(events[i].eventId);
        }
    }
    return answers;
}

MonthAnswers restrictTo(const MonthAnswers& answers, const std::vector<std::size_t>& sample,
                        const std::vector<eventInfo>& events) {
    std::vector<bool> inSample(events.size(), false);
    for (const std::size_t i : sample) {
        inSample[i] = true;
    }
    MonthAnswers result;
    for (const auto& cell : answers.cells) {
        std::vector<std::size_t> kept;
        for (const std::size_t i : cell) {
            if (inSample[i]) {
                kept.push_back(i);
            }
        }
        result.cells.push_back(std::move(kept));
    }
    std::vector<std::string> sampledIds;
    for (const std::size_t i : sample) {
        sampledIds.push_back(events[i].eventId);
    }
    std::sort(sampledIds.begin(), sampledIds.end());
    for (const std::string& id : answers.selected) {
        if (std::binary_search(sampledIds.begin(), sampledIds.end(), id)) {
            result.selected.push_back(id);
        }
    }
    return result;
}

/// The same rules as RRULEs for libical, with floating local times.
struct IcalRule {
    icalrecurrencetype recurrence{};
    icaltimetype start{};
    bool oneOff = false;
};

icaltimetype icalTime(std::int64_t days, int hour, int minute, int second = 0) {
    const CivilDate date = civilFromDays(days);
    icaltimetype t = icaltime_null_time();
    t.year = static_cast<int>(date.year);
    t.month = static_cast<int>(date.month);
    t.day = static_cast<int>(date.day);
    t.hour = hour;
    t.minute = minute;
    t.second = second;
    t.is_date = 0;
    return t;
}

IcalRule icalRule(const eventInfo& e, int firstWeekday) {
    static const char* kDays[] = {"", "MO", "TU", "WE", "TH", "FR", "SA", "SU"};
    IcalRule rule;
    const std::int64_t startDay =
        daysFromCivil(e.eventStartDateYear, e.eventStartDateMonth, e.eventStartDateDay);
    const bool daily = e.eventType == 1;
    rule.start = icalTime(startDay, daily ? static_cast<int>(e.eventDateWhenEveryDayHour) : 0,
                          daily ? static_cast<int>(e.eventDateWhenEveryDayMin) : 0);
    if (e.eventType == 0) {
        rule.oneOff = true;
        return rule;
    }
    std::string text = e.eventType == 1   ? "FREQ=DAILY"
                       : e.eventType == 2 ? "FREQ=WEEKLY"
                       : e.eventType == 3 ? "FREQ=MONTHLY"
                                          : "FREQ=YEARLY";
    if (e.eventHaveCustomizeInterval) {
        text += ";INTERVAL=" + std::to_string(e.eventDateWhenCustomizeRepeatTimes + 1);
    }
    if (e.eventType == 2) {
        text += ";BYDAY=";
        bool first = true;
        for (const std::int64_t code : decodeDayListArchive(e.eventDateWhenEveryWeek)) {
            text += (first ? "" : ",") + std::string(kDays[code]);
            first = false;
        }
        text += firstWeekday == 1 ? ";WKST=SU" : ";WKST=MO";
    }
    if (e.eventType == 3) {
        text += ";BYMONTHDAY=";
        bool first = true;
        for (const std::int64_t code : decodeDayListArchive(e.eventDateWhenEveryMonth)) {
            text += (first ? "" : ",") + (code == 99 ? std::string("-1") : std::to_string(code));
            first = false;
        }
    }
    if (e.eventHaveEndDateOrNot) {
        const CivilDate end = civilFromDays(
            daysFromCivil(e.eventEndDateYear, e.eventEndDateMonth, e.eventEndDateDay));
        char until[32];
        std::snprintf(until, sizeof until, ";UNTIL=%04d%02d%02dT235959", static_cast<int>(end.year),
                      static_cast<int>(end.month), static_cast<int>(end.day));
        text += until;
    }
    rule.recurrence = icalrecurrencetype_from_string(text.c_str());
    return rule;
}

/// libical's answer for every cell: an instance on that day, skipping ahead to its start.
MonthAnswers monthByLibical(const std::vector<eventInfo>& events,
                            const std::vector<std::int64_t>& cellDays, std::int64_t selectedDay,
                            int firstWeekday) {
    MonthAnswers answers;
    answers.cells.resize(cellDays.size());
    for (std::size_t i = 0; i < events.size(); ++i) {
        const IcalRule rule = icalRule(events[i], firstWeekday);
        const auto onDay = [&](std::int64_t day) {
            const icaltimetype dayStart = icalTime(day, 0, 0);
            if (rule.oneOff) {
                return icaltime_compare_date_only(rule.start, dayStart) == 0;
            }
            if (icaltime_compare_date_only(dayStart, rule.start) < 0) {
                return false;
            }
            icalrecur_iterator* it = icalrecur_iterator_new(rule.recurrence, rule.start);
            if (it == nullptr) {
                return false;
            }
            bool found = false;
            if (icalrecur_iterator_set_start(it, dayStart) != 0) {
                const icaltimetype next = icalrecur_iterator_next(it);
                found =
                    !icaltime_is_null_time(next) && icaltime_compare_date_only(next, dayStart) == 0;
            }
            icalrecur_iterator_free(it);
            return found;
        };
        for (std::size_t c = 0; c < cellDays.size(); ++c) {
            if (onDay(cellDays[c])) {
                answers.cells[c].push_back(i);
            }
        }
        if (onDay(selectedDay)) {
            answers.selected.push_back(events[i].eventId);
        }
    }
    return answers;
}

/// The share of (event, day) answers on which two month views agree, and the events' types
/// where they differ.
struct Agreement {
    double percent = 100;
    std::int64_t differingByType[5] = {};
};

Agreement agreement(const MonthAnswers& a, const MonthAnswers& b,
                    const std::vector<eventInfo>& events) {
    Agreement result;
    const std::size_t n = events.size();
    std::size_t same = 0;
    std::size_t total = 0;
    for (std::size_t c = 0; c < a.cells.size(); ++c) {
        std::vector<bool> inA(n, false), inB(n, false);
        for (const std::size_t i : a.cells[c]) {
            inA[i] = true;
        }
        for (const std::size_t i : b.cells[c]) {
            inB[i] = true;
        }
        for (std::size_t i = 0; i < n; ++i) {
            if (inA[i] == inB[i]) {
                ++same;
            } else if (events[i].eventType >= 0 && events[i].eventType <= 4) {
                ++result.differingByType[events[i].eventType];
            }
            ++total;
        }
    }
    if (total > 0) {
        result.percent = 100.0 * static_cast<double>(same) / static_cast<double>(total);
    }
    return result;
}

#ifdef TIDEMARK_BENCH_WITH_SHELL
// ---------------------------------------------------------------------------------------------
// The main screen

constexpr double kFirstFrameLimitMs = 500;

/// A fresh folder as XDG_DATA_HOME and XDG_CONFIG_HOME while the object lives, so that the app
/// opens a store and settings of its own; the variables are put back and the folder removed
/// afterwards.
class PrivateHome {
public:
    PrivateHome() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "tidemark-bench-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            std::fprintf(stderr, "tidemark-bench: cannot make a folder in %s\n",
                         std::filesystem::temp_directory_path().c_str());
            std::exit(1);
        }
        root_ = pattern;
        save("XDG_DATA_HOME", oldData_, hadData_);
        save("XDG_CONFIG_HOME", oldConfig_, hadConfig_);
        setenv("XDG_DATA_HOME", (root_ / "data").c_str(), 1);
        setenv("XDG_CONFIG_HOME", (root_ / "config").c_str(), 1);
        DefaultsSuite::resetForTesting();
        setDefaultStorePath({});
    }
    ~PrivateHome() {
        DefaultsSuite::resetForTesting();
        restore("XDG_DATA_HOME", oldData_, hadData_);
        restore("XDG_CONFIG_HOME", oldConfig_, hadConfig_);
        setDefaultStorePath({});
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }
    PrivateHome(const PrivateHome&) = delete;
    PrivateHome& operator=(const PrivateHome&) = delete;

private:
    static void save(const char* name, std::string& value, bool& had) {
        const char* v = std::getenv(name);
        had = v != nullptr;
        value = v != nullptr ? v : "";
    }
    static void restore(const char* name, const std::string& value, bool had) {
        if (had) {
            setenv(name, value.c_str(), 1);
        } else {
            unsetenv(name);
        }
    }
    std::filesystem::path root_;
    std::string oldData_, oldConfig_;
    bool hadData_ = false, hadConfig_ = false;
};

/// A private home with the calendar's clock fixed at `now` in `environment`; the environment in
/// force before is put back afterwards.
class FixedClockHome : public PrivateHome {
public:
    FixedClockHome(const CalendarEnvironment& environment, Date now)
        : previous_(calendarEnvironment()) {
        CalendarEnvironment fixed = environment;
        fixed.fixedNow = now;
        setCalendarEnvironment(fixed);
    }
    ~FixedClockHome() { setCalendarEnvironment(previous_); }

private:
    CalendarEnvironment previous_;
};

/// The one QGuiApplication of the run, made the first time the main screen is measured.
std::unique_ptr<QGuiApplication> guiApplication;

void ensureGuiApplication() {
    if (guiApplication) {
        return;
    }
    static int argc = 1;
    static char name[] = "tidemark-bench";
    static char* argv[] = {name, nullptr};
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    guiApplication = std::make_unique<QGuiApplication>(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Material"));
}

/// Launches the app into `engine` and waits for the window's first frame; the milliseconds
/// from the start of launch(), or a negative value if the window failed or never drew.
double launchToFirstFrame(tideMarkApp& app, QQmlApplicationEngine& engine) {
    QElapsedTimer clock;
    clock.start();
    if (!app.launch(engine) || engine.rootObjects().isEmpty()) {
        return -1;
    }
    auto* window = qobject_cast<QQuickWindow*>(engine.rootObjects().first());
    if (window == nullptr) {
        return -1;
    }
    double firstFrameMs = -1;
    QEventLoop loop;
    QObject::connect(
        window, &QQuickWindow::frameSwapped, &loop,
        [&] {
            firstFrameMs = static_cast<double>(clock.nsecsElapsed()) / 1e6;
            loop.quit();
        },
        Qt::SingleShotConnection);
    QTimer::singleShot(20000, &loop, &QEventLoop::quit);
    loop.exec();
    return firstFrameMs;
}

/// The app's colour names in place of the mix's own, with some events on the default colour.
std::vector<eventInfo> withAppColors(std::vector<eventInfo> events) {
    for (std::size_t i = 0; i < events.size(); ++i) {
        events[i].eventColorString =
            i % 11 == 0 ? "" : "colorForUserSelection0" + std::to_string(1 + i % 5);
    }
    return events;
}

void benchmarkMainScreen(const std::vector<eventInfo>& mix, const CalendarEnvironment& environment,
                         Date now) {
    ensureGuiApplication();
    const std::int64_t n = static_cast<std::int64_t>(mix.size());
    FixedClockHome home(environment, now);
    Setting<bool>("userLaunchStatus", false).set(true);
    const std::vector<eventInfo> stock = withAppColors(mix);
    {
        Store store = Store::open();
        store.write([&] {
            for (const eventInfo& e : stock) {
                store.add(e);
            }
        });
    }
    const std::int64_t stored = Store::open().count<eventInfo>();
    // A commit of the events table (the first event written again as it is), so that the next
    // read finds nothing kept, as a fresh process would.
    const auto commitEvents = [&] {
        Store store = Store::open();
        store.write([&] { store.add(stock.front()); });
    };

    // The first frame, each time with a fresh app, engine and window and after a commit; the
    // last stays up while the month changes are timed.
    const int runs = n <= 1000 ? 5 : 3;
    std::vector<double> firstFrames;
    auto app = std::make_unique<tideMarkApp>();
    auto engine = std::make_unique<QQmlApplicationEngine>();
    bool failed = false;
    for (int run = 0; run < runs && !failed; ++run) {
        if (run > 0) {
            engine.reset();
            app.reset();
            QCoreApplication::processEvents();
            app = std::make_unique<tideMarkApp>();
            engine = std::make_unique<QQmlApplicationEngine>();
        }
        commitEvents();
        const double ms = launchToFirstFrame(*app, *engine);
        failed = ms < 0;
        firstFrames.push_back(ms);
    }
    if (failed || stored != n) {
        std::printf("main-screen N=%lld: FAILED (%s)\n", static_cast<long long>(n),
                    failed ? "the window did not load or draw"
                           : "the store does not hold the seeded events");
    } else {
        // A month change as the grid does it: the store's result set and the compiled rules as
        // kept since the last commit, 42 days; a year forward, then back.
        MonthModel month;
        constexpr int kChanges = 24;
        QElapsedTimer step;
        std::vector<double> changes;
        for (int i = 0; i < kChanges; ++i) {
            step.start();
            month.moveMonth(i < kChanges / 2 ? 1 : -1);
            changes.push_back(static_cast<double>(step.nsecsElapsed()) / 1e6);
        }
        // And the first one after a commit, which reads the store and compiles the rules anew.
        std::vector<double> afterCommit;
        for (int i = 0; i < 5; ++i) {
            commitEvents();
            step.start();
            month.moveMonth(i % 2 == 0 ? 1 : -1);
            afterCommit.push_back(static_cast<double>(step.nsecsElapsed()) / 1e6);
        }
        // Its parts apart, on the 42 days from the 1st of the month of now: the kept result set
        // and rules, then a store read and a compile after a commit.
        const Calendar& calendar = Calendar::current();
        const DateComponents nowParts = calendar.dateComponents(kYear | kMonth, now);
        std::vector<Date> days;
        for (int d = 1; d <= MonthModel::kCellCount; ++d) {
            DateComponents c;
            c.year = nowParts.year;
            c.month = nowParts.month;
            c.day = d;
            days.push_back(unwrap(calendar.date(c)));
        }
        std::shared_ptr<const std::vector<eventInfo>> events;
        const double storeMs = medianMillis(9, [&] { events = Results<eventInfo>().shared(); });
        KeptRuleBatch kept;
        std::size_t hits = 0;
        const double engineMs = medianMillis(9, [&] {
            hits = 0;
            for (const auto& day :
                 kept.over(Results<eventInfo>().shared(), calendar).indicesOnDates(days)) {
                hits += day.size();
            }
        });
        std::vector<double> reads, compiles;
        for (int i = 0; i < 5; ++i) {
            commitEvents();
            step.start();
            events = Results<eventInfo>().shared();
            reads.push_back(static_cast<double>(step.nsecsElapsed()) / 1e6);
            step.start();
            const RuleBatch batch(*events, calendar);
            hits += batch.indicesOnDates(days).size() > 0 ? 0 : 1;
            compiles.push_back(static_cast<double>(step.nsecsElapsed()) / 1e6);
        }
        // The same in the window: the calendar control's moveMonth() (what the arrows call)
        // until the next frame is on screen, the 42 cells and their rings redrawn.
        std::vector<double> drawn;
        auto* window = qobject_cast<QQuickWindow*>(engine->rootObjects().first());
        std::function<QQuickItem*(QQuickItem*)> findCalendar = [&](QQuickItem* item) {
            if (item->objectName() == QLatin1String("calendar")) {
                return item;
            }
            for (QQuickItem* child : item->childItems()) {
                if (QQuickItem* found = findCalendar(child)) {
                    return found;
                }
            }
            return static_cast<QQuickItem*>(nullptr);
        };
        QQuickItem* control = findCalendar(window->contentItem());
        // The window's lists first catch up with the commits made above (each re-reads the
        // store once), so that what is timed is the month change alone.
        QElapsedTimer settle;
        settle.start();
        while (settle.elapsed() < 500) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
        }
        for (int i = 0; control != nullptr && i < kChanges; ++i) {
            QEventLoop loop;
            const auto swapped = QObject::connect(window, &QQuickWindow::frameSwapped, &loop,
                                                  &QEventLoop::quit, Qt::SingleShotConnection);
            QTimer::singleShot(5000, &loop, &QEventLoop::quit);
            step.start();
            QMetaObject::invokeMethod(control, "moveMonth",
                                      Q_ARG(QVariant, i < kChanges / 2 ? 1 : -1));
            loop.exec();
            drawn.push_back(static_cast<double>(step.nsecsElapsed()) / 1e6);
            QObject::disconnect(swapped);
        }
        if (!drawn.empty()) {
            std::printf("main-screen N=%lld: month change in the window, to the drawn frame: %s ms "
                        "median, %s ms worst\n",
                        static_cast<long long>(n), millisText(median(drawn)).c_str(),
                        millisText(*std::max_element(drawn.begin(), drawn.end())).c_str());
        } else {
            std::printf("# main-screen N=%lld: no calendar in the window\n",
                        static_cast<long long>(n));
        }
        std::printf("main-screen N=%lld: first frame %s ms (limit %.0f ms), month change %s ms "
                    "median, %s ms worst (engine %s ms, store %s ms); the first after a commit "
                    "%s ms median (engine %s ms, store %s ms)\n",
                    static_cast<long long>(n), millisText(median(firstFrames)).c_str(),
                    kFirstFrameLimitMs, millisText(median(changes)).c_str(),
                    millisText(*std::max_element(changes.begin(), changes.end())).c_str(),
                    millisText(engineMs).c_str(), millisText(storeMs).c_str(),
                    millisText(median(afterCommit)).c_str(), millisText(median(compiles)).c_str(),
                    millisText(median(reads)).c_str());
        if (hits == 0 || month.rowCount() != MonthModel::kCellCount) {
            std::printf("# main-screen N=%lld: the month grid came out empty\n",
                        static_cast<long long>(n));
        }
    }
    engine.reset();
    app.reset();
    QCoreApplication::processEvents();
    std::fflush(stdout);
}
/// Scrolls the vertical card stack over the events of `mix` offscreen, one step of 56 points per
/// frame (a brisk fling) from the first card on, and times each frame from the scroll step to
/// the rendered picture (polish, the cards' looks, sync, render and read-back).
void benchmarkStackScroll(const std::vector<eventInfo>& mix, const CalendarEnvironment& environment,
                          Date now) {
    ensureGuiApplication();
    const std::int64_t n = static_cast<std::int64_t>(mix.size());
    FixedClockHome home(environment, now);
    {
        const std::vector<eventInfo> events = withAppColors(mix);
        Store store = Store::open();
        store.write([&] {
            for (const eventInfo& e : events) {
                store.add(e);
            }
        });
    }
    registerQmlTypes();
    auto view = std::make_unique<QQuickView>();
    view->setResizeMode(QQuickView::SizeRootObjectToView);
    view->resize(390, 844);
    QQmlComponent component(view->engine());
    component.setData(R"(import QtQuick
StackedCardsList { width: 390; height: 844; stackedDisplayCount: 2; opacityDisplayCount: 2;
                   itemHeight: 210; spacing: 14 })",
                      moduleFileUrl(QStringLiteral("StackScrollBench.qml")));
    auto* list = qobject_cast<QQuickItem*>(component.create());
    if (list == nullptr) {
        std::printf("stack-scroll N=%lld: FAILED (%s)\n", static_cast<long long>(n),
                    qPrintable(component.errorString()));
        return;
    }
    view->setContent(component.url(), &component, list);
    view->show();
    view->grabWindow();
    const int cards = list->property("count").toInt();
    const double stepPoints = 56;
    const double end = cards * (210.0 + 14.0);
    constexpr int kMaxFrames = 1500;
    std::vector<double> frames;
    QElapsedTimer clock;
    double y = list->property("contentY").toDouble();
    for (int frame = 0; frame < kMaxFrames && y < end; ++frame) {
        y += stepPoints;
        clock.start();
        list->setProperty("contentY", y);
        const QImage picture = view->grabWindow();
        frames.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
        if (picture.isNull()) {
            break;
        }
    }
    // Then a jump to the last card and back to the first.
    std::vector<double> jumps;
    for (const double to : {end - 224.0, 0.0}) {
        clock.start();
        list->setProperty("contentY", to);
        view->grabWindow();
        jumps.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
    }
    const auto slowest = std::max_element(frames.begin(), frames.end());
    const double worst = frames.empty() ? 0 : *slowest;
    const long worstAt = frames.empty() ? -1 : static_cast<long>(slowest - frames.begin());
    auto* content = list->property("contentItem").value<QQuickItem*>();
    const int made = content != nullptr ? static_cast<int>(content->childItems().size()) : 0;
    std::printf("stack-scroll N=%lld: %d cards, %zu frames of %.0f pt, median %s ms, worst %s ms "
                "(frame %ld) per frame; jump to the last card %s ms and back %s ms; %d cards "
                "made at the end\n",
                static_cast<long long>(n), cards, frames.size(), stepPoints,
                millisText(median(frames)).c_str(), millisText(worst).c_str(), worstAt,
                millisText(jumps[0]).c_str(), millisText(jumps[1]).c_str(), made);
    view.reset();
    QCoreApplication::processEvents();
    std::fflush(stdout);
}
#endif

// ---------------------------------------------------------------------------------------------

void benchmark(std::int64_t count, std::uint64_t seed, const CalendarEnvironment& environment,
               const Calendar& calendar, Date now) {
    const DateComponents todayParts = calendar.dateComponents(kYear | kMonth | kDay, now);
    const std::int64_t today = daysFromCivil(*todayParts.year, *todayParts.month, *todayParts.day);
    const std::vector<eventInfo> events = makeEvents(count, seed, today);
    const std::size_t n = events.size();

    // The month of today as the calendar page draws it: 6 weeks from the first weekday on or
    // before the 1st; the selected day is today.
    const std::int64_t first = daysFromCivil(*todayParts.year, *todayParts.month, 1);
    const std::int64_t gridStart =
        first - floorMod(weekdayOfDays(first) - calendar.firstWeekday(), 7);
    std::vector<std::int64_t> cellDays;
    std::vector<Date> cells;
    for (std::int64_t c = 0; c < 42; ++c) {
        const CivilDate d = civilFromDays(gridStart + c);
        DateComponents parts;
        parts.year = d.year;
        parts.month = d.month;
        parts.day = d.day;
        cellDays.push_back(gridStart + c);
        cells.push_back(unwrap(calendar.date(parts)));
    }

    // The walk costs about a millisecond per event at this scale: sample it beyond 1,000.
    const std::size_t sampleEvery = n > 1000 ? n / 1000 : 1;
    std::vector<std::size_t> sample;
    for (std::size_t i = 0; i < n; i += sampleEvery) {
        sample.push_back(i);
    }
    const int engineRuns = n <= 1000 ? 21 : 9;
    const int walkRuns = n <= 100 ? 5 : n <= 1000 ? 3 : 1;
    const int libicalRuns = n <= 1000 ? 3 : 1;

    MonthAnswers engine;
    const double engineMs =
        medianMillis(engineRuns, [&] { engine = monthByEngine(events, cells, now, calendar); });
    // The months after it: the rules stay compiled until the next commit.
    const RuleBatch kept(events, calendar);
    MonthAnswers keptAnswers = monthByBatch(kept, cells, now);
    const double keptMs =
        medianMillis(engineRuns, [&] { keptAnswers = monthByBatch(kept, cells, now); });
    MonthAnswers walk;
    const double walkSampleMs =
        medianMillis(walkRuns, [&] { walk = monthByWalk(events, sample, cells, now, calendar); });
    const double walkMs =
        walkSampleMs * static_cast<double>(n) / static_cast<double>(sample.size());
    MonthAnswers ical;
    const double icalMs = medianMillis(libicalRuns, [&] {
        ical = monthByLibical(events, cellDays, today, calendar.firstWeekday());
    });
    const bool identical = restrictTo(engine, sample, events) == walk && keptAnswers == engine;
    const std::string sampled = sample.size() < n
                                    ? " (sampled: " + std::to_string(sample.size()) + " of " +
                                          std::to_string(n) + " events, scaled)"
                                    : "";
    std::printf("month-view N=%lld: engine %s ms (rules kept from the month before: %s ms), "
                "reference %s ms%s, libical %s ms, "
                "reference/engine %s, libical/engine %s, answers identical: %s%s\n",
                static_cast<long long>(n), millisText(engineMs).c_str(), millisText(keptMs).c_str(),
                millisText(walkMs).c_str(), sampled.c_str(), millisText(icalMs).c_str(),
                ratioText(walkMs, engineMs).c_str(), ratioText(icalMs, engineMs).c_str(),
                identical ? "yes" : "NO", sample.size() < n ? " (on the sampled events)" : "");
    const Agreement agreed = agreement(engine, ical, events);
    std::printf("# month-view N=%lld: libical agrees with the engine on %.2f%% of the %zu "
                "(event, cell) answers; differing answers by type: one-off %lld, daily %lld, "
                "weekly %lld, monthly %lld, yearly %lld\n",
                static_cast<long long>(n), agreed.percent, n * cells.size(),
                static_cast<long long>(agreed.differingByType[0]),
                static_cast<long long>(agreed.differingByType[1]),
                static_cast<long long>(agreed.differingByType[2]),
                static_cast<long long>(agreed.differingByType[3]),
                static_cast<long long>(agreed.differingByType[4]));

    // The plan's occurrence work, with a reminder on every event.
    std::vector<eventInfo> reminded = events;
    for (eventInfo& e : reminded) {
        e.eventNotiOrNot = true;
    }
    std::vector<const EventFields*> pointers;
    for (const eventInfo& e : reminded) {
        pointers.push_back(&e);
    }
    std::vector<PlannedOccurrence> fastPlan;
    const double planMs = medianMillis(engineRuns, [&] {
        const RuleBatch batch(reminded, calendar);
        fastPlan = batch.planOccurrences(now);
    });
    std::vector<PlannedOccurrence> walkPlan;
    const double walkPlanMs = medianMillis(
        n <= 1000 ? 5 : 3, [&] { walkPlan = planOccurrencesByWalk(pointers, now, calendar); });
    std::printf("plan-occurrences N=%lld: engine %s ms, reference %s ms, reference/engine %s, "
                "answers identical: %s (every event with a reminder, %zu occurrences)\n",
                static_cast<long long>(n), millisText(planMs).c_str(),
                millisText(walkPlanMs).c_str(), ratioText(walkPlanMs, planMs).c_str(),
                fastPlan == walkPlan ? "yes" : "NO", fastPlan.size());

    // The widget publication's encoding.
    std::string json;
    const double widgetMs = medianMillis(engineRuns, [&] { json = encodeWidgetData(events); });
    const nlohmann::json parsed = nlohmann::json::parse(json, nullptr, false);
    const bool complete = parsed.is_array() && parsed.size() == n &&
                          std::all_of(parsed.begin(), parsed.end(), [](const nlohmann::json& e) {
                              return e.size() == 32 && e.at("backupDataType02") == "";
                          });
    std::printf("widget-publication N=%lld: encodeWidgetData %s ms, %zu bytes, a complete JSON "
                "array of the events: %s\n",
                static_cast<long long>(n), millisText(widgetMs).c_str(), json.size(),
                complete ? "yes" : "NO");
    std::fflush(stdout);
#ifdef TIDEMARK_BENCH_WITH_SHELL
    benchmarkMainScreen(events, environment, now);
    if (count == 1000) {
        benchmarkStackScroll(events, environment, now);
    }
#else
    (void)environment;
#endif
}

} // namespace

#ifdef TIDEMARK_BENCH_WITH_SHELL
constexpr const char* kMainScreenNote = "; the main-screen line opens the window offscreen";
#else
constexpr const char* kMainScreenNote = "; built without the shell: no main-screen line";
#endif

int main(int argc, char** argv) {
    std::vector<std::int64_t> counts;
    std::uint64_t seed = kDefaultSeed;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--cpu-time") {
            cpuTime = true;
        } else if ((arg == "--events" || arg == "--seed") && i + 1 < argc) {
            char* end = nullptr;
            const long long value = std::strtoll(argv[++i], &end, 10);
            if (end == nullptr || *end != '\0' || value <= 0) {
                std::fprintf(stderr, "tidemark-bench: %s needs a positive number\n", arg.c_str());
                return 2;
            }
            if (arg == "--events") {
                counts.push_back(value);
            } else {
                seed = static_cast<std::uint64_t>(value);
            }
        } else {
            std::fprintf(stderr,
                         "usage: tidemark-bench [--events N]... [--seed S] [--cpu-time]\n"
                         "  N events per run (default 100, 1000 and 10000)%s\n",
                         kMainScreenNote);
            return arg == "--help" || arg == "-h" ? 0 : 2;
        }
    }
    if (counts.empty()) {
        counts = {100, 1000, 10000};
    }

    // A fixed place and moment, so that runs compare: Berlin, German week rules, the Friday
    // before the clocks go forward in 2026.
    CalendarEnvironment environment;
    environment.timeZoneId = "Europe/Berlin";
    environment.localeId = "de_DE";
    const Calendar calendar(environment);
    DateComponents nowParts;
    nowParts.year = 2026;
    nowParts.month = 3;
    nowParts.day = 27;
    nowParts.hour = 9;
    nowParts.minute = 30;
    const Date now = unwrap(calendar.date(nowParts));
    std::printf("# tidemark-bench: seed %llu, %s, %s, now 2026-03-27 09:30, medians of repeated "
                "runs; the reference is the walk of each rule from its start\n",
                static_cast<unsigned long long>(seed), calendar.timeZoneId().c_str(),
                calendar.localeId().c_str());
    for (const std::int64_t count : counts) {
        benchmark(count, seed, environment, calendar, now);
    }
#ifdef TIDEMARK_BENCH_WITH_SHELL
    guiApplication.reset();
#endif
    return 0;
}
