#include "records/Defaults.h"

#include "base/Fatal.h"
#include "records/PrivateFiles.h"
#include "records/XdgPaths.h"

#include <cstdio>
#include <cstdlib>
#include <map>
#include <mutex>
#include <sqlite3.h>
#include <vector>

namespace tidemark {

namespace fs = std::filesystem;

namespace {

constexpr int kBusyTimeoutMs = 5000;

/// The suites that standard() and named() hand out. They live as long as the process, since
/// every Setting keeps a pointer to its suite.
struct SuiteRegistry {
    std::mutex mutex;
    std::unique_ptr<DefaultsSuite> standard;
    std::map<std::string, std::unique_ptr<DefaultsSuite>, std::less<>> named;
};

SuiteRegistry& suiteRegistry() {
    static auto* registry = new SuiteRegistry;
    return *registry;
}

} // namespace

fs::path standardDefaultsPath() {
    return xdgConfigHome() / "tidemark" / "defaults.sqlite";
}

fs::path suiteDefaultsPath(std::string_view suiteName) {
    return xdgDataHome() / std::string(suiteName) / "defaults.sqlite";
}

struct DefaultsSuite::Impl {
    mutable std::mutex mutex; ///< guards path and db
    fs::path path;
    sqlite3* db = nullptr;
    ObserverList observers;

    ~Impl() { close(); }

    void close() {
        if (db) {
            sqlite3_close_v2(db);
            db = nullptr;
        }
    }

    /// Opens the file at `path` and makes its table; a file that isn't a database is set aside
    /// for a fresh one. Leaves db null when even that fails.
    void open() {
        close();
        const char* setup = "CREATE TABLE IF NOT EXISTS defaults ("
                            "key TEXT PRIMARY KEY, type TEXT NOT NULL, value)";
        const auto kind = path == standardDefaultsPath() ? DamagedFileKind::settings
                                                         : DamagedFileKind::sharedSettings;
        std::string error;
        db = openPrivateDatabase(path, kind, setup, kBusyTimeoutMs, &error);
        if (!db) {
            std::fprintf(stderr, "Defaults: %s\n", error.c_str());
        }
    }

    void reopen(fs::path newPath) {
        std::lock_guard lock(mutex);
        path = std::move(newPath);
        open();
    }

    [[noreturn]] void fail(std::string_view what) const {
        fatalStop("Defaults: can't " + std::string(what) + " in " + path.string() + ": " +
                  sqlite3_errmsg(db));
    }

    /// Runs one statement to its end; writes commit before this returns.
    void run(const char* sql, const std::function<void(sqlite3_stmt*)>& bind,
             std::string_view what) {
        sqlite3_stmt* stmt = nullptr;
        if (sqlite3_prepare_v2(db, sql, -1, &stmt, nullptr) != SQLITE_OK) {
            fail(what);
        }
        bind(stmt);
        int rc;
        while ((rc = sqlite3_step(stmt)) == SQLITE_ROW) {
        }
        sqlite3_finalize(stmt);
        if (rc != SQLITE_DONE) {
            fail(what);
        }
    }

    /// Writes `*value` under `key`, or deletes the key for nullptr; commits unless a transaction
    /// is open.
    void write(std::string_view key, const DefaultsValue* value) {
        if (value == nullptr) {
            run(
                "DELETE FROM defaults WHERE key = ?",
                [&](sqlite3_stmt* stmt) {
                    sqlite3_bind_text64(stmt, 1, key.data(), key.size(), SQLITE_TRANSIENT,
                                        SQLITE_UTF8);
                },
                "remove a value");
            return;
        }
        run(
            "INSERT INTO defaults (key, type, value) VALUES (?, ?, ?) "
            "ON CONFLICT(key) DO UPDATE SET type = excluded.type, value = excluded.value",
            [&](sqlite3_stmt* stmt) {
                sqlite3_bind_text64(stmt, 1, key.data(), key.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
                std::visit(
                    [&](const auto& v) {
                        using T = std::decay_t<decltype(v)>;
                        if constexpr (std::is_same_v<T, bool>) {
                            sqlite3_bind_text(stmt, 2, "bool", -1, SQLITE_STATIC);
                            sqlite3_bind_int64(stmt, 3, v ? 1 : 0);
                        } else if constexpr (std::is_same_v<T, std::int64_t>) {
                            sqlite3_bind_text(stmt, 2, "int", -1, SQLITE_STATIC);
                            sqlite3_bind_int64(stmt, 3, v);
                        } else if constexpr (std::is_same_v<T, std::string>) {
                            sqlite3_bind_text(stmt, 2, "string", -1, SQLITE_STATIC);
                            sqlite3_bind_text64(stmt, 3, v.data(), v.size(), SQLITE_TRANSIENT,
                                                SQLITE_UTF8);
                        } else {
                            sqlite3_bind_text(stmt, 2, "data", -1, SQLITE_STATIC);
                            if (v.empty()) {
                                sqlite3_bind_zeroblob(stmt, 3, 0);
                            } else {
                                sqlite3_bind_blob64(stmt, 3, v.data(), v.size(), SQLITE_TRANSIENT);
                            }
                        }
                    },
                    *value);
            },
            "store a value");
    }

    void notify(std::string_view key) { observers.notify(key); }
};

DefaultsSuite::DefaultsSuite(fs::path path) : impl_(std::make_unique<Impl>()) {
    impl_->reopen(std::move(path));
}

DefaultsSuite::~DefaultsSuite() = default;

DefaultsSuite& DefaultsSuite::standard() {
    auto& registry = suiteRegistry();
    std::lock_guard lock(registry.mutex);
    if (!registry.standard) {
        registry.standard = std::make_unique<DefaultsSuite>(standardDefaultsPath());
    }
    return *registry.standard;
}

DefaultsSuite* DefaultsSuite::named(std::string_view suiteName) {
    auto& registry = suiteRegistry();
    std::lock_guard lock(registry.mutex);
    auto it = registry.named.find(suiteName);
    if (it == registry.named.end()) {
        it = registry.named
                 .emplace(std::string(suiteName),
                          std::make_unique<DefaultsSuite>(suiteDefaultsPath(suiteName)))
                 .first;
    } else if (!it->second->isOpen()) {
        it->second->impl_->reopen(suiteDefaultsPath(suiteName)); // the folder may exist by now
    }
    return it->second->isOpen() ? it->second.get() : nullptr;
}

void DefaultsSuite::resetForTesting() {
    auto& registry = suiteRegistry();
    std::lock_guard lock(registry.mutex);
    // The objects stay (Settings point at them); only their files change.
    if (registry.standard) {
        registry.standard->impl_->reopen(standardDefaultsPath());
    }
    for (auto& [name, suite] : registry.named) {
        suite->impl_->reopen(suiteDefaultsPath(name));
    }
}

bool DefaultsSuite::isOpen() const {
    std::lock_guard lock(impl_->mutex);
    return impl_->db != nullptr;
}

const fs::path& DefaultsSuite::path() const {
    return impl_->path;
}

std::optional<DefaultsValue> DefaultsSuite::value(std::string_view key) const {
    std::lock_guard lock(impl_->mutex);
    if (!impl_->db) {
        return std::nullopt;
    }
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(impl_->db, "SELECT type, value FROM defaults WHERE key = ?", -1, &stmt,
                           nullptr) != SQLITE_OK) {
        impl_->fail("read a value");
    }
    sqlite3_bind_text64(stmt, 1, key.data(), key.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    std::optional<DefaultsValue> out;
    const int rc = sqlite3_step(stmt);
    if (rc == SQLITE_ROW) {
        const auto* typeText = sqlite3_column_text(stmt, 0);
        const std::string type = typeText ? reinterpret_cast<const char*>(typeText) : "";
        const int storage = sqlite3_column_type(stmt, 1);
        // A value whose storage doesn't fit its type reads as absent, like an unknown type.
        if ((type == "bool" || type == "int") && storage == SQLITE_INTEGER) {
            const std::int64_t v = sqlite3_column_int64(stmt, 1);
            if (type == "bool") {
                out.emplace(v != 0);
            } else {
                out.emplace(v);
            }
        } else if (type == "string" && storage == SQLITE_TEXT) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt, 1));
            out = std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(stmt, 1)));
        } else if (type == "data" && (storage == SQLITE_BLOB || storage == SQLITE_NULL)) {
            const auto* data = static_cast<const std::uint8_t*>(sqlite3_column_blob(stmt, 1));
            const int size = sqlite3_column_bytes(stmt, 1);
            out = data ? Bytes(data, data + size) : Bytes();
        }
    } else if (rc != SQLITE_DONE) {
        sqlite3_finalize(stmt);
        impl_->fail("read a value");
    }
    sqlite3_finalize(stmt);
    return out;
}

void DefaultsSuite::setValue(std::string_view key, const DefaultsValue& value) {
    {
        std::lock_guard lock(impl_->mutex);
        if (impl_->db) {
            impl_->write(key, &value);
        }
    }
    impl_->notify(key);
}

void DefaultsSuite::removeValue(std::string_view key) {
    {
        std::lock_guard lock(impl_->mutex);
        if (impl_->db) {
            impl_->write(key, nullptr);
        }
    }
    impl_->notify(key);
}

void DefaultsSuite::update(std::string_view key,
                           const std::function<std::optional<DefaultsValue>()>& compute) {
    {
        std::lock_guard lock(impl_->mutex);
        if (!impl_->db) {
            return;
        }
        // IMMEDIATE takes the write lock before `compute` runs, waiting for other writers through
        // the busy timeout: every earlier update is written by then, and no later one can be
        // written before this one.
        const auto noBinding = [](sqlite3_stmt*) {};
        impl_->run("BEGIN IMMEDIATE", noBinding, "begin a write");
        std::optional<DefaultsValue> value;
        try {
            value = compute();
        } catch (...) {
            sqlite3_exec(impl_->db, "ROLLBACK", nullptr, nullptr, nullptr);
            throw;
        }
        impl_->write(key, value ? &*value : nullptr);
        impl_->run("COMMIT", noBinding, "commit a write");
    }
    impl_->notify(key);
}

ObservationToken DefaultsSuite::observe(std::string key, std::function<void()> onChange,
                                        Dispatcher dispatcher) {
    return impl_->observers.add(std::move(key), std::move(onChange), std::move(dispatcher));
}

} // namespace tidemark
