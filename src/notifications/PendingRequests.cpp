#include "notifications/PendingRequests.h"

#include "records/PrivateFiles.h"
#include "records/XdgPaths.h"

#include <chrono>
#include <cstdint>
#include <sqlite3.h>
#include <type_traits>

namespace tidemark {

namespace fs = std::filesystem;

namespace {

constexpr int kBusyTimeoutMs = 5000;

const char* const kSchema = R"sql(
CREATE TABLE IF NOT EXISTS requests(
    identifier TEXT PRIMARY KEY,
    title TEXT NOT NULL,
    subtitle TEXT NOT NULL,
    sound INTEGER NOT NULL,
    time_sensitive INTEGER NOT NULL,
    delay REAL NOT NULL,
    fire_at REAL NOT NULL,
    filed INTEGER NOT NULL);
CREATE INDEX IF NOT EXISTS requests_by_time ON requests(fire_at, filed);
CREATE TABLE IF NOT EXISTS background_tasks(
    identifier TEXT PRIMARY KEY,
    earliest_begin REAL NOT NULL);
CREATE TABLE IF NOT EXISTS state(
    key TEXT PRIMARY KEY,
    value INTEGER NOT NULL);
)sql";

/// One prepared statement, finalised when it goes.
class Statement {
public:
    Statement(sqlite3* db, const char* sql) : db_(db) {
        if (sqlite3_prepare_v2(db, sql, -1, &stmt_, nullptr) != SQLITE_OK) {
            throw PendingRequestsError(std::string("notifications: can't prepare: ") +
                                       sqlite3_errmsg(db));
        }
    }
    ~Statement() { sqlite3_finalize(stmt_); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    Statement& bind(int index, const std::string& text) {
        sqlite3_bind_text(stmt_, index, text.data(), static_cast<int>(text.size()),
                          SQLITE_TRANSIENT);
        return *this;
    }
    Statement& bind(int index, double value) {
        sqlite3_bind_double(stmt_, index, value);
        return *this;
    }
    Statement& bind(int index, bool value) {
        sqlite3_bind_int(stmt_, index, value ? 1 : 0);
        return *this;
    }
    Statement& bind(int index, std::int64_t value) {
        sqlite3_bind_int64(stmt_, index, value);
        return *this;
    }
    /// True while there is a row.
    bool step() {
        const int rc = sqlite3_step(stmt_);
        if (rc == SQLITE_ROW) {
            return true;
        }
        if (rc != SQLITE_DONE) {
            throw PendingRequestsError(std::string("notifications: ") + sqlite3_errmsg(db_));
        }
        return false;
    }
    std::string text(int column) const {
        const auto* p = sqlite3_column_text(stmt_, column);
        return p ? std::string(reinterpret_cast<const char*>(p),
                               static_cast<std::size_t>(sqlite3_column_bytes(stmt_, column)))
                 : std::string();
    }
    double real(int column) const { return sqlite3_column_double(stmt_, column); }
    std::int64_t integer(int column) const { return sqlite3_column_int64(stmt_, column); }
    bool flag(int column) const { return sqlite3_column_int(stmt_, column) != 0; }
    bool isNull(int column) const { return sqlite3_column_type(stmt_, column) == SQLITE_NULL; }
    void reset() {
        sqlite3_reset(stmt_);
        sqlite3_clear_bindings(stmt_);
    }

private:
    sqlite3* db_;
    sqlite3_stmt* stmt_ = nullptr;
};

const char* const kSelectRequests = "SELECT identifier, title, subtitle, delay, sound, "
                                    "time_sensitive, fire_at, filed FROM requests ";

PendingRequest readRequest(const Statement& s) {
    PendingRequest p;
    p.request.identifier = s.text(0);
    p.request.title = s.text(1);
    p.request.subtitle = s.text(2);
    p.request.delaySeconds = s.real(3);
    p.request.sound = s.flag(4);
    p.request.timeSensitive = s.flag(5);
    p.fireAt = s.real(6);
    p.filed = s.integer(7);
    return p;
}

} // namespace

double wallClockNow() {
    using namespace std::chrono;
    return duration<double>(system_clock::now().time_since_epoch()).count();
}

struct PendingRequests::Impl {
    sqlite3* db = nullptr;

    void exec(const char* sql) {
        char* message = nullptr;
        if (sqlite3_exec(db, sql, nullptr, nullptr, &message) != SQLITE_OK) {
            std::string text = message ? message : sqlite3_errmsg(db);
            sqlite3_free(message);
            throw PendingRequestsError("notifications: " + text);
        }
    }

    /// Runs `work` in one write transaction, so that the agent never sees half a change.
    template <typename Work> auto transaction(Work&& work) {
        exec("BEGIN IMMEDIATE");
        try {
            if constexpr (std::is_void_v<decltype(work())>) {
                work();
                exec("COMMIT");
            } else {
                auto result = work();
                exec("COMMIT");
                return result;
            }
        } catch (...) {
            sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
            throw;
        }
    }
};

fs::path PendingRequests::defaultPath() {
    return xdgDataHome() / "tidemark" / "notifications.sqlite";
}

PendingRequests::PendingRequests(fs::path path) : impl_(std::make_unique<Impl>()) {
    std::string error;
    impl_->db =
        openPrivateDatabase(path, DamagedFileKind::reminders, kSchema, kBusyTimeoutMs, &error);
    if (!impl_->db) {
        throw PendingRequestsError("notifications: " + error);
    }
}

PendingRequests::~PendingRequests() {
    if (impl_ && impl_->db) {
        sqlite3_close_v2(impl_->db);
    }
}

namespace {

/// Files requests inside a transaction. Each filing takes the next number of a counter that
/// never goes back, even when requests are removed: it orders requests due at the same moment
/// (a replacement goes to the end like a new request) and tells a request from one filed again
/// under its identifier.
class Filing {
public:
    explicit Filing(sqlite3* db)
        : count_(db, "INSERT OR REPLACE INTO state(key, value) VALUES('lastFiled', "
                     "MAX(IFNULL((SELECT value FROM state WHERE key = 'lastFiled'), 0), "
                     "IFNULL((SELECT MAX(filed) FROM requests), 0)) + 1)"),
          insert_(db, "INSERT OR REPLACE INTO requests(identifier, title, subtitle, sound, "
                      "time_sensitive, delay, fire_at, filed) VALUES(?, ?, ?, ?, ?, ?, ?, "
                      "(SELECT value FROM state WHERE key = 'lastFiled'))") {}

    void file(const NotificationRequest& request, double filedAt) {
        count_.step();
        count_.reset();
        insert_.bind(1, request.identifier)
            .bind(2, request.title)
            .bind(3, request.subtitle)
            .bind(4, request.sound)
            .bind(5, request.timeSensitive)
            .bind(6, request.delaySeconds)
            .bind(7, filedAt + request.delaySeconds);
        insert_.step();
        insert_.reset();
    }

private:
    Statement count_;
    Statement insert_;
};

} // namespace

void PendingRequests::add(const NotificationRequest& request, double filedAt) {
    impl_->transaction([&] { Filing(impl_->db).file(request, filedAt); });
}

void PendingRequests::remove(const std::vector<std::string>& identifiers) {
    impl_->transaction([&] {
        Statement s(impl_->db, "DELETE FROM requests WHERE identifier = ?");
        for (const auto& identifier : identifiers) {
            s.bind(1, identifier);
            s.step();
            s.reset();
        }
    });
}

void PendingRequests::removeAll() {
    impl_->exec("DELETE FROM requests");
}

std::vector<PendingRequest> PendingRequests::pending() const {
    std::vector<PendingRequest> out;
    Statement s(impl_->db, (std::string(kSelectRequests) + "ORDER BY fire_at, filed").c_str());
    while (s.step()) {
        out.push_back(readRequest(s));
    }
    return out;
}

std::vector<PendingRequest> PendingRequests::due(double now) const {
    std::vector<PendingRequest> out;
    Statement s(
        impl_->db,
        (std::string(kSelectRequests) + "WHERE fire_at <= ? ORDER BY fire_at, filed").c_str());
    s.bind(1, now);
    while (s.step()) {
        out.push_back(readRequest(s));
    }
    return out;
}

std::size_t PendingRequests::removeDelivered(const std::vector<PendingRequest>& delivered) {
    return impl_->transaction([&] {
        std::size_t removed = 0;
        Statement s(impl_->db, "DELETE FROM requests WHERE identifier = ? AND filed = ?");
        for (const auto& request : delivered) {
            s.bind(1, request.request.identifier).bind(2, request.filed);
            s.step();
            s.reset();
            removed += static_cast<std::size_t>(sqlite3_changes(impl_->db));
        }
        return removed;
    });
}

void PendingRequests::replaceAll(const std::function<std::vector<NotificationRequest>()>& plan) {
    impl_->transaction([&] {
        // The write lock is taken first: a run of another process has either finished or not
        // started, and the plan sees the records as they are now.
        const auto requests = plan();
        const double filedAt = wallClockNow();
        Statement drop(impl_->db, "DELETE FROM requests WHERE fire_at > ?");
        drop.bind(1, filedAt);
        drop.step();
        Filing filing(impl_->db);
        for (const auto& request : requests) {
            filing.file(request, filedAt);
        }
    });
}

void PendingRequests::submitBackgroundTask(const BackgroundTaskRequest& request) {
    Statement s(impl_->db,
                "INSERT OR REPLACE INTO background_tasks(identifier, earliest_begin) VALUES(?, ?)");
    s.bind(1, request.identifier).bind(2, request.earliestBeginDate);
    s.step();
}

void PendingRequests::cancelAllBackgroundTasks() {
    impl_->exec("DELETE FROM background_tasks");
}

std::vector<BackgroundTaskRequest> PendingRequests::backgroundTasks() const {
    std::vector<BackgroundTaskRequest> out;
    Statement s(impl_->db, "SELECT identifier, earliest_begin FROM background_tasks "
                           "ORDER BY earliest_begin, identifier");
    while (s.step()) {
        out.push_back({s.text(0), s.real(1)});
    }
    return out;
}

std::vector<BackgroundTaskRequest> PendingRequests::takeDueBackgroundTasks(double now) {
    return impl_->transaction([&] {
        std::vector<BackgroundTaskRequest> out;
        {
            Statement s(impl_->db, "SELECT identifier, earliest_begin FROM background_tasks "
                                   "WHERE earliest_begin <= ? ORDER BY earliest_begin, identifier");
            s.bind(1, now);
            while (s.step()) {
                out.push_back({s.text(0), s.real(1)});
            }
        }
        Statement del(impl_->db, "DELETE FROM background_tasks WHERE earliest_begin <= ?");
        del.bind(1, now);
        del.step();
        return out;
    });
}

std::optional<double> PendingRequests::nextWakeAfter(double now) const {
    Statement s(
        impl_->db,
        "SELECT MIN(t) FROM (SELECT MIN(fire_at) AS t FROM requests WHERE fire_at > ?1 "
        "UNION ALL SELECT MIN(earliest_begin) FROM background_tasks WHERE earliest_begin > ?1)");
    s.bind(1, now);
    if (s.step() && !s.isNull(0)) {
        return s.real(0);
    }
    return std::nullopt;
}

bool PendingRequests::authorizationRequested() const {
    Statement s(impl_->db, "SELECT value FROM state WHERE key = 'authorizationRequested'");
    return s.step() && s.flag(0);
}

void PendingRequests::setAuthorizationRequested() {
    impl_->exec("INSERT OR REPLACE INTO state(key, value) VALUES('authorizationRequested', 1)");
}

} // namespace tidemark
