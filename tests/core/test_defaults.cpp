// The typed defaults store: per-declaration defaults, shared stored values, notifications, files
// and threads.
#include "TestSupport.h"
#include "records/Defaults.h"

#include <algorithm>
#include <climits>
#include <fstream>
#include <gtest/gtest.h>
#include <mutex>
#include <sqlite3.h>
#include <thread>

using namespace tidemark;
using tidemark::testing::IsolatedStorage;
using tidemark::testing::TempDir;

namespace {

/// The type column and SQLite's storage class of a key's row, read from the file itself.
std::optional<std::pair<std::string, std::string>> storedRow(const std::filesystem::path& path,
                                                             const std::string& key) {
    sqlite3* db = nullptr;
    EXPECT_EQ(sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v2(db, "SELECT type, typeof(value) FROM defaults WHERE key = ?", -1, &stmt,
                       nullptr);
    sqlite3_bind_text(stmt, 1, key.c_str(), -1, SQLITE_TRANSIENT);
    std::optional<std::pair<std::string, std::string>> out;
    if (sqlite3_step(stmt) == SQLITE_ROW) {
        out.emplace(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0)),
                    reinterpret_cast<const char*>(sqlite3_column_text(stmt, 1)));
    }
    sqlite3_finalize(stmt);
    sqlite3_close(db);
    return out;
}

using Row = std::pair<std::string, std::string>;

void execute(const std::filesystem::path& path, const char* sql) {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &db), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(db, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(db);
    sqlite3_close(db);
}

} // namespace

TEST(Defaults, DefaultsBelongToEachDeclarationAndAreNeverStored) {
    IsolatedStorage storage;
    auto& suite = DefaultsSuite::standard();
    Setting<std::int64_t> form{"AE_newEventType", 0};
    Setting<std::int64_t> another{"AE_newEventType", 1};
    EXPECT_EQ(form.get(), 0);
    EXPECT_EQ(another.get(), 1);
    EXPECT_FALSE(suite.value("AE_newEventType").has_value());
    EXPECT_FALSE(storedRow(suite.path(), "AE_newEventType").has_value());

    // Writing the value of a default stores it, and from then on both declarations agree.
    form.set(0);
    EXPECT_EQ(storedRow(suite.path(), "AE_newEventType"), (Row{"int", "integer"}));
    EXPECT_EQ(form.get(), 0);
    EXPECT_EQ(another.get(), 0);
    another = 7;
    EXPECT_EQ(static_cast<std::int64_t>(form), 7);

    // Removing the value brings each declaration's own default back.
    suite.removeValue("AE_newEventType");
    EXPECT_FALSE(storedRow(suite.path(), "AE_newEventType").has_value());
    EXPECT_EQ(form.get(), 0);
    EXPECT_EQ(another.get(), 1);
}

TEST(Defaults, EveryTypeRoundTripsWithItsTypeName) {
    TempDir dir;
    DefaultsSuite suite(dir.path() / "suite" / "defaults.sqlite");
    ASSERT_TRUE(suite.isOpen());
    struct Case {
        const char* key;
        DefaultsValue value;
        Row row;
    };
    const std::vector<Case> cases = {
        {"true", true, {"bool", "integer"}},
        {"min", std::int64_t{INT64_MIN}, {"int", "integer"}},
        {"text",
         std::string("caf\xC3\xA9 \xE6\x97\xA5\xE6\x9C\xAC \0 end", 18),
         {"string", "text"}},
        {"empty data", Bytes{}, {"data", "blob"}},
        {"data", Bytes{0, 0xFF, 0, 0x7F, 0x80}, {"data", "blob"}},
    };
    for (const auto& c : cases) {
        suite.setValue(c.key, c.value);
    }
    // Read back through a second connection, as another process would.
    DefaultsSuite other(suite.path());
    for (const auto& c : cases) {
        SCOPED_TRACE(c.key);
        EXPECT_EQ(suite.value(c.key), c.value);
        EXPECT_EQ(other.value(c.key), c.value);
        EXPECT_EQ(storedRow(suite.path(), c.key), c.row);
    }
    // Another connection's writes are seen at the next read; another type replaces the type.
    suite.setValue("true", std::string("now a string"));
    EXPECT_EQ(other.value("true"), DefaultsValue(std::string("now a string")));
    execute(suite.path(), "UPDATE defaults SET value = 6 WHERE key = 'min'");
    EXPECT_EQ(other.value("min"), DefaultsValue(std::int64_t{6}));
    suite.removeValue("min");
    EXPECT_EQ(other.value("min"), std::nullopt);
}

TEST(Defaults, ForeignRowsReadAsAbsentUnlessTheyFitTheirType) {
    TempDir dir;
    const auto path = dir.path() / "defaults.sqlite";
    DefaultsSuite suite(path);
    execute(path, "INSERT INTO defaults VALUES ('unknown', 'date', 5), ('text as int', 'int', 'x'),"
                  "('int as data', 'data', 3), ('null data', 'data', NULL), ('bool', 'bool', 2)");
    EXPECT_EQ(suite.value("unknown"), std::nullopt);
    EXPECT_EQ(suite.value("text as int"), std::nullopt);
    EXPECT_EQ(suite.value("int as data"), std::nullopt);
    EXPECT_EQ(suite.value("null data"), DefaultsValue(Bytes{}));
    EXPECT_EQ(suite.value("bool"), DefaultsValue(true));
    EXPECT_EQ(Setting<std::int64_t>("unknown", 42, suite).get(), 42);
}

TEST(Defaults, AValueOfAnotherTypeReadsAsTheDeclarationsDefault) {
    TempDir dir;
    DefaultsSuite suite(dir.path() / "defaults.sqlite");
    Setting<bool> flag{"key", true, suite};
    Setting<std::int64_t> number{"key", 3, suite};
    Setting<std::string> text{"key", "fallback", suite};
    Setting<Bytes> blob{"key", Bytes{9}, suite};

    text = "hello";
    EXPECT_EQ(flag.get(), true);
    EXPECT_EQ(number.get(), 3);
    EXPECT_EQ(text.get(), "hello");
    EXPECT_EQ(blob.get(), Bytes{9});
    number = 0;
    EXPECT_EQ(flag.get(), true); // an int is not a bool
    EXPECT_EQ(number.get(), 0);
    flag = false;
    EXPECT_EQ(flag.get(), false);
    EXPECT_EQ(number.get(), 3);
}

TEST(Defaults, EveryWriteTellsEveryDeclarationOfTheKey) {
    TempDir dir;
    DefaultsSuite suite(dir.path() / "defaults.sqlite");
    Setting<bool> mainView{"ALL_APP_loading", false, suite};
    Setting<bool> nextDays{"ALL_APP_loading", true, suite};
    Setting<bool> unrelated{"ALL_APP_other", false, suite};
    std::vector<std::string> calls;
    auto a = mainView.observe([&] { calls.push_back("main:" + std::to_string(mainView.get())); });
    auto b = nextDays.observe([&] { calls.push_back("next:" + std::to_string(nextDays.get())); });
    auto c = unrelated.observe([&] { calls.push_back("unrelated"); });

    mainView = true;
    EXPECT_EQ(calls, (std::vector<std::string>{"main:1", "next:1"}));
    calls.clear();
    mainView = true; // the same value again, still a write
    nextDays = true; // the value of its own default, still a write
    EXPECT_EQ(calls.size(), 4u);
    calls.clear();
    suite.removeValue("ALL_APP_loading");
    EXPECT_EQ(calls, (std::vector<std::string>{"main:0", "next:1"}));
    calls.clear();

    b.cancel();
    {
        auto scoped = nextDays.observe([&] { calls.push_back("scoped"); });
    }
    mainView = false;
    EXPECT_EQ(calls, (std::vector<std::string>{"main:0"}));

    // A callback may cancel itself and write to the suite: no deadlock, and it runs once.
    ObservationToken self;
    self = unrelated.observe([&] {
        self.cancel();
        mainView = true;
    });
    unrelated = true;
    unrelated = false;
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "main:1"), 1);
}

// A computed write holds the suite's write lock while computing: other connections wait for it,
// and a computation that throws leaves the old value and a usable suite.
TEST(Defaults, ComputedWritesHoldTheWriteLockAndRollBackWhenTheyThrow) {
    TempDir dir;
    const auto path = dir.path() / "defaults.sqlite";
    DefaultsSuite suite(path);
    int calls = 0;
    auto token = suite.observe("k", [&] { ++calls; });
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &other), SQLITE_OK);
    suite.update("k", [&]() -> std::optional<DefaultsValue> {
        EXPECT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_BUSY);
        return std::string("computed");
    });
    sqlite3_close(other);
    EXPECT_EQ(suite.value("k"), DefaultsValue(std::string("computed")));
    EXPECT_THROW(suite.update("k", []() -> std::optional<DefaultsValue> { throw 7; }), int);
    EXPECT_EQ(suite.value("k"), DefaultsValue(std::string("computed")));
    suite.update("k", [] { return std::optional<DefaultsValue>(); }); // nothing: the key goes
    EXPECT_EQ(suite.value("k"), std::nullopt);
    suite.setValue("k", std::int64_t{2});
    EXPECT_EQ(suite.value("k"), DefaultsValue(std::int64_t{2}));
    EXPECT_EQ(calls, 3); // the thrown computation told no one
}

TEST(Defaults, WritesFromManyThreadsAreAllKept) {
    TempDir dir;
    DefaultsSuite suite(dir.path() / "defaults.sqlite");
    std::mutex mutex;
    int calls = 0;
    auto token = suite.observe("shared", [&] {
        std::lock_guard lock(mutex);
        ++calls;
    });
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&, t] {
            Setting<std::int64_t> own{"thread" + std::to_string(t), -1, suite};
            Setting<std::string> shared{"shared", "", suite};
            for (int i = 0; i < 20; ++i) {
                own = i;
                shared = std::to_string(t);
                EXPECT_EQ(own.get(), i);
            }
        });
    }
    for (auto& t : threads) {
        t.join();
    }
    for (int t = 0; t < 4; ++t) {
        EXPECT_EQ(suite.value("thread" + std::to_string(t)), DefaultsValue(std::int64_t{19}));
    }
    EXPECT_EQ(calls, 80);
    const auto last = std::get<std::string>(suite.value("shared").value());
    EXPECT_TRUE(last.size() == 1 && last[0] >= '0' && last[0] <= '3') << last;
}

TEST(Defaults, StandardAndNamedSuitesLiveInTheConfigAndDataHomes) {
    IsolatedStorage storage;
    auto& standard = DefaultsSuite::standard();
    EXPECT_EQ(standard.path(), storage.configHome() / "tidemark" / "defaults.sqlite");
    EXPECT_EQ(standardDefaultsPath(), standard.path());
    DefaultsSuite* group = DefaultsSuite::named("group.example.test");
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(group->path(), storage.dataHome() / "group.example.test" / "defaults.sqlite");
    EXPECT_EQ(DefaultsSuite::named("group.example.test"), group);
    EXPECT_TRUE(std::filesystem::exists(group->path()));
}

TEST(Defaults, ANamedSuiteThatCannotBeMadeIsNull) {
    IsolatedStorage storage;
    const auto blocker = storage.root() / "not a folder";
    { std::ofstream(blocker) << "x"; }
    setenv("XDG_DATA_HOME", blocker.c_str(), 1);
    EXPECT_EQ(DefaultsSuite::named("group.unmakeable"), nullptr);
    DefaultsSuite direct(blocker / "defaults.sqlite");
    EXPECT_FALSE(direct.isOpen());
    EXPECT_EQ(direct.value("k"), std::nullopt);

    // Once its folder can be made, the same name opens.
    setenv("XDG_DATA_HOME", storage.dataHome().c_str(), 1);
    DefaultsSuite::resetForTesting();
    auto* suite = DefaultsSuite::named("group.unmakeable");
    ASSERT_NE(suite, nullptr);
    EXPECT_EQ(suite->path(), storage.dataHome() / "group.unmakeable" / "defaults.sqlite");
}
