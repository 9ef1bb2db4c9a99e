// The user's files are private whatever the umask, and a settings or reminders file that is not
// a database is kept aside, replaced by a fresh one and reported once.
#include "TestSupport.h"
#include "notifications/PendingRequests.h"
#include "records/Defaults.h"
#include "records/PrivateFiles.h"
#include "records/Store.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sqlite3.h>
#include <sys/stat.h>

using namespace tidemark;
using namespace tidemark::testing;
namespace fs = std::filesystem;

namespace {

mode_t modeOf(const fs::path& path) {
    struct stat st {};
    EXPECT_EQ(::lstat(path.c_str(), &st), 0) << path;
    return st.st_mode & 07777;
}

std::string contentsOf(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// The entries beside `file` whose names start with "<file name>.damaged-".
std::vector<fs::path> keptAside(const fs::path& file) {
    std::vector<fs::path> out;
    const std::string prefix = file.filename().string() + ".damaged-";
    for (const auto& entry : fs::directory_iterator(file.parent_path())) {
        const auto name = entry.path().filename().string();
        if (name.starts_with(prefix) && !name.ends_with("-wal") && !name.ends_with("-shm")) {
            out.push_back(entry.path());
        }
    }
    return out;
}

enum class Damage { garbage, truncated, folder, emptyFile };

/// Puts a damaged file at `path`: text, a real database cut in half, or a folder.
void damage(const fs::path& path, Damage kind) {
    fs::create_directories(path.parent_path());
    switch (kind) {
    case Damage::garbage: {
        std::ofstream out(path, std::ios::binary);
        for (int i = 0; i < 4000; ++i) {
            out.put(static_cast<char>((i * 7919) % 251));
        }
        break;
    }
    case Damage::truncated: {
        sqlite3* db = nullptr;
        sqlite3_open(path.c_str(), &db);
        sqlite3_exec(db,
                     "CREATE TABLE defaults(key TEXT PRIMARY KEY, type TEXT NOT NULL, value);"
                     "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 400)"
                     "INSERT INTO defaults SELECT 'k' || i, 'string', printf('%.200c', 'x') FROM n",
                     nullptr, nullptr, nullptr);
        sqlite3_close(db);
        fs::resize_file(path, fs::file_size(path) / 2);
        break;
    }
    case Damage::folder:
        fs::create_directories(path / "inside");
        break;
    case Damage::emptyFile:
        std::ofstream(path).flush();
        break;
    }
}

struct DamagedCase {
    const char* name;
    Damage damage;
    DamagedFileKind kind;
};

class DamagedFileTest : public ::testing::TestWithParam<DamagedCase> {};

} // namespace

TEST_P(DamagedFileTest, IsKeptAsideReplacedAndReportedOnce) {
    const auto& c = GetParam();
    IsolatedStorage storage;
    // Homes of their own, so that no suite opened earlier holds the file being damaged.
    setenv("XDG_CONFIG_HOME", (storage.root() / "config-damaged").c_str(), 1);
    setenv("XDG_DATA_HOME", (storage.root() / "data-damaged").c_str(), 1);
    const fs::path path = c.kind == DamagedFileKind::reminders ? PendingRequests::defaultPath()
                          : c.kind == DamagedFileKind::settings
                              ? standardDefaultsPath()
                              : suiteDefaultsPath("group.private.test");
    damage(path, c.damage);
    const std::string before = c.damage == Damage::folder ? "" : contentsOf(path);

    // Three starts: the first keeps the damaged file aside, the later ones find a sound file.
    for (int start = 0; start < 3; ++start) {
        DefaultsSuite::resetForTesting();
        if (c.kind == DamagedFileKind::reminders) {
            PendingRequests file(path);
            if (start == 0) {
                file.add({"r1", "t", "s", 60, true, true}, 0);
            }
            EXPECT_EQ(file.pending().size(), 1u);
        } else {
            DefaultsSuite* suite = c.kind == DamagedFileKind::settings
                                       ? &DefaultsSuite::standard()
                                       : DefaultsSuite::named("group.private.test");
            ASSERT_TRUE(suite && suite->isOpen());
            if (start == 0) {
                EXPECT_EQ(suite->value("userLaunchStatus"), std::nullopt);
                suite->setValue("userLaunchStatus", true);
            }
            EXPECT_EQ(suite->value("userLaunchStatus"), DefaultsValue(true));
        }
    }

    const auto aside = keptAside(path);
    const auto notices = takeDamagedFileNotices();
    if (c.damage == Damage::emptyFile) {
        // An empty file is an empty database, not a damaged one.
        EXPECT_TRUE(aside.empty());
        EXPECT_TRUE(notices.empty());
        return;
    }
    ASSERT_EQ(aside.size(), 1u);
    if (c.damage == Damage::folder) {
        EXPECT_TRUE(fs::is_directory(aside[0] / "inside"));
    } else {
        EXPECT_EQ(contentsOf(aside[0]), before); // never written to
    }
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0], (DamagedFileNotice{c.kind, path, aside[0]}));
    EXPECT_TRUE(takeDamagedFileNotices().empty());
}

INSTANTIATE_TEST_SUITE_P(
    SettingsAndReminders, DamagedFileTest,
    ::testing::Values(
        DamagedCase{"settingsTruncated", Damage::truncated, DamagedFileKind::settings},
        DamagedCase{"settingsEmpty", Damage::emptyFile, DamagedFileKind::settings},
        DamagedCase{"sharedTruncated", Damage::truncated, DamagedFileKind::sharedSettings},
        DamagedCase{"remindersGarbage", Damage::garbage, DamagedFileKind::reminders},
        DamagedCase{"remindersFolder", Damage::folder, DamagedFileKind::reminders}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(PrivateFiles, FoldersAre0700AndFiles0600WhateverTheUmask) {
    for (const mode_t mask : {022, 002, 0}) {
        SCOPED_TRACE(mask);
        IsolatedStorage storage;
        const mode_t old = ::umask(mask);
        if (mask == 022) {
            // What an earlier version left behind: a readable folder and file.
            makePrivateFolder(storage.configHome());
            fs::create_directory(storage.configHome() / "tidemark");
            ::chmod((storage.configHome() / "tidemark").c_str(), 0755);
            std::ofstream(storage.configHome() / "tidemark" / "defaults.sqlite").flush();
            ::chmod((storage.configHome() / "tidemark" / "defaults.sqlite").c_str(), 0644);
        }
        DefaultsSuite::resetForTesting();
        {
            Setting<bool>("userLaunchStatus", false).set(true);
            DefaultsSuite::named("group.private.test")->setValue("k", std::string("v"));
            PendingRequests(PendingRequests::defaultPath()).add({"r", "t", "s", 60, true, true}, 0);
            eventInfo event;
            event.eventId = "e1";
            auto store = Store::open();
            store.write([&] { store.add(event); });
            setAsideDamagedFile(storage.dataHome() / "tidemark" / "default.sqlite-none",
                                DamagedFileKind::settings); // nothing there: no notice
            damage(storage.dataHome() / "tidemark" / "notifications2.sqlite", Damage::garbage);
            ::chmod((storage.dataHome() / "tidemark" / "notifications2.sqlite").c_str(), 0600);
            PendingRequests(storage.dataHome() / "tidemark" / "notifications2.sqlite");

            int files = 0;
            for (const auto& home : {storage.dataHome(), storage.configHome()}) {
                EXPECT_EQ(modeOf(home), 0700u) << home;
                for (const auto& entry : fs::recursive_directory_iterator(home)) {
                    const mode_t want = entry.is_directory() ? 0700 : 0600;
                    EXPECT_EQ(modeOf(entry.path()), want) << entry.path();
                    files += entry.is_regular_file();
                }
            }
            EXPECT_GE(files, 8); // the databases with their -wal and -shm, and the notices
        }
        ::umask(old);
    }
    DefaultsSuite::resetForTesting();
}
