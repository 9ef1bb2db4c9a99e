// The embedded object store: SQLite in WAL mode, one table per record class named as the class,
// columns named as the fields in declaration order, the first field the primary key. Store order
// is insertion order (the hidden rowid); an overwrite by primary key is an upsert that keeps the
// record's place.
//
// A Store is a handle for the calling thread (the platform's `Realm(queue: nil)`); handles never
// cross threads. Every write is one transaction, and a failure to open or to commit is a fatal
// stop, so what was committed survives any later stop. After each commit, the observers of the
// tables it touched are told, whichever thread or connection of this process wrote.
#pragma once

#include "records/Observation.h"
#include "records/eventInfo.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <variant>
#include <vector>

namespace tidemark {

/// $XDG_DATA_HOME/tidemark/default.sqlite, or ~/.local/share/tidemark/default.sqlite.
std::filesystem::path defaultStorePath();
/// Points the default store elsewhere (tests); an empty path restores the XDG rule.
void setDefaultStorePath(const std::filesystem::path& path);

/// A field's value, as the store and the queries carry it.
using FieldValue = std::variant<std::string, std::int64_t, bool, Bytes>;

/// One condition on a field; a query holds all of its conditions at once.
struct Predicate {
    enum class Op {
        Equal,
        NotEqual,
        Less,
        LessOrEqual,
        Greater,
        GreaterOrEqual,
        Contains,                ///< substring, case-sensitive
        ContainsCaseInsensitive, ///< substring, case-insensitive
    };
    std::string field;
    Op op = Op::Equal;
    FieldValue value;
};

struct SortDescriptor {
    std::string keyPath;
    bool ascending = true;
};

/// A query over one record class: conditions (all must hold) and an optional sort. Without a
/// sort, results come in store order; with one, records of equal keys keep store order.
struct Query {
    std::vector<Predicate> predicates;
    std::optional<SortDescriptor> sort;

    Query where(std::string field, Predicate::Op op, FieldValue value) const {
        Query q = *this;
        q.predicates.push_back({std::move(field), op, std::move(value)});
        return q;
    }
    Query equal(std::string field, FieldValue value) const {
        return where(std::move(field), Predicate::Op::Equal, std::move(value));
    }
    Query sorted(std::string keyPath, bool ascending = true) const {
        Query q = *this;
        q.sort = SortDescriptor{std::move(keyPath), ascending};
        return q;
    }
};

/// The shape of a table, derived from a record's field list.
struct TableSpec {
    std::string_view name;
    std::vector<std::pair<std::string_view, FieldType>> columns; ///< in order, first = primary key
};

template <StoredRecord R> const TableSpec& tableSpecOf() {
    static const TableSpec shape = [] {
        TableSpec s{R::className, {}};
        std::apply([&](auto... f) { (s.columns.emplace_back(f.name, f.type), ...); }, R::fields());
        return s;
    }();
    return shape;
}

class StoreConnection;
struct StoreStatement;

/// The current row of a query: each column read straight into a record's field, with one copy
/// of the text or bytes out of SQLite's row and nothing in between.
class RowReader {
public:
    explicit RowReader(const StoreStatement& statement) : statement_(statement) {}
    void read(int column, std::string& target) const;
    void read(int column, std::int64_t& target) const;
    void read(int column, bool& target) const;
    void read(int column, Bytes& target) const;

private:
    const StoreStatement& statement_;
};

/// The values of a record bound to a statement's parameters 1..n, in field order.
class RowBinder {
public:
    explicit RowBinder(StoreStatement& statement) : statement_(statement) {}
    void bind(int parameter, const std::string& value);
    void bind(int parameter, std::int64_t value);
    void bind(int parameter, bool value);
    void bind(int parameter, const Bytes& value);

private:
    StoreStatement& statement_;
};

/// Fills `record` from the row, column i into field i.
template <StoredRecord R> void readRecord(const RowReader& row, R& record) {
    int column = 0;
    std::apply([&](auto... f) { (row.read(column++, record.*(f.member)), ...); }, R::fields());
}

/// Binds the fields of `record` to parameters 1..n.
template <StoredRecord R> void bindRecord(RowBinder& binder, const R& record) {
    int parameter = 1;
    std::apply([&](auto... f) { (binder.bind(parameter++, record.*(f.member)), ...); },
               R::fields());
}

class Store {
public:
    /// Opens the default store on the calling thread; a failure is a fatal stop.
    static Store open();
    /// Opens the store at `path` on the calling thread; a failure is a fatal stop.
    static Store open(const std::filesystem::path& path);

    const std::filesystem::path& path() const;

    /// Looks a record up by primary key.
    template <StoredRecord R> std::optional<R> object(std::string_view primaryKey) const {
        std::optional<R> found;
        objectRow(tableSpecOf<R>(), primaryKey,
                  [&](const RowReader& row) { readRecord(row, found.emplace()); });
        return found;
    }

    /// All records of a class that match the query, in store order or the query's sort.
    template <StoredRecord R> std::vector<R> objects(const Query& query = {}) const {
        std::vector<R> out;
        rows(
            tableSpecOf<R>(), query, [&](std::size_t expected) { out.reserve(expected); },
            [&](const RowReader& row) { readRecord(row, out.emplace_back()); });
        return out;
    }

    /// objects(query), shared with the earlier calls on this thread as long as nothing was
    /// committed to the file since: no commit of this connection to the table and none of any
    /// other connection or process at all. The records must not be changed through the pointer.
    template <StoredRecord R>
    std::shared_ptr<const std::vector<R>> sharedObjects(const Query& query = {}) const {
        return std::static_pointer_cast<const std::vector<R>>(
            keptRows(tableSpecOf<R>(), query, [&]() -> std::shared_ptr<const void> {
                return std::make_shared<const std::vector<R>>(objects<R>(query));
            }));
    }

    template <StoredRecord R> std::int64_t count(const Query& query = {}) const {
        return countRows(tableSpecOf<R>(), query);
    }

    /// Runs `body` as one transaction and commits it; the observers of the touched tables are
    /// told after the commit. A nested write or a failed commit is a fatal stop.
    void write(const std::function<void()>& body);

    /// Inside write(): adds the record, or overwrites the one with its primary key in place.
    template <StoredRecord R> void add(const R& record) {
        upsertRow(tableSpecOf<R>(), [&](RowBinder& binder) { bindRecord(binder, record); });
    }

    /// Inside write(): deletes the record with that primary key if there is one.
    template <StoredRecord R> void remove(std::string_view primaryKey) {
        deleteRow(tableSpecOf<R>(), primaryKey);
    }

    /// Inside write(): deletes every record of the class.
    template <StoredRecord R> void removeAll() { deleteAllRows(tableSpecOf<R>()); }

    // The untyped layer under the templates. The callbacks run while the row is current.
    void objectRow(const TableSpec& table, std::string_view primaryKey,
                   const std::function<void(const RowReader&)>& onRow) const;
    /// Calls `reserve` once with the number of rows the last read of this query gave (a hint,
    /// 0 at first), then `onRow` for each row in order.
    void rows(const TableSpec& table, const Query& query,
              const std::function<void(std::size_t)>& reserve,
              const std::function<void(const RowReader&)>& onRow) const;
    std::int64_t countRows(const TableSpec& table, const Query& query) const;
    void upsertRow(const TableSpec& table, const std::function<void(RowBinder&)>& bindRow);
    void deleteRow(const TableSpec& table, std::string_view primaryKey);
    void deleteAllRows(const TableSpec& table);

    /// Calls `onChange` after every committed write that touched `table`, from any thread or
    /// connection of this process, through `dispatcher`.
    static ObservationToken observeTable(const std::filesystem::path& path, std::string_view table,
                                         std::function<void()> onChange,
                                         Dispatcher dispatcher = {});

private:
    explicit Store(std::shared_ptr<StoreConnection> connection);
    /// The result kept for this table and query if the file's committed state is still the one
    /// it was read in; otherwise `read`'s, kept in its place.
    std::shared_ptr<const void>
    keptRows(const TableSpec& table, const Query& query,
             const std::function<std::shared_ptr<const void>()>& read) const;
    std::shared_ptr<StoreConnection> connection_;
};

/// A live result set: a query on one record class of the default store that reads the latest
/// committed state at every access and can be observed. The platform's `ObservedResults`.
template <StoredRecord R> class Results {
public:
    explicit Results(Query query = {}, std::filesystem::path path = {})
        : query_(std::move(query)), path_(path.empty() ? defaultStorePath() : std::move(path)) {}

    std::vector<R> snapshot() const { return *shared(); }
    /// The records of snapshot(), shared with earlier calls on this thread until the next commit.
    std::shared_ptr<const std::vector<R>> shared() const {
        return Store::open(path_).template sharedObjects<R>(query_);
    }
    std::int64_t count() const { return Store::open(path_).template count<R>(query_); }
    std::optional<R> first() const {
        auto all = snapshot();
        if (all.empty()) {
            return std::nullopt;
        }
        return std::move(all.front());
    }

    Results filter(std::string field, Predicate::Op op, FieldValue value) const {
        return Results(query_.where(std::move(field), op, std::move(value)), path_);
    }
    Results sorted(std::string keyPath, bool ascending = true) const {
        return Results(query_.sorted(std::move(keyPath), ascending), path_);
    }

    /// Calls `onChange` after every committed write to this class's table.
    ObservationToken observe(std::function<void()> onChange, Dispatcher dispatcher = {}) const {
        return Store::observeTable(path_, R::className, std::move(onChange), std::move(dispatcher));
    }

    const Query& query() const { return query_; }

private:
    Query query_;
    std::filesystem::path path_;
};

} // namespace tidemark
