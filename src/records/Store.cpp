#include "records/Store.h"

#include "base/Fatal.h"
#include "records/PrivateFiles.h"
#include "records/SqliteWait.h"
#include "records/XdgPaths.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <mutex>
#include <set>
#include <sqlite3.h>
#include <sys/stat.h>
#include <type_traits>
#include <unistd.h>
#include <unordered_map>

namespace tidemark {

namespace fs = std::filesystem;

namespace {

constexpr int kBusyTimeoutMs = 5000;

std::mutex& overrideMutex() {
    static std::mutex m;
    return m;
}

fs::path& overridePath() {
    static fs::path p;
    return p;
}

/// One spelling per file, so that connections and observers of one file meet.
fs::path canonicalStorePath(const fs::path& path) {
    std::error_code ec;
    fs::path absolute = fs::absolute(path, ec);
    if (ec) {
        absolute = path;
    }
    fs::path canonical = fs::weakly_canonical(absolute, ec);
    return ec ? absolute.lexically_normal() : canonical;
}

std::string quoted(std::string_view identifier) {
    std::string out = "\"";
    for (char c : identifier) {
        out += c;
        if (c == '"') {
            out += '"';
        }
    }
    out += '"';
    return out;
}

const char* sqlType(FieldType type) {
    switch (type) {
    case FieldType::String:
        return "TEXT";
    case FieldType::Int:
    case FieldType::Bool:
        return "INTEGER";
    case FieldType::Bytes:
        return "BLOB";
    }
    return "BLOB";
}

std::string createTableSql(const TableSpec& table) {
    std::string sql = "CREATE TABLE IF NOT EXISTS " + quoted(table.name) + " (";
    bool first = true;
    for (const auto& [name, type] : table.columns) {
        if (!first) {
            sql += ", ";
        }
        sql += quoted(name) + " " + sqlType(type) + " NOT NULL";
        if (first) {
            sql += " PRIMARY KEY";
        }
        first = false;
    }
    return sql + ")";
}

std::string columnList(const TableSpec& table) {
    std::string out;
    for (const auto& column : table.columns) {
        if (!out.empty()) {
            out += ", ";
        }
        out += quoted(column.first);
    }
    return out;
}

// ---- Observers ------------------------------------------------------------------------------

/// The observers of every store file of the process, by file and table. Never destroyed: tokens
/// may be dropped during static destruction.
ObserverList& storeObservers() {
    static auto* observers = new ObserverList;
    return *observers;
}

std::string observerKey(const fs::path& canonicalPath, std::string_view table) {
    std::string key = canonicalPath.string();
    key += '\0';
    key += table;
    return key;
}

void notifyObservers(const fs::path& canonicalPath, const std::set<std::string>& tables) {
    for (const auto& table : tables) {
        storeObservers().notify(observerKey(canonicalPath, table));
    }
}

} // namespace

fs::path defaultStorePath() {
    fs::path path;
    {
        std::lock_guard lock(overrideMutex());
        path = overridePath();
    }
    if (path.empty()) {
        path = xdgDataHome() / "tidemark" / "default.sqlite";
        // The app's own folder: private, also when an earlier version made it readable.
        makePrivateFolder(path.parent_path(), true);
    } else {
        makePrivateFolder(path.parent_path()); // one that can't be made shows as a failed open
    }
    return path;
}

void setDefaultStorePath(const fs::path& path) {
    std::lock_guard lock(overrideMutex());
    overridePath() = path;
}

// ---- Connection -----------------------------------------------------------------------------

/// A prepared statement of a connection, as the row readers and binders see it.
struct StoreStatement {
    StoreConnection& connection;
    sqlite3_stmt* stmt;
};

/// One SQLite connection of one thread to one file, with its prepared statements and the state
/// of the write transaction in progress.
class StoreConnection {
public:
    explicit StoreConnection(fs::path canonicalPath) : path_(std::move(canonicalPath)) {
        makePrivateFile(path_); // SQLite gives its -wal and -shm files the same mode
        const int rc = sqlite3_open_v2(
            path_.c_str(), &db_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX,
            nullptr);
        if (rc != SQLITE_OK) {
            std::string message = "Store: can't open " + path_.string() + ": " +
                                  (db_ ? sqlite3_errmsg(db_) : sqlite3_errstr(rc));
            fatalStop(message);
        }
        sqlite3_extended_result_codes(db_, 1);
        waitWhenBusy(db_, kBusyTimeoutMs);
        if (enterWalMode(db_, kBusyTimeoutMs) != SQLITE_OK) {
            fail("set WAL mode");
        }
        for (const TableSpec* table :
             {&tableSpecOf<eventInfo>(), &tableSpecOf<memoDataForNotiObject>(),
              &tableSpecOf<shareGroup>(), &tableSpecOf<shareMember>(),
              &tableSpecOf<appFuncForDateData>()}) {
            ensureTable(*table);
        }
        struct stat st {};
        if (::stat(path_.c_str(), &st) == 0) {
            device_ = st.st_dev;
            inode_ = st.st_ino;
        }
    }

    ~StoreConnection() {
        for (auto& entry : statements_) {
            sqlite3_finalize(entry.second.stmt);
        }
        sqlite3_close_v2(db_);
    }

    StoreConnection(const StoreConnection&) = delete;
    StoreConnection& operator=(const StoreConnection&) = delete;

    const fs::path& path() const { return path_; }

    /// True while the file this connection opened is still the one at its path (a test may
    /// remove a folder and make a new one under the same name).
    bool stillAtPath() const {
        struct stat st {};
        return ::stat(path_.c_str(), &st) == 0 && st.st_dev == device_ && st.st_ino == inode_;
    }

    [[noreturn]] void fail(std::string_view what) const {
        std::string message = "Store: can't " + std::string(what) + " in " + path_.string() + ": " +
                              sqlite3_errmsg(db_) + " (SQLite error " +
                              std::to_string(sqlite3_extended_errcode(db_)) + ")";
        fatalStop(message);
    }

    /// A prepared statement kept for the connection's life, with the number of rows its last
    /// complete run gave.
    struct Prepared {
        sqlite3_stmt* stmt = nullptr;
        std::size_t lastRows = 0;
    };

    /// A cached prepared statement, reset and unbound when the returned guard goes.
    class Statement {
    public:
        Statement(StoreConnection& connection, Prepared& prepared)
            : connection_(connection), prepared_(prepared),
              stmt_(prepared.stmt), handle_{connection, prepared.stmt} {}
        ~Statement() {
            sqlite3_reset(stmt_);
            sqlite3_clear_bindings(stmt_);
        }
        Statement(const Statement&) = delete;
        Statement& operator=(const Statement&) = delete;

        sqlite3_stmt* get() const { return stmt_; }
        StoreStatement& handle() { return handle_; }
        std::size_t lastRows() const { return prepared_.lastRows; }
        void setLastRows(std::size_t rows) { prepared_.lastRows = rows; }

        void bind(int index, const FieldValue& value) {
            int rc = SQLITE_OK;
            if (const auto* s = std::get_if<std::string>(&value)) {
                rc = sqlite3_bind_text64(stmt_, index, s->data(), s->size(), SQLITE_TRANSIENT,
                                         SQLITE_UTF8);
            } else if (const auto* i = std::get_if<std::int64_t>(&value)) {
                rc = sqlite3_bind_int64(stmt_, index, *i);
            } else if (const auto* b = std::get_if<bool>(&value)) {
                rc = sqlite3_bind_int64(stmt_, index, *b ? 1 : 0);
            } else {
                const auto& bytes = std::get<Bytes>(value);
                // An empty blob must stay a blob: a null data pointer would bind NULL.
                rc = bytes.empty() ? sqlite3_bind_zeroblob(stmt_, index, 0)
                                   : sqlite3_bind_blob64(stmt_, index, bytes.data(), bytes.size(),
                                                         SQLITE_TRANSIENT);
            }
            if (rc != SQLITE_OK) {
                connection_.fail("bind a value");
            }
        }

        /// Binds text that lives until the statement is reset; empty text stays text (a null
        /// pointer would bind NULL).
        void bindText(int index, std::string_view text) {
            if (sqlite3_bind_text64(stmt_, index, text.empty() ? "" : text.data(), text.size(),
                                    SQLITE_STATIC, SQLITE_UTF8) != SQLITE_OK) {
                connection_.fail("bind a value");
            }
        }

        /// Steps once: true for a row, false when done; anything else is a fatal stop, whose
        /// message names `what` and `table`.
        bool step(std::string_view what, std::string_view table = {}) {
            const int rc = sqlite3_step(stmt_);
            if (rc == SQLITE_ROW) {
                return true;
            }
            if (rc == SQLITE_DONE) {
                return false;
            }
            connection_.fail(std::string(what) + std::string(table));
        }

    private:
        StoreConnection& connection_;
        Prepared& prepared_;
        sqlite3_stmt* stmt_;
        StoreStatement handle_;
    };

    Statement prepare(const std::string& sql) {
        auto it = statements_.find(sql);
        if (it == statements_.end()) {
            sqlite3_stmt* stmt = nullptr;
            if (sqlite3_prepare_v3(db_, sql.c_str(), static_cast<int>(sql.size()),
                                   SQLITE_PREPARE_PERSISTENT, &stmt, nullptr) != SQLITE_OK) {
                fail("prepare \"" + sql + "\"");
            }
            it = statements_.emplace(sql, Prepared{stmt, 0}).first;
        }
        return Statement(*this, it->second);
    }

    void execute(const std::string& sql, std::string_view what) {
        auto statement = prepare(sql);
        while (statement.step(what)) {
        }
    }

    void ensureTable(const TableSpec& table) {
        if (knownTables_.count(std::string(table.name))) {
            return;
        }
        execute(createTableSql(table), "create table " + std::string(table.name));
        knownTables_.insert(std::string(table.name));
    }

    /// A count that moves on whenever another connection, of this process or another, has
    /// committed to the file since the last call (SQLite's data_version).
    std::int64_t othersVersion() {
        auto statement = prepare("PRAGMA data_version");
        if (!statement.step("read the data version")) {
            fail("read the data version");
        }
        return sqlite3_column_int64(statement.get(), 0);
    }

    /// The commits of this connection to each table.
    std::uint64_t ownCommits(const std::string& table) const {
        const auto found = ownCommits_.find(table);
        return found == ownCommits_.end() ? 0 : found->second;
    }
    void committed(const std::set<std::string>& tables) {
        for (const auto& table : tables) {
            ++ownCommits_[table];
        }
    }

    /// A result set read before, and the state of the file it was read in.
    struct KeptResult {
        std::string key;
        std::int64_t othersVersion = 0;
        std::uint64_t ownCommits = 0;
        std::shared_ptr<const void> rows;
    };
    /// The most recently used first; a few, since a result set of a large table is large.
    std::vector<KeptResult> keptResults;
    static constexpr std::size_t kKeptResults = 8;

    bool inWrite = false;
    std::set<std::string> touchedTables;

private:
    fs::path path_;
    sqlite3* db_ = nullptr;
    std::unordered_map<std::string, Prepared> statements_;
    std::set<std::string> knownTables_;
    std::unordered_map<std::string, std::uint64_t> ownCommits_;
    dev_t device_ = 0;
    ino_t inode_ = 0;
};

namespace {

/// The calling thread's connections, by canonical path.
std::unordered_map<std::string, std::shared_ptr<StoreConnection>>& threadConnections() {
    thread_local std::unordered_map<std::string, std::shared_ptr<StoreConnection>> connections;
    return connections;
}

std::size_t columnIndex(const TableSpec& table, std::string_view name) {
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        if (table.columns[i].first == name) {
            return i;
        }
    }
    fatalStop("Store: " + std::string(table.name) + " has no field named \"" + std::string(name) +
              "\"");
}

bool valueFitsColumn(const FieldValue& value, FieldType type) {
    switch (type) {
    case FieldType::String:
        return std::holds_alternative<std::string>(value);
    case FieldType::Int:
    case FieldType::Bool:
        return std::holds_alternative<std::int64_t>(value) || std::holds_alternative<bool>(value);
    case FieldType::Bytes:
        return std::holds_alternative<Bytes>(value);
    }
    return false;
}

/// " WHERE ..." for the query's predicates, checked against the table; the values to bind in
/// order go to `values`.
std::string whereClause(const TableSpec& table, const Query& query,
                        std::vector<const FieldValue*>& values) {
    std::string sql;
    for (const auto& predicate : query.predicates) {
        const auto& [name, type] = table.columns[columnIndex(table, predicate.field)];
        if (!valueFitsColumn(predicate.value, type)) {
            fatalStop("Store: the value for " + std::string(table.name) + "." + std::string(name) +
                      " in a query has the wrong type");
        }
        const std::string column = quoted(name);
        std::string condition;
        switch (predicate.op) {
        case Predicate::Op::Equal:
            condition = column + " = ?";
            break;
        case Predicate::Op::NotEqual:
            condition = column + " <> ?";
            break;
        case Predicate::Op::Less:
            condition = column + " < ?";
            break;
        case Predicate::Op::LessOrEqual:
            condition = column + " <= ?";
            break;
        case Predicate::Op::Greater:
            condition = column + " > ?";
            break;
        case Predicate::Op::GreaterOrEqual:
            condition = column + " >= ?";
            break;
        case Predicate::Op::Contains:
        case Predicate::Op::ContainsCaseInsensitive:
            if (type != FieldType::String) {
                fatalStop("Store: a substring query on " + std::string(table.name) + "." +
                          std::string(name) + ", which is not a string field");
            }
            condition = predicate.op == Predicate::Op::Contains
                            ? "instr(" + column + ", ?) > 0"
                            : "instr(lower(" + column + "), lower(?)) > 0";
            break;
        }
        sql += sql.empty() ? " WHERE " : " AND ";
        sql += condition;
        values.push_back(&predicate.value);
    }
    return sql;
}

} // namespace

// ---- Store ----------------------------------------------------------------------------------

Store::Store(std::shared_ptr<StoreConnection> connection) : connection_(std::move(connection)) {}

Store Store::open() {
    return open(defaultStorePath());
}

Store Store::open(const fs::path& path) {
    if (path.has_parent_path()) {
        makePrivateFolder(path.parent_path());
    }
    const fs::path canonical = canonicalStorePath(path);
    auto& connections = threadConnections();
    auto it = connections.find(canonical.string());
    if (it != connections.end()) {
        if (it->second->stillAtPath()) {
            return Store(it->second);
        }
        connections.erase(it);
    }
    // Let go of connections to files that are gone (tests remove their folders), unless a
    // handle still uses them, so that their descriptors don't pile up.
    std::erase_if(connections, [](const auto& entry) {
        return entry.second.use_count() == 1 && !entry.second->stillAtPath();
    });
    auto connection = std::make_shared<StoreConnection>(canonical);
    connections.emplace(canonical.string(), connection);
    return Store(std::move(connection));
}

const fs::path& Store::path() const {
    return connection_->path();
}

void Store::objectRow(const TableSpec& table, std::string_view primaryKey,
                      const std::function<void(const RowReader&)>& onRow) const {
    auto& c = *connection_;
    c.ensureTable(table);
    auto statement = c.prepare("SELECT " + columnList(table) + " FROM " + quoted(table.name) +
                               " WHERE " + quoted(table.columns.front().first) + " = ?");
    statement.bindText(1, primaryKey);
    if (statement.step("read from ", table.name)) {
        onRow(RowReader(statement.handle()));
    }
}

void Store::rows(const TableSpec& table, const Query& query,
                 const std::function<void(std::size_t)>& reserve,
                 const std::function<void(const RowReader&)>& onRow) const {
    auto& c = *connection_;
    c.ensureTable(table);
    std::vector<const FieldValue*> values;
    std::string sql = "SELECT " + columnList(table) + " FROM " + quoted(table.name) +
                      whereClause(table, query, values) + " ORDER BY ";
    if (query.sort) {
        const auto& column = table.columns[columnIndex(table, query.sort->keyPath)];
        sql += quoted(column.first) + (query.sort->ascending ? " ASC, " : " DESC, ");
    }
    sql += "rowid ASC";
    auto statement = c.prepare(sql);
    for (std::size_t i = 0; i < values.size(); ++i) {
        statement.bind(static_cast<int>(i + 1), *values[i]);
    }
    reserve(statement.lastRows());
    const RowReader row(statement.handle());
    std::size_t count = 0;
    while (statement.step("read from ", table.name)) {
        onRow(row);
        ++count;
    }
    statement.setLastRows(count);
}

// ---- Reading and binding the fields of a row ------------------------------------------------

void RowReader::read(int column, std::string& target) const {
    // The text first, then its length, as SQLite asks; a TEXT column needs no conversion.
    const auto* text = sqlite3_column_text(statement_.stmt, column);
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_.stmt, column));
    if (text == nullptr) {
        target.clear();
    } else {
        target.assign(reinterpret_cast<const char*>(text), size);
    }
}

void RowReader::read(int column, std::int64_t& target) const {
    target = sqlite3_column_int64(statement_.stmt, column);
}

void RowReader::read(int column, bool& target) const {
    target = sqlite3_column_int64(statement_.stmt, column) != 0;
}

void RowReader::read(int column, Bytes& target) const {
    const auto* data =
        static_cast<const std::uint8_t*>(sqlite3_column_blob(statement_.stmt, column));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_.stmt, column));
    if (data == nullptr) {
        target.clear();
    } else {
        target.assign(data, data + size);
    }
}

// The record outlives the step that writes it, so its text and bytes are bound without a copy.

void RowBinder::bind(int parameter, const std::string& value) {
    if (sqlite3_bind_text64(statement_.stmt, parameter, value.data(), value.size(), SQLITE_STATIC,
                            SQLITE_UTF8) != SQLITE_OK) {
        statement_.connection.fail("bind a value");
    }
}

void RowBinder::bind(int parameter, std::int64_t value) {
    if (sqlite3_bind_int64(statement_.stmt, parameter, value) != SQLITE_OK) {
        statement_.connection.fail("bind a value");
    }
}

void RowBinder::bind(int parameter, bool value) {
    bind(parameter, std::int64_t{value ? 1 : 0});
}

void RowBinder::bind(int parameter, const Bytes& value) {
    // An empty blob must stay a blob: a null data pointer would bind NULL.
    const int rc = value.empty() ? sqlite3_bind_zeroblob(statement_.stmt, parameter, 0)
                                 : sqlite3_bind_blob64(statement_.stmt, parameter, value.data(),
                                                       value.size(), SQLITE_STATIC);
    if (rc != SQLITE_OK) {
        statement_.connection.fail("bind a value");
    }
}

namespace {

/// A query as text, so that equal queries on a table meet in the kept results.
std::string queryKey(const TableSpec& table, const Query& query) {
    std::string key(table.name);
    const auto add = [&key](std::string_view part) {
        key += '\0';
        key += std::to_string(part.size());
        key += ':';
        key += part;
    };
    for (const auto& predicate : query.predicates) {
        add(predicate.field);
        add(std::to_string(static_cast<int>(predicate.op)) + "/" +
            std::to_string(predicate.value.index()));
        std::visit(
            [&](const auto& value) {
                using T = std::decay_t<decltype(value)>;
                if constexpr (std::is_same_v<T, std::string>) {
                    add(value);
                } else if constexpr (std::is_same_v<T, Bytes>) {
                    add(std::string_view(reinterpret_cast<const char*>(value.data()),
                                         value.size()));
                } else {
                    add(std::to_string(static_cast<std::int64_t>(value)));
                }
            },
            predicate.value);
    }
    if (query.sort) {
        add(query.sort->keyPath);
        add(query.sort->ascending ? "ascending" : "descending");
    }
    return key;
}

} // namespace

std::shared_ptr<const void>
Store::keptRows(const TableSpec& table, const Query& query,
                const std::function<std::shared_ptr<const void>()>& read) const {
    auto& c = *connection_;
    if (c.inWrite) {
        return read(); // the write's own changes are not committed yet
    }
    const std::int64_t othersVersion = c.othersVersion();
    const std::uint64_t ownCommits = c.ownCommits(std::string(table.name));
    std::string key = queryKey(table, query);
    auto& kept = c.keptResults;
    const auto found =
        std::find_if(kept.begin(), kept.end(), [&](const auto& entry) { return entry.key == key; });
    if (found != kept.end()) {
        if (found->othersVersion == othersVersion && found->ownCommits == ownCommits) {
            std::rotate(kept.begin(), found, found + 1);
            return kept.front().rows;
        }
        kept.erase(found);
    }
    auto rows = read();
    if (kept.size() >= StoreConnection::kKeptResults) {
        kept.pop_back();
    }
    kept.insert(kept.begin(),
                StoreConnection::KeptResult{std::move(key), othersVersion, ownCommits, rows});
    return rows;
}

std::int64_t Store::countRows(const TableSpec& table, const Query& query) const {
    auto& c = *connection_;
    c.ensureTable(table);
    std::vector<const FieldValue*> values;
    auto statement =
        c.prepare("SELECT count(*) FROM " + quoted(table.name) + whereClause(table, query, values));
    for (std::size_t i = 0; i < values.size(); ++i) {
        statement.bind(static_cast<int>(i + 1), *values[i]);
    }
    if (!statement.step("count in ", table.name)) {
        fatalStop("Store: counting gave no row for " + std::string(table.name));
    }
    return sqlite3_column_int64(statement.get(), 0);
}

void Store::upsertRow(const TableSpec& table, const std::function<void(RowBinder&)>& bindRow) {
    auto& c = *connection_;
    if (!c.inWrite) {
        fatalStop("Store: a record of " + std::string(table.name) + " was added outside a write");
    }
    c.ensureTable(table);
    std::string placeholders;
    std::string updates;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        placeholders += i == 0 ? "?" : ", ?";
        if (i > 0) {
            if (!updates.empty()) {
                updates += ", ";
            }
            const std::string column = quoted(table.columns[i].first);
            updates += column + " = excluded." + column;
        }
    }
    // An upsert, never delete-and-insert: an overwritten record keeps its rowid, so its place.
    std::string sql = "INSERT INTO " + quoted(table.name) + " (" + columnList(table) +
                      ") VALUES (" + placeholders + ") ON CONFLICT(" +
                      quoted(table.columns.front().first) + ") DO " +
                      (updates.empty() ? "NOTHING" : "UPDATE SET " + updates);
    auto statement = c.prepare(sql);
    RowBinder binder(statement.handle());
    bindRow(binder);
    statement.step("write to ", table.name);
    c.touchedTables.insert(std::string(table.name));
}

void Store::deleteRow(const TableSpec& table, std::string_view primaryKey) {
    auto& c = *connection_;
    if (!c.inWrite) {
        fatalStop("Store: a record of " + std::string(table.name) + " was removed outside a write");
    }
    c.ensureTable(table);
    auto statement = c.prepare("DELETE FROM " + quoted(table.name) + " WHERE " +
                               quoted(table.columns.front().first) + " = ?");
    statement.bindText(1, primaryKey);
    statement.step("delete from ", table.name);
    c.touchedTables.insert(std::string(table.name));
}

void Store::deleteAllRows(const TableSpec& table) {
    auto& c = *connection_;
    if (!c.inWrite) {
        fatalStop("Store: records of " + std::string(table.name) + " were removed outside a write");
    }
    c.ensureTable(table);
    c.execute("DELETE FROM " + quoted(table.name), "delete from " + std::string(table.name));
    c.touchedTables.insert(std::string(table.name));
}

void Store::write(const std::function<void()>& body) {
    auto& c = *connection_;
    if (c.inWrite) {
        fatalStop("Store: a write was started inside another write on " + c.path().string());
    }
    c.execute("BEGIN IMMEDIATE", "begin a write");
    c.inWrite = true;
    c.touchedTables.clear();
    try {
        body();
    } catch (...) {
        c.inWrite = false;
        c.touchedTables.clear();
        c.execute("ROLLBACK", "roll back a write");
        throw;
    }
    c.inWrite = false;
    c.execute("COMMIT", "commit a write");
    const std::set<std::string> touched = std::move(c.touchedTables);
    c.touchedTables.clear();
    c.committed(touched);
    notifyObservers(c.path(), touched);
}

ObservationToken Store::observeTable(const fs::path& path, std::string_view table,
                                     std::function<void()> onChange, Dispatcher dispatcher) {
    return storeObservers().add(observerKey(canonicalStorePath(path), table), std::move(onChange),
                                std::move(dispatcher));
}

} // namespace tidemark
