#include "records/PrivateFiles.h"

#include "records/SqliteWait.h"
#include "records/XdgPaths.h"

#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <fstream>
#include <optional>
#include <sqlite3.h>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace tidemark {

namespace fs = std::filesystem;

namespace {

constexpr mode_t kFolderMode = 0700;
constexpr mode_t kFileMode = 0600;
constexpr std::string_view kCompanions[] = {"-wal", "-shm", "-journal"};

fs::path withSuffix(const fs::path& path, std::string_view suffix) {
    fs::path out = path;
    out += std::string(suffix);
    return out;
}

void narrowFile(const fs::path& file) {
    struct stat st {};
    if (::lstat(file.c_str(), &st) == 0 && S_ISREG(st.st_mode) &&
        (st.st_mode & 07777) != kFileMode) {
        ::chmod(file.c_str(), kFileMode);
    }
}

std::string_view kindName(DamagedFileKind kind) {
    switch (kind) {
    case DamagedFileKind::settings:
        return "settings";
    case DamagedFileKind::sharedSettings:
        return "sharedSettings";
    case DamagedFileKind::reminders:
        return "reminders";
    }
    return "settings";
}

std::optional<DamagedFileKind> kindFromName(std::string_view name) {
    for (auto kind :
         {DamagedFileKind::settings, DamagedFileKind::sharedSettings, DamagedFileKind::reminders}) {
        if (kindName(kind) == name) {
            return kind;
        }
    }
    return std::nullopt;
}

std::string timestampNow() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char text[32];
    std::strftime(text, sizeof text, "%Y%m%d-%H%M%S", &local);
    return text;
}

/// Appends one notice line; a single write() with O_APPEND, so that the app and the agent don't
/// interleave their lines.
void leaveNotice(DamagedFileKind kind, const fs::path& original, const fs::path& keptAs) {
    const fs::path file = damagedFileNoticesPath();
    makePrivateFolder(file.parent_path());
    const std::string line =
        std::string(kindName(kind)) + '\t' + original.string() + '\t' + keptAs.string() + '\n';
    const int fd = ::open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, kFileMode);
    if (fd < 0) {
        return;
    }
    ::fchmod(fd, kFileMode);
    [[maybe_unused]] const auto written = ::write(fd, line.data(), line.size());
    ::close(fd);
}

/// SQLite's answers that say "this is not a database we can use", as opposed to a file that is
/// busy, unreadable, read-only or on a full disk, which must be left alone.
bool meansDamaged(int rc) {
    switch (rc & 0xff) {
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
    case SQLITE_FORMAT:
    case SQLITE_MISMATCH:
        return true;
    default:
        return false;
    }
}

/// 0 when quick_check finds the file sound, else the SQLite code (SQLITE_CORRUPT for findings).
int checkDatabase(sqlite3* db) {
    sqlite3_stmt* stmt = nullptr;
    int rc = sqlite3_prepare_v2(db, "PRAGMA quick_check", -1, &stmt, nullptr);
    if (rc != SQLITE_OK) {
        return rc;
    }
    rc = sqlite3_step(stmt);
    int result = SQLITE_OK;
    if (rc == SQLITE_ROW) {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0));
        if (!text || std::string_view(text) != "ok") {
            result = SQLITE_CORRUPT;
        }
    } else if (rc != SQLITE_DONE) {
        result = sqlite3_errcode(db);
    }
    sqlite3_finalize(stmt);
    return result;
}

struct FileIdentity {
    dev_t device = 0;
    ino_t inode = 0;
    bool present = false;

    static FileIdentity of(const fs::path& path) {
        struct stat st {};
        if (::lstat(path.c_str(), &st) != 0) {
            return {};
        }
        return {st.st_dev, st.st_ino, true};
    }
    bool operator==(const FileIdentity&) const = default;
};

} // namespace

bool makePrivateFolder(const fs::path& folder, bool narrow) {
    if (folder.empty()) {
        return true;
    }
    fs::path partial;
    for (const auto& part : folder) {
        partial /= part;
        if (::mkdir(partial.c_str(), kFolderMode) == 0) {
            ::chmod(partial.c_str(), kFolderMode); // exactly 0700, whatever the umask took
        }
    }
    struct stat st {};
    if (::stat(folder.c_str(), &st) != 0 || !S_ISDIR(st.st_mode)) {
        return false;
    }
    if (narrow && (st.st_mode & 07777) != kFolderMode) {
        ::chmod(folder.c_str(), kFolderMode);
    }
    return true;
}

void makePrivateFile(const fs::path& file) {
    const int fd = ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kFileMode);
    if (fd >= 0) {
        ::fchmod(fd, kFileMode);
        ::close(fd);
    } else {
        narrowFile(file);
    }
    for (const auto suffix : kCompanions) {
        narrowFile(withSuffix(file, suffix));
    }
}

fs::path setAsideDamagedFile(const fs::path& path, DamagedFileKind kind) {
    const fs::path base = withSuffix(path, ".damaged-" + timestampNow());
    fs::path target = base;
    for (int n = 2; FileIdentity::of(target).present; ++n) {
        target = withSuffix(base, "-" + std::to_string(n));
    }
    if (::rename(path.c_str(), target.c_str()) != 0) {
        return {};
    }
    for (const auto suffix : kCompanions) {
        ::rename(withSuffix(path, suffix).c_str(), withSuffix(target, suffix).c_str());
    }
    leaveNotice(kind, path, target);
    return target;
}

sqlite3* openPrivateDatabase(const fs::path& path, DamagedFileKind kind, const char* setup,
                             int busyTimeoutMs, std::string* error) {
    for (int attempt = 0; attempt < 2; ++attempt) {
        makePrivateFolder(path.parent_path(), true);
        struct stat st {};
        if (::lstat(path.c_str(), &st) == 0 && !S_ISREG(st.st_mode)) {
            // A folder (or anything else) where the file belongs.
            setAsideDamagedFile(path, kind);
        }
        makePrivateFile(path);
        const FileIdentity opened = FileIdentity::of(path);
        sqlite3* db = nullptr;
        int rc = sqlite3_open_v2(path.c_str(), &db,
                                 SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_FULLMUTEX,
                                 nullptr);
        if (rc == SQLITE_OK) {
            waitWhenBusy(db, busyTimeoutMs);
            rc = checkDatabase(db);
        }
        if (rc == SQLITE_OK) {
            rc = enterWalMode(db, busyTimeoutMs);
        }
        if (rc == SQLITE_OK) {
            char* message = nullptr;
            rc = sqlite3_exec(db, setup, nullptr, nullptr, &message);
            if (rc != SQLITE_OK) {
                rc = sqlite3_errcode(db);
            }
            sqlite3_free(message);
        }
        if (rc == SQLITE_OK) {
            return db;
        }
        *error = "can't open " + path.string() + ": " + (db ? sqlite3_errmsg(db) : "") + " (" +
                 sqlite3_errstr(rc) + ")";
        sqlite3_close_v2(db);
        if (!meansDamaged(rc) || attempt > 0) {
            return nullptr;
        }
        // Another process may have set it aside and made a fresh one meanwhile: only the file
        // that was found damaged is moved.
        if (FileIdentity::of(path) == opened) {
            setAsideDamagedFile(path, kind);
        }
    }
    return nullptr;
}

fs::path damagedFileNoticesPath() {
    return xdgDataHome() / "tidemark" / "notices";
}

std::vector<DamagedFileNotice> takeDamagedFileNotices() {
    const fs::path file = damagedFileNoticesPath();
    // Taken by renaming, so that a notice written meanwhile goes to a new file, not lost.
    const fs::path taken = withSuffix(file, ".taken");
    if (::rename(file.c_str(), taken.c_str()) != 0) {
        return {};
    }
    std::vector<DamagedFileNotice> out;
    std::ifstream in(taken);
    std::string line;
    while (std::getline(in, line)) {
        std::istringstream fields(line);
        std::string kind, original, keptAs;
        if (std::getline(fields, kind, '\t') && std::getline(fields, original, '\t') &&
            std::getline(fields, keptAs)) {
            if (auto k = kindFromName(kind)) {
                out.push_back({*k, original, keptAs});
            }
        }
    }
    ::unlink(taken.c_str());
    return out;
}

} // namespace tidemark
