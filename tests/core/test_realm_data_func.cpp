// The store's change operations: what they write, what reaches the cloud and the widgets, in
// which order, and where they stop the program.
#include "QuietCloudService.h"
#include "RecordSupport.h"
#include "cloud/CloudService.h"
#include "records/EventJson.h"
#include "records/SettingsKeys.h"
#include "records/realmDataFunc.h"
#include "widgets/widgetFunc.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <poll.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

using namespace tidemark;
using namespace tidemark::testing;

namespace {

/// Everything that left the store, in order, each with what the store held at that moment.
struct Journal {
    std::vector<std::string> entries;
};

/// Notes each transfer as it starts (the first call of each one); the answers never come.
class RecordingCloud final : public QuietCloudService {
public:
    explicit RecordingCloud(std::shared_ptr<Journal> j) : journal(std::move(j)) {}
    void fetchRecord(
        const CloudRecordId& id,
        std::function<void(std::optional<CloudRecord>, std::optional<CloudError>)>) override {
        if (id.zoneName == "eventZone") {
            // The store's transaction has committed before the transfer starts.
            const bool stored = Store::open().object<eventInfo>(id.recordName).has_value();
            journal->entries.push_back("cloud save event " + id.recordName +
                                       (stored ? " (stored)" : ""));
        } else {
            journal->entries.push_back("cloud save memo " + id.recordName);
        }
    }
    void modifyRecords(std::vector<CloudRecord>, std::vector<CloudRecordId> toDelete,
                       std::function<void(std::optional<CloudError>)>) override {
        for (const auto& id : toDelete) {
            if (id.zoneName == "eventZone") {
                const bool gone = !Store::open().object<eventInfo>(id.recordName);
                journal->entries.push_back("cloud delete event " + id.recordName +
                                           (gone ? " (gone)" : ""));
            } else {
                journal->entries.push_back("cloud delete memo " + id.recordName);
            }
        }
    }
    std::shared_ptr<Journal> journal;
};

class RecordingWidgets final : public WidgetCenter {
public:
    explicit RecordingWidgets(std::shared_ptr<Journal> j) : journal(std::move(j)) {}
    void reloadAllTimelines() override {
        // The data is in the shared suite before the reload is asked for.
        journal->entries.push_back("widgets " + std::to_string(publishedEvents().size()));
    }
    std::shared_ptr<Journal> journal;
};

class RealmDataFuncTest : public ::testing::Test {
protected:
    void SetUp() override {
        journal = std::make_shared<Journal>();
        setCloudService(std::make_shared<RecordingCloud>(journal));
        setWidgetCenter(std::make_shared<RecordingWidgets>(journal));
    }
    void TearDown() override {
        setCloudService(nullptr);
        setWidgetCenter(nullptr);
    }
    void cloudOn() { Setting<bool>("ALL_APP_cloudkitFuncStatus", false).set(true); }
    std::vector<eventInfo> storedEvents() { return Store::open().objects<eventInfo>(); }

    IsolatedStorage storage;
    std::shared_ptr<Journal> journal;
};

} // namespace

TEST_F(RealmDataFuncTest, AddWritesThenCloudThenWidgetsAndOverwritesInPlace) {
    cloudOn();
    realmDataFunc().addEventData(sampleEvent("A"));
    realmDataFunc().addEventData(sampleEvent("B"));
    realmDataFunc().addEventData(sampleEvent("A", "Second title"));

    const auto events = storedEvents();
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[0].eventId, "A"); // the overwrite kept its place
    EXPECT_EQ(events[0].eventTitle, "Second title");
    EXPECT_EQ(events[0].backupDataType02, "kept in the store");
    EXPECT_EQ(events[1].eventId, "B");
    EXPECT_EQ(journal->entries,
              (std::vector<std::string>{"cloud save event A (stored)", "widgets 1",
                                        "cloud save event B (stored)", "widgets 2",
                                        "cloud save event A (stored)", "widgets 2"}));

    // The widgets get every field but the reserved ones, which travel blank.
    const auto published = publishedEvents();
    ASSERT_EQ(published.size(), 2u);
    auto expected = eventAs<eventObjectAtWidget>(sampleEvent("A", "Second title"));
    expected.backupDataType02 = "";
    expected.backupDataType01 = 0;
    EXPECT_EQ(static_cast<const EventFields&>(published[0]),
              static_cast<const EventFields&>(expected));
}

TEST_F(RealmDataFuncTest, NothingReachesTheCloudWhileSyncIsOff) {
    realmDataFunc().addEventData(sampleEvent("A"));
    realmDataFunc().editEventData(storedEvents()[0], "eventTitle", std::string("New"));
    realmDataFunc().addMemoData("A", "M1", "memo", "text", localDate(2026, 3, 10, 9, 5));
    realmDataFunc().deleteMemoData("M1");
    realmDataFunc().deleteEventData("A");
    EXPECT_EQ(journal->entries, (std::vector<std::string>{"widgets 1", "widgets 1", "widgets 0"}));
}

TEST_F(RealmDataFuncTest, DeleteRemovesThenTellsTheCloudAndKeepsMemos) {
    cloudOn();
    realmDataFunc().addEventData(sampleEvent("A"));
    realmDataFunc().addMemoData("A", "M1", "memo", "text", localDate(2026, 3, 10));
    journal->entries.clear();
    realmDataFunc().deleteEventData("A");
    EXPECT_TRUE(storedEvents().empty());
    EXPECT_EQ(journal->entries,
              (std::vector<std::string>{"cloud delete event A (gone)", "widgets 0"}));
    EXPECT_EQ(Store::open().count<memoDataForNotiObject>(), 1);
}

TEST_F(RealmDataFuncTest, EditReplacesExactlyTheNamedField) {
    cloudOn();
    realmDataFunc().addEventData(sampleEvent("A"));
    // The record is copied from the value handed in, not read again from the store.
    auto before = storedEvents()[0];
    before.eventContent = "stale copy";

    // Every edit hands in a value of each type: only the one of the field's type is used. An
    // unknown key or the identifier's own key rewrite the record unchanged.
    const std::pair<std::string, std::function<void(eventInfo&)>> cases[] = {
        {"eventColorString", [](eventInfo& e) { e.eventColorString = "x"; }},
        {"eventStarOrNot", [](eventInfo& e) { e.eventStarOrNot = false; }},
        {"eventType", [](eventInfo& e) { e.eventType = 4; }},
        {"eventDateWhenEveryMonth",
         [](eventInfo& e) {
             e.eventDateWhenEveryMonth = {9, 9};
         }},
        {"backupDataType02", [](eventInfo& e) { e.backupDataType02 = "x"; }},
        {"noSuchField", [](eventInfo&) {}},
        {"eventId", [](eventInfo&) {}},
    };
    for (const auto& [key, expect] : cases) {
        SCOPED_TRACE(key);
        journal->entries.clear();
        realmDataFunc().editEventData(before, key, std::string("x"), 4, false, Bytes{9, 9});
        auto expected = before;
        expect(expected);
        ASSERT_EQ(storedEvents().size(), 1u);
        EXPECT_EQ(storedEvents()[0], expected);
        EXPECT_EQ(journal->entries,
                  (std::vector<std::string>{"cloud save event A (stored)", "widgets 1"}));
    }
}

TEST_F(RealmDataFuncTest, EditOfAVanishedEventOnlyPublishes) {
    cloudOn();
    realmDataFunc().addEventData(sampleEvent("A"));
    const auto record = storedEvents()[0];
    realmDataFunc().deleteEventData("A");
    journal->entries.clear();
    realmDataFunc().editEventData(record, "eventTitle", std::string("T"));
    EXPECT_TRUE(storedEvents().empty());
    EXPECT_EQ(journal->entries, (std::vector<std::string>{"widgets 0"}));
}

TEST_F(RealmDataFuncTest, MemosAreStampedAndNeverPublished) {
    cloudOn();
    ScopedCalendarEnvironment env(fixedEnvironment("Europe/Berlin", "en_US", 2026, 3, 10, 8));
    realmDataFunc().addMemoData("A", "M1", "Title", "Body", localDate(2026, 3, 10, 21, 7, 59));
    realmDataFunc().deleteMemoData("unknown");
    realmDataFunc().addBgTaskInfoMemo();
    const auto memos = Store::open().objects<memoDataForNotiObject>();
    ASSERT_EQ(memos.size(), 2u);
    EXPECT_EQ(memos[0],
              (memoDataForNotiObject{"M1", "A", "2026-03-10 / 21:07", "Title", "Body", 0, "", ""}));
    EXPECT_EQ(memos[1].title, "bgTaskInfo");
    EXPECT_EQ(memos[1].timeStamp, "2026-03-10 / 08:00:00");
    EXPECT_NE(memos[1].memoId, memos[1].eventId);
    EXPECT_EQ(journal->entries, (std::vector<std::string>{"cloud save memo M1"}));

    realmDataFunc().deleteMemoData("M1");
    EXPECT_EQ(journal->entries.back(), "cloud delete memo M1");
    EXPECT_EQ(Store::open().count<memoDataForNotiObject>(), 1);
}

TEST_F(RealmDataFuncTest, PublicationWithNoEventsIsAnEmptyArray) {
    widgetFunc().publishEventDataToWidget();
    // The widget program reads this key by name.
    auto value = DefaultsSuite::named(kSharedSuiteName)->value("eventDataFromMainApp");
    ASSERT_TRUE(value.has_value());
    EXPECT_EQ(std::get<Bytes>(*value), (Bytes{'[', ']'}));
    EXPECT_EQ(journal->entries, (std::vector<std::string>{"widgets 0"}));
}

// Several programs saving at once (the app, the agent, a second instance): every save and
// publication must go through without a fatal stop, and the widget data must always hold exactly
// the store's events, never an older publication written over a newer one. The test starts itself
// four times as savers (TIDEMARK_TEST_SAVER); in each round all four save and publish at the same
// moment, and once all are done the widget data is compared with the store.
TEST_F(RealmDataFuncTest, ProgramsSavingAtOnceLeaveTheWidgetsTheStoresEvents) {
    constexpr int kSavers = 4;
    constexpr int kRounds = 60;
    if (const char* saver = std::getenv("TIDEMARK_TEST_SAVER")) {
        // Told to go on descriptor 3, answers on descriptor 4, in the homes of the test.
        setenv("XDG_DATA_HOME", std::getenv("TIDEMARK_TEST_SAVER_DATA"), 1);
        setenv("XDG_CONFIG_HOME", std::getenv("TIDEMARK_TEST_SAVER_CONFIG"), 1);
        DefaultsSuite::resetForTesting();
        setWidgetCenter(nullptr);
        char go = 0;
        for (int round = 0; read(3, &go, 1) == 1; ++round) {
            realmDataFunc().addEventData(sampleEvent(saver + std::to_string(round)));
            if (round % 4 == 3) { // now and then an earlier event goes
                realmDataFunc().deleteEventData(saver + std::to_string(round - 2));
            }
            ASSERT_EQ(write(4, "x", 1), 1);
        }
        return;
    }

    // The store and the suite exist already, as after the app's first run; new files opened by
    // several processes at once are the subject of SqliteFiles in test_store.
    widgetFunc().publishEventDataToWidget();
    setenv("TIDEMARK_TEST_SAVER_DATA", storage.dataHome().c_str(), 1);
    setenv("TIDEMARK_TEST_SAVER_CONFIG", storage.configHome().c_str(), 1);
    std::string self = std::filesystem::read_symlink("/proc/self/exe").string();
    std::string filter =
        "--gtest_filter=RealmDataFuncTest.ProgramsSavingAtOnceLeaveTheWidgetsTheStoresEvents";
    char* argv[] = {self.data(), filter.data(), nullptr};
    int done[2];
    ASSERT_EQ(pipe2(done, O_CLOEXEC), 0);
    std::vector<pid_t> pids(kSavers);
    std::vector<int> goPipes;
    for (int s = 0; s < kSavers; ++s) {
        int go[2];
        ASSERT_EQ(pipe2(go, O_CLOEXEC), 0);
        setenv("TIDEMARK_TEST_SAVER", ("saver" + std::to_string(s) + "-").c_str(), 1);
        posix_spawn_file_actions_t files;
        posix_spawn_file_actions_init(&files);
        posix_spawn_file_actions_adddup2(&files, go[0], 3);
        posix_spawn_file_actions_adddup2(&files, done[1], 4);
        ASSERT_EQ(posix_spawn(&pids[s], self.c_str(), &files, nullptr, argv, environ), 0);
        posix_spawn_file_actions_destroy(&files);
        close(go[0]);
        goPipes.push_back(go[1]);
    }
    unsetenv("TIDEMARK_TEST_SAVER");
    close(done[1]);

    // True once a saver has ended before its work was done (a stop: its output says why).
    const auto saverGone = [&] {
        return std::any_of(pids.begin(), pids.end(), [](pid_t pid) {
            siginfo_t info{};
            return waitid(P_PID, pid, &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
                   info.si_pid == pid;
        });
    };
    int staleRounds = 0;
    std::string firstStale;
    for (int round = 0; round < kRounds; ++round) {
        for (const int go : goPipes) {
            ASSERT_EQ(write(go, "g", 1), 1);
        }
        int answered = 0;
        char reply[kSavers];
        while (answered < kSavers && !saverGone()) {
            pollfd ready{done[0], POLLIN, 0};
            if (poll(&ready, 1, 100) == 1) {
                answered +=
                    static_cast<int>(std::max<ssize_t>(read(done[0], reply, sizeof reply), 0));
            }
        }
        if (answered < kSavers) {
            break;
        }
        const auto stored = storedEvents();
        if (publishedWidgetData() != encodeWidgetData(stored) && staleRounds++ == 0) {
            firstStale = "round " + std::to_string(round) + ": " +
                         std::to_string(publishedEvents().size()) + " events published, " +
                         std::to_string(stored.size()) + " stored";
        }
    }
    for (int s = 0; s < kSavers; ++s) {
        close(goPipes[s]);
        int status = 0;
        ASSERT_EQ(waitpid(pids[s], &status, 0), pids[s]);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "saver " << s << " stopped";
    }
    close(done[0]);
    EXPECT_EQ(staleRounds, 0) << firstStale;
    EXPECT_EQ(storedEvents().size(), std::size_t(kSavers) * (kRounds - kRounds / 4));
}

using RealmDataFuncDeathTest = RealmDataFuncTest;

TEST_F(RealmDataFuncDeathTest, MissingValuesAndUnknownEventsStop) {
    realmDataFunc().addEventData(sampleEvent("A"));
    const auto record = storedEvents()[0];
    const std::string nil = "Unexpectedly found nil while unwrapping an Optional value";
    EXPECT_DEATH(realmDataFunc().editEventData(record, "eventColorString"), nil);
    EXPECT_DEATH(realmDataFunc().editEventData(record, "eventStarOrNot", std::string("x")), nil);
    EXPECT_DEATH(realmDataFunc().editEventData(record, "eventType", {}, {}, true), nil);
    EXPECT_DEATH(realmDataFunc().deleteEventData("unknown"), nil);
}

TEST_F(RealmDataFuncDeathTest, WhatWasCommittedSurvivesAStop) {
    EXPECT_DEATH(
        {
            realmDataFunc().addEventData(sampleEvent("kept"));
            realmDataFunc().deleteEventData("unknown");
        },
        "Unexpectedly found nil");
    const auto events = storedEvents();
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].eventId, "kept");
}

TEST_F(RealmDataFuncTest, DayRowsFollowTheWindowAndKeepRawDayNumbers) {
    ScopedCalendarEnvironment env(fixedEnvironment("Asia/Shanghai", "zh_CN", 2026, 2, 26, 12));
    struct Case {
        std::int64_t range;
        std::size_t rows;
    };
    for (const auto& c : {Case{0, 7}, Case{1, 30}, Case{2, 365}, Case{3, 0}, Case{-1, 0}}) {
        SCOPED_TRACE(c.range);
        rebuildDayRows(c.range);
        const auto rows = Store::open().objects<appFuncForDateData>();
        ASSERT_EQ(rows.size(), c.rows);
        if (c.rows == 0) {
            continue;
        }
        EXPECT_EQ(rows[0].dateString, "20260226");
        // 26 + 3 = 29 February does not exist in 2026: the row keeps 29 and names 1 March.
        EXPECT_EQ(rows[3].dateInfoMonth, 2);
        EXPECT_EQ(rows[3].dateInfoDay, 29);
        EXPECT_EQ(rows[3].dateString, "20260301");
        EXPECT_EQ(rows.back().dateInfoDay, 26 + static_cast<std::int64_t>(c.rows) - 1);
    }
}

TEST_F(RealmDataFuncTest, RemovingADayDropsOnlyItsRows) {
    ScopedCalendarEnvironment env(fixedEnvironment("America/New_York", "en_US", 2026, 3, 8, 12));
    extensionDataFunc rows;
    DateComponents c;
    c.year = 2026;
    c.month = 3;
    c.day = 8;
    rows.addDateData(c);
    rows.addDateData(c);
    c.day = 9;
    rows.addDateData(c);
    DateComponents unrepresentable;
    unrepresentable.year = 1'000'000'000'000; // composes to no date: the row is today's
    unrepresentable.month = 1;
    unrepresentable.day = 1;
    rows.addDateData(unrepresentable);
    rows.removeDateData(localDate(2026, 3, 8, 23, 30));
    const auto left = Store::open().objects<appFuncForDateData>();
    ASSERT_EQ(left.size(), 1u);
    EXPECT_EQ(left[0].dateString, "20260309");
}
