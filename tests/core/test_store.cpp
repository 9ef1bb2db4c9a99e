// The SQLite object store: table layout, store order, queries, round trips, change observers and
// the fatal stops that guard it.
#include "RecordSupport.h"
#include "base/Fatal.h"
#include "records/SqliteWait.h"
#include "records/Store.h"

#include <chrono>
#include <climits>
#include <deque>
#include <fstream>
#include <gtest/gtest.h>
#include <mutex>
#include <set>
#include <sqlite3.h>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace tidemark;
using namespace tidemark::testing;

namespace {

using Ids = std::vector<std::string>;

memoDataForNotiObject memo(const std::string& id, const std::string& title, std::int64_t number,
                           const std::string& content = "") {
    memoDataForNotiObject m;
    m.memoId = id;
    m.eventId = "E";
    m.title = title;
    m.content = content;
    m.backupDataType01 = number;
    return m;
}

class StoreTest : public ::testing::Test {
protected:
    std::filesystem::path file() const { return dir.path() / "store" / "test.sqlite"; }
    Store open() const { return Store::open(file()); }
    TempDir dir;
};

} // namespace

TEST_F(StoreTest, StoreOrderIsInsertionOrderAndAnOverwriteKeepsItsPlace) {
    auto store = open();
    storeAll(std::vector{memo("A", "a", 1), memo("B", "b", 2), memo("C", "c", 3)}, store);
    store.write([&] { store.add(memo("A", "a again", 10)); });
    auto memos = store.objects<memoDataForNotiObject>();
    EXPECT_EQ(idsOf(memos), (Ids{"A", "B", "C"}));
    EXPECT_EQ(memos[0].title, "a again");
    EXPECT_EQ(memos[0].backupDataType01, 10);

    // A removed record that comes back goes to the end.
    store.write([&] {
        store.remove<memoDataForNotiObject>("B");
        store.remove<memoDataForNotiObject>("no such id");
    });
    store.write([&] { store.add(memo("B", "b", 2)); });
    EXPECT_EQ(idsOf(store.objects<memoDataForNotiObject>()), (Ids{"A", "C", "B"}));
    EXPECT_EQ(store.count<memoDataForNotiObject>(), 3);
    EXPECT_EQ(store.object<memoDataForNotiObject>("C"), memo("C", "c", 3));
    EXPECT_EQ(store.object<memoDataForNotiObject>("D"), std::nullopt);
}

TEST_F(StoreTest, QueriesHoldEveryPredicate) {
    auto store = open();
    storeAll(std::vector{memo("m1", "Dentist", 5, "teeth"), memo("m2", "dentist follow-up", 3),
                         memo("m3", "Birthday", 5, "cake"), memo("m4", "DENTIST", 8),
                         memo("m5", "Zoo", -1)},
             store);
    using Op = Predicate::Op;
    struct Case {
        const char* name;
        Query query;
        Ids ids;
    };
    const Query all;
    const auto number = [&](Op op, std::int64_t value) {
        return all.where("backupDataType01", op, value);
    };
    const std::vector<Case> cases = {
        {"equal", all.equal("backupDataType01", std::int64_t{5}), {"m1", "m3"}},
        {"not equal", number(Op::NotEqual, 5), {"m2", "m4", "m5"}},
        {"less", number(Op::Less, 5), {"m2", "m5"}},
        {"less or equal", number(Op::LessOrEqual, 5), {"m1", "m2", "m3", "m5"}},
        {"greater", number(Op::Greater, 5), {"m4"}},
        {"greater or equal", number(Op::GreaterOrEqual, 5), {"m1", "m3", "m4"}},
        {"string order is by code point",
         all.where("title", Op::Less, std::string("a")),
         {"m1", "m3", "m4", "m5"}},
        {"contains is case-sensitive",
         all.where("title", Op::Contains, std::string("dentist")),
         {"m2"}},
        {"all predicates hold, contains ignoring case",
         number(Op::GreaterOrEqual, 4)
             .where("title", Op::ContainsCaseInsensitive, std::string("dEnTiSt")),
         {"m1", "m4"}},
        {"no match", all.equal("memoId", std::string("m9")), {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(idsOf(store.objects<memoDataForNotiObject>(c.query)), c.ids);
        EXPECT_EQ(store.count<memoDataForNotiObject>(c.query),
                  static_cast<std::int64_t>(c.ids.size()));
    }
}

TEST_F(StoreTest, SortsKeepStoreOrderAmongEqualKeys) {
    auto store = open();
    // Primary keys run against store order, so that a scan by key can't pass for store order.
    storeAll(std::vector{memo("e", "b", 2), memo("d", "a", 1), memo("c", "c", 2), memo("b", "a", 3),
                         memo("a", "b", 1)},
             store);
    using Op = Predicate::Op;
    struct Case {
        Query query;
        Ids ids;
    };
    const Query byKey = Query{}.where("memoId", Op::GreaterOrEqual, std::string());
    for (const auto& c : std::vector<Case>{
             {Query{}.sorted("backupDataType01"), {"d", "a", "e", "c", "b"}},
             {Query{}.sorted("backupDataType01", false), {"b", "e", "c", "d", "a"}},
             {Query{}.where("backupDataType01", Op::Less, std::int64_t{3}).sorted("title", false),
              {"c", "e", "a", "d"}},
             {byKey, {"e", "d", "c", "b", "a"}},
             {byKey.sorted("title"), {"d", "b", "e", "a", "c"}},
         }) {
        SCOPED_TRACE(c.query.sort ? c.query.sort->keyPath : "store order");
        EXPECT_EQ(idsOf(store.objects<memoDataForNotiObject>(c.query)), c.ids);
    }
}

TEST_F(StoreTest, EveryFieldTypeRoundTrips) {
    eventInfo full;
    full.eventId = "8F14E45F-CEEA-467F-A0E6-B1A2C3D4E5F6";
    full.eventTitle =
        "Geburtstag \xC3\xA4\xC3\xB6\xC3\xBC \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x8E\x82";
    full.eventContent = std::string("line one\nline two\0after a NUL", 29);
    full.eventStartDateYear = INT64_MAX;
    full.eventStartDateMonth = INT64_MIN;
    full.eventStartDateDay = -1;
    full.eventRepeatOrNot = true;
    full.eventDateWhenEveryWeek = Bytes{0, 0, 1, 0xFF, 0x00, 0x80};
    full.eventDateWhenEveryMonth = Bytes(1000, 0);
    full.eventNotiOrNot = true;
    full.eventStarOrNot = true;
    full.backupDataType03 = "'quoted' \"and\" ; DROP TABLE eventInfo; --";
    eventInfo blank; // empty strings and blobs, zeros, false
    blank.eventId = "";

    auto store = open();
    storeAll(std::vector{full, blank}, store);
    // Read on a second thread, through a connection of its own.
    std::optional<eventInfo> readFull, readBlank;
    std::thread([&] {
        auto other = Store::open(file());
        readFull = other.object<eventInfo>(full.eventId);
        readBlank = other.object<eventInfo>("");
    }).join();
    EXPECT_EQ(readFull, full);
    EXPECT_EQ(readBlank, blank);
    EXPECT_EQ(store.objects<eventInfo>(), (std::vector<eventInfo>{full, blank}));
    // Booleans and blobs can be queried.
    EXPECT_EQ(store.objects<eventInfo>(Query{}.equal("eventStarOrNot", true)),
              std::vector<eventInfo>{full});
    EXPECT_EQ(store.objects<eventInfo>(Query{}.equal("eventDateWhenEveryWeek", Bytes{})),
              std::vector<eventInfo>{blank});
    EXPECT_EQ(store.objects<eventInfo>(
                  Query{}.equal("eventDateWhenEveryWeek", Bytes{0, 0, 1, 0xFF, 0x00, 0x80})),
              std::vector<eventInfo>{full});
}

TEST_F(StoreTest, ConnectionsFollowAFileThatWasReplaced) {
    auto store = open();
    storeAll(std::vector{memo("A", "a", 1)}, store);
    std::filesystem::remove_all(file().parent_path());
    // Same path, new file: the cached connection to the removed one must not be reused.
    auto again = open();
    EXPECT_EQ(again.count<memoDataForNotiObject>(), 0);
    storeAll(std::vector{memo("B", "b", 1)}, again);
    EXPECT_TRUE(std::filesystem::exists(file()));
    EXPECT_EQ(idsOf(Store::open(file()).objects<memoDataForNotiObject>()), (Ids{"B"}));
}

TEST(StoreFiles, ConnectionsToRemovedFilesAreLetGo) {
    auto openDescriptors = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                             std::filesystem::directory_iterator());
    };
    auto useFreshStore = [] {
        TempDir dir;
        auto store = Store::open(dir.path() / "store.sqlite");
        store.write([&] { store.add(memo("A", "a", 1)); });
    };
    useFreshStore(); // the first use may open files for good
    const auto before = openDescriptors();
    for (int i = 0; i < 20; ++i) {
        useFreshStore();
    }
    EXPECT_LE(openDescriptors(), before);
}

// Four processes opening the same new file at once: switching it to WAL mode answers
// "database is locked" at once to all but one (SQLite calls no busy handler there), so the switch
// must be retried; plain "PRAGMA journal_mode=WAL" fails here for a few processes in a hundred.
TEST(SqliteFiles, ProcessesSwitchingANewFileToWalAtOnceAllGetThere) {
    TempDir dir;
    for (int file = 0; file < 60; ++file) {
        const auto path = dir.path() / ("new" + std::to_string(file) + ".sqlite");
        std::vector<pid_t> children;
        for (int p = 0; p < 4; ++p) {
            const pid_t pid = fork();
            ASSERT_GE(pid, 0);
            if (pid == 0) {
                sqlite3* db = nullptr;
                const bool ok =
                    sqlite3_open(path.c_str(), &db) == SQLITE_OK &&
                    (waitWhenBusy(db, 5000), enterWalMode(db, 5000) == SQLITE_OK) &&
                    sqlite3_exec(db, "CREATE TABLE IF NOT EXISTS t (x); INSERT INTO t VALUES (1)",
                                 nullptr, nullptr, nullptr) == SQLITE_OK;
                _exit(ok ? 0 : 1);
            }
            children.push_back(pid);
        }
        for (const pid_t pid : children) {
            int status = 0;
            ASSERT_EQ(waitpid(pid, &status, 0), pid);
            EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << path;
        }
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open(path.c_str(), &db), SQLITE_OK);
        sqlite3_stmt* stmt = nullptr;
        sqlite3_prepare_v2(db, "SELECT count(*) FROM t", -1, &stmt, nullptr);
        EXPECT_EQ(sqlite3_step(stmt), SQLITE_ROW);
        EXPECT_EQ(sqlite3_column_int(stmt, 0), 4) << path;
        sqlite3_finalize(stmt);
        sqlite3_close(db);
    }
}

TEST(SqliteFiles, AWaiterGetsTheLockOnceLetGoAndGivesUpAfterItsTime) {
    TempDir dir;
    const auto path = (dir.path() / "busy.sqlite").string();
    sqlite3* holder = nullptr;
    sqlite3* waiter = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &holder), SQLITE_OK);
    ASSERT_EQ(sqlite3_open(path.c_str(), &waiter), SQLITE_OK);
    ASSERT_EQ(enterWalMode(holder, 1000), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(holder, "CREATE TABLE t (x)", nullptr, nullptr, nullptr), SQLITE_OK);
    struct Case {
        int timeoutMs;
        bool letGo; // the holder commits after 100 ms
        int expected;
    };
    for (const auto& c : {Case{5000, true, SQLITE_OK}, Case{50, false, SQLITE_BUSY}}) {
        ASSERT_EQ(sqlite3_exec(holder, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
        std::thread commit;
        if (c.letGo) {
            commit = std::thread([&] {
                std::this_thread::sleep_for(std::chrono::milliseconds(100));
                sqlite3_exec(holder, "COMMIT", nullptr, nullptr, nullptr);
            });
        }
        waitWhenBusy(waiter, c.timeoutMs);
        EXPECT_EQ(sqlite3_exec(waiter, "INSERT INTO t VALUES (1)", nullptr, nullptr, nullptr),
                  c.expected)
            << c.timeoutMs;
        if (commit.joinable()) {
            commit.join();
        } else {
            sqlite3_exec(holder, "COMMIT", nullptr, nullptr, nullptr);
        }
    }
    sqlite3_close(waiter);
    sqlite3_close(holder);
}

TEST_F(StoreTest, ABodyThatThrowsRollsBackAndTellsNoOne) {
    auto store = open();
    int calls = 0;
    auto token = Store::observeTable(file(), "memoDataForNotiObject", [&] { ++calls; });
    EXPECT_THROW(store.write([&] {
        store.add(memo("A", "a", 1));
        throw std::runtime_error("stop");
    }),
                 std::runtime_error);
    EXPECT_EQ(store.count<memoDataForNotiObject>(), 0);
    EXPECT_EQ(calls, 0);
    // The connection is usable again afterwards.
    storeAll(std::vector{memo("B", "b", 1)}, store);
    EXPECT_EQ(calls, 1);
}

TEST(DefaultStore, FollowsTheDataHomeAndTheOverride) {
    IsolatedStorage storage;
    const auto expected = storage.dataHome() / "tidemark" / "default.sqlite";
    EXPECT_EQ(defaultStorePath(), expected);
    EXPECT_TRUE(std::filesystem::is_directory(expected.parent_path()));

    const auto other = storage.root() / "elsewhere";
    setenv("XDG_DATA_HOME", other.c_str(), 1);
    EXPECT_EQ(defaultStorePath(), other / "tidemark" / "default.sqlite");

    setDefaultStorePath(storage.root() / "chosen.sqlite");
    EXPECT_EQ(defaultStorePath(), storage.root() / "chosen.sqlite");
    auto store = Store::open();
    store.write([&] { store.add(memo("A", "a", 1)); });
    EXPECT_TRUE(std::filesystem::exists(storage.root() / "chosen.sqlite"));
    setDefaultStorePath({});
    EXPECT_EQ(defaultStorePath(), other / "tidemark" / "default.sqlite");
}

// ---- Observers ------------------------------------------------------------------------------

TEST_F(StoreTest, ObserversRunAfterTheCommitAndOnlyForTheirTable) {
    auto store = open();
    std::vector<std::int64_t> seenCounts;
    int otherCalls = 0;
    auto memos = Store::observeTable(file(), "memoDataForNotiObject", [&] {
        // The committed data is visible from inside the callback.
        seenCounts.push_back(Store::open(file()).count<memoDataForNotiObject>());
    });
    auto groups = Store::observeTable(file(), "shareGroup", [&] { ++otherCalls; });

    storeAll(std::vector{memo("A", "a", 1), memo("B", "b", 2)}, store);
    EXPECT_EQ(seenCounts, (std::vector<std::int64_t>{2}));
    store.write([&] { store.remove<memoDataForNotiObject>("A"); });
    store.write([&] { store.removeAll<memoDataForNotiObject>(); });
    EXPECT_EQ(seenCounts, (std::vector<std::int64_t>{2, 1, 0}));
    EXPECT_EQ(otherCalls, 0);

    // A write that touches nothing tells no one; one touching both tables tells both.
    store.write([] {});
    shareGroup g;
    g.shareGroupId = "G";
    store.write([&] {
        store.add(g);
        store.add(memo("C", "c", 3));
    });
    EXPECT_EQ(seenCounts.size(), 4u);
    EXPECT_EQ(otherCalls, 1);

    // Another file's writes are not this file's.
    auto elsewhere = Store::open(dir.path() / "other.sqlite");
    elsewhere.write([&] { elsewhere.add(memo("X", "x", 1)); });
    EXPECT_EQ(seenCounts.size(), 4u);

    // A callback may write to the store; that write is told after the one that caused it.
    memos.cancel();
    std::vector<std::string> order;
    auto writer = Store::observeTable(file(), "memoDataForNotiObject", [&] {
        order.push_back("memo");
        auto inner = Store::open(file());
        inner.write([&] { inner.add(g); });
    });
    groups = Store::observeTable(file(), "shareGroup", [&] { order.push_back("group"); });
    storeAll(std::vector{memo("D", "d", 4)}, store);
    EXPECT_EQ(order, (Ids{"memo", "group"}));
}

TEST_F(StoreTest, ObserversHearWritesFromOtherThreads) {
    open();
    std::mutex mutex;
    int calls = 0;
    std::set<std::thread::id> callbackThreads, writers;
    auto token = Store::observeTable(file(), "eventInfo", [&] {
        std::lock_guard lock(mutex);
        callbackThreads.insert(std::this_thread::get_id());
        ++calls;
    });
    // Many writers at once: every commit is seen once, none is lost, and without a dispatcher
    // each callback runs on the committing thread.
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&, t] {
            auto store = Store::open(file());
            for (int i = 0; i < 10; ++i) {
                eventInfo e;
                e.eventId = std::to_string(t) + "-" + std::to_string(i);
                store.write([&] { store.add(e); });
            }
        });
        writers.insert(threads.back().get_id());
    }
    for (auto& t : threads) {
        t.join();
    }
    EXPECT_EQ(calls, 40);
    EXPECT_EQ(callbackThreads, writers);
}

TEST_F(StoreTest, CancelledObserversAreNotCalledNorQueuedOnes) {
    auto store = open();
    std::deque<std::function<void()>> queue;
    Dispatcher queued = [&](std::function<void()> f) { queue.push_back(std::move(f)); };
    int kept = 0, cancelled = 0, dropped = 0, selfCancelled = 0, late = 0, cancelledLate = 0;
    auto keep = Store::observeTable(file(), "memoDataForNotiObject", [&] { ++kept; });
    auto cancel = Store::observeTable(file(), "memoDataForNotiObject", [&] { ++cancelled; });
    ObservationToken self;
    self = Store::observeTable(file(), "memoDataForNotiObject", [&] {
        ++selfCancelled;
        self.cancel(); // from inside its own callback, without a deadlock
    });
    {
        auto scoped = Store::observeTable(file(), "memoDataForNotiObject", [&] { ++dropped; });
    }
    auto a = Store::observeTable(
        file(), "memoDataForNotiObject", [&] { ++late; }, queued);
    auto b = Store::observeTable(
        file(), "memoDataForNotiObject", [&] { ++cancelledLate; }, queued);
    cancel.cancel();
    EXPECT_FALSE(cancel);
    storeAll(std::vector{memo("A", "a", 1)}, store);
    storeAll(std::vector{memo("B", "b", 1)}, store);
    EXPECT_EQ(kept, 2);
    EXPECT_EQ(cancelled, 0);
    EXPECT_EQ(dropped, 0);
    EXPECT_EQ(selfCancelled, 1);
    // A queued dispatcher defers the callbacks; one cancelled while queued does not run.
    EXPECT_EQ(queue.size(), 4u);
    EXPECT_EQ(late + cancelledLate, 0);
    b.cancel();
    for (; !queue.empty(); queue.pop_front()) {
        queue.front()();
    }
    EXPECT_EQ(late, 2);
    EXPECT_EQ(cancelledLate, 0);
}

TEST_F(StoreTest, LiveResultsReadTheLatestStateAndObserveTheirTable) {
    Results<memoDataForNotiObject> results({}, file());
    const auto numbered =
        results.filter("backupDataType01", Predicate::Op::Greater, std::int64_t{1})
            .sorted("backupDataType01", false);
    int calls = 0;
    auto token = numbered.observe([&] { ++calls; });
    EXPECT_EQ(results.count(), 0);
    EXPECT_EQ(results.first(), std::nullopt);
    auto store = open();
    storeAll(std::vector{memo("A", "a", 1), memo("B", "b", 2), memo("C", "c", 3)}, store);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(results.count(), 3);
    EXPECT_EQ(idsOf(numbered.snapshot()), (Ids{"C", "B"}));
    EXPECT_EQ(numbered.first()->memoId, "C");
}

// ---- Fatal stops ----------------------------------------------------------------------------

TEST(StoreDeathTest, AStopInsideAWriteKeepsWhatWasCommittedBefore) {
    TempDir dir;
    const auto path = dir.path() / "stopped.sqlite";
    // The child must write the parent's file, so it is forked rather than started afresh.
    const std::string style = GTEST_FLAG_GET(death_test_style);
    GTEST_FLAG_SET(death_test_style, "fast");
    EXPECT_DEATH(
        {
            auto store = Store::open(path);
            store.write([&] { store.add(memo("A", "a", 1)); });
            store.write([&] { store.add(memo("B", "b", 2)); });
            store.write([&] {
                store.add(memo("C", "never committed", 3));
                store.add(memo("A", "never committed", 9));
                fatalStop("stopped inside a write");
            });
        },
        "stopped inside a write");
    GTEST_FLAG_SET(death_test_style, style);
    EXPECT_EQ(Store::open(path).objects<memoDataForNotiObject>(),
              (std::vector{memo("A", "a", 1), memo("B", "b", 2)}));
}

TEST(StoreDeathTest, MisuseIsAFatalStop) {
    TempDir dir;
    const auto path = dir.path() / "misuse.sqlite";
    EXPECT_DEATH(
        {
            auto store = Store::open(path);
            store.write([&] { Store::open(path).write([] {}); });
        },
        "inside another write");
    EXPECT_DEATH(Store::open(path).add(memo("A", "a", 1)), "outside a write");
    EXPECT_DEATH(Store::open(path).objects<memoDataForNotiObject>(Query{}.sorted("nope")),
                 "no field named \"nope\"");
    EXPECT_DEATH(Store::open(path).count<memoDataForNotiObject>(
                     Query{}.equal("backupDataType01", std::string("5"))),
                 "wrong type");
}

TEST(StoreDeathTest, AStoreThatCannotOpenIsAFatalStop) {
    TempDir dir;
    const auto blocker = dir.path() / "a file";
    { std::ofstream(blocker) << "not a folder"; }
    EXPECT_DEATH(Store::open(blocker / "store.sqlite"), "Store: can't open");
    const auto garbage = dir.path() / "garbage.sqlite";
    { std::ofstream(garbage) << std::string(4096, 'x'); }
    EXPECT_DEATH(Store::open(garbage), "file is not a database");
}
