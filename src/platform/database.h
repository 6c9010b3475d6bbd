#pragma once

#include "common/errors.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace cuedrill::platform {

/// A stored value: null, a whole number, a number, or a text in UTF-8.
using Value = std::variant<std::monostate, std::int64_t, double, std::string>;

enum class DatabaseErrorKind {
    full,         ///< no room on the storage medium
    input_output, ///< the medium failed to read or write
    locked,       ///< another program holds the file
    read_only,    ///< the file or its folder cannot be written
    moved,        ///< the file was moved or deleted while it was open
    damaged,      ///< the contents are not what they must be
    not_a_course, ///< something else than a course
    missing,      ///< no such file
    exists,       ///< a file of that name is already there
    constraint,   ///< a row breaks a rule of its table (length, uniqueness, range)
    other
};

/// An error of the database engine. `what()` says the reason in words for the user, without the path.
class DatabaseError : public common::Error {
public:
    DatabaseError(DatabaseErrorKind kind, int code, const std::string& reason)
        : common::Error(reason), kind_(kind), code_(code)
    {
    }

    [[nodiscard]] DatabaseErrorKind kind() const { return kind_; }

    /// The engine's own code, for the trace log; 0 when the engine gave none.
    [[nodiscard]] int code() const { return code_; }

private:
    DatabaseErrorKind kind_;
    int code_;
};

/// The outermost transaction could not be ended properly. The engine has closed it, but what it wrote may be in the
/// file all the same: only reading the file again tells.
class CommitError : public DatabaseError {
public:
    explicit CommitError(const DatabaseError& error) : DatabaseError(error) {}
};

/// An index that a course is quicker with and complete without.
struct AidIndex {
    std::string name;
    std::string statement; ///< CREATE INDEX
};

/// A table as the statements that make it.
struct TableSchema {
    std::string name;
    std::string table;                ///< CREATE TABLE
    std::vector<std::string> indexes; ///< CREATE INDEX, one each
    std::vector<AidIndex> aids{};     ///< made with the table, and at opening where they are not there
};

/// The rows of a query, read forward. It keeps a statement of the engine open: it must be gone before a box is shown,
/// events are pumped or the database is written.
class Recordset {
public:
    virtual ~Recordset() = default;

    /// True when there is no row at all (then eof() is true as well).
    [[nodiscard]] virtual bool bof() const = 0;
    /// Behind the last row.
    [[nodiscard]] virtual bool eof() const = 0;
    /// Back to the first row: where a new Recordset stands.
    virtual void move_first() = 0;
    virtual void move_next() = 0;

    /// A column of the current row by its name, without regard to case.
    [[nodiscard]] virtual Value field(std::string_view column) const = 0;
    /// A column of the current row by its position, from 0.
    [[nodiscard]] virtual Value field(int column) const = 0;
};

/// One row that a query gives. A view: it must not outlive what it was taken from.
class Row {
public:
    Row(std::span<const std::string> columns, std::span<const Value> values) : columns_(columns), values_(values) {}

    [[nodiscard]] std::span<const std::string> columns() const { return columns_; }
    [[nodiscard]] std::span<const Value> values() const { return values_; }

    /// A column by its position, from 0.
    /// @throws DatabaseError when the query gives no such column.
    [[nodiscard]] const Value& field(int column) const;
    /// A column by its name, without regard to case.
    /// @throws DatabaseError when the query gives no such column.
    [[nodiscard]] const Value& field(std::string_view column) const;

private:
    std::span<const std::string> columns_;
    std::span<const Value> values_;
};

/// All rows of a query, read into memory.
class Rows {
public:
    class Iterator {
    public:
        Iterator(const Rows& rows, std::size_t place) : rows_(&rows), place_(place) {}
        Row operator*() const;
        Iterator& operator++()
        {
            ++place_;
            return *this;
        }
        friend bool operator==(const Iterator&, const Iterator&) = default;

    private:
        const Rows* rows_;
        std::size_t place_;
    };

    void add(const Row& row);

    [[nodiscard]] bool empty() const { return size_ == 0; }
    [[nodiscard]] std::size_t size() const { return size_; }
    /// @throws DatabaseError when there is no such row.
    [[nodiscard]] Row operator[](std::size_t place) const;
    [[nodiscard]] Iterator begin() const { return {*this, 0}; }
    [[nodiscard]] Iterator end() const { return {*this, size_}; }

private:
    std::vector<std::string> columns_;
    std::vector<Value> values_; ///< row after row
    std::size_t size_ = 0;
};

/// Looks at one row of a query. False ends the reading. It must not show a box, pump events or write the database: the
/// engine's statement is open meanwhile.
using RowVisitor = std::function<bool(const Row&)>;

/// One database file. Every function but close may throw DatabaseError.
class Database {
public:
    virtual ~Database() = default;

    /// Begins a new file that will be named `path`. Until `finish_creation` nothing of that name exists; when the
    /// database is closed before, nothing is left behind.
    virtual void create(const std::string& path) = 0;
    /// Adds a table to a file being created.
    virtual void append_table(const TableSchema& table) = 0;
    /// Gives the complete file its name, never over an existing file, and leaves it open.
    virtual void finish_creation() = 0;

    /// Opens an existing file for reading and writing after checking that it is sound, writable, and holds
    /// plain tables with exactly the columns of `expected`. A file that is refused is not changed. Aid indexes that it
    /// lacks are made, in one transaction; where they cannot be written, it is open without them.
    virtual void open(const std::string& path, std::span<const TableSchema> expected) = 0;

    /// What opening wanted to store and found no room for, in words for the trace; empty where nothing is missing. It
    /// is stored before the next write.
    [[nodiscard]] virtual std::string unstored() const { return {}; }

    /// Closes the file, if one is open. An unfinished transaction is rolled back.
    virtual void close() noexcept = 0;
    [[nodiscard]] virtual bool is_open() const = 0;

    /// Runs a single reading statement.
    [[nodiscard]] virtual std::unique_ptr<Recordset> open_recordset(std::string_view sql) = 0;

    /// The rows of a single reading statement, all of them. `values` are those of its parameters ?1, ?2, …
    [[nodiscard]] Rows query(std::string_view sql, std::span<const Value> values = {});
    [[nodiscard]] Rows query(std::string_view sql, std::initializer_list<Value> values);
    /// The same row by row, for more rows than should be in memory at once. What `visit` throws ends the reading too.
    void query(std::string_view sql, std::span<const Value> values, const RowVisitor& visit);

    /// Runs a single statement that gives no rows. `values` are those of its parameters ?1, ?2, …
    /// @return how many rows it has added, changed or deleted.
    std::int64_t execute(std::string_view sql, std::span<const Value> values = {});
    std::int64_t execute(std::string_view sql, std::initializer_list<Value> values);

    /// Begins a transaction that holds the write lock at once; inside another one, a part that can be undone by itself.
    virtual void begin() = 0;
    /// Ends the innermost transaction; the outermost is durable when this returns.
    /// @throws CommitError when what the outermost wrote may be stored though its end has failed; any other
    /// DatabaseError means that nothing of it is. It must be rolled back in both cases.
    virtual void commit() = 0;
    /// Undoes the innermost transaction.
    virtual void rollback() noexcept = 0;

protected:
    /// What `query` does.
    virtual void read(std::string_view sql, std::span<const Value> values, const RowVisitor& visit) = 0;
    /// What `execute` does.
    virtual std::int64_t write(std::string_view sql, std::span<const Value> values) = 0;
};

/// A transaction of `database` that is undone unless it is committed.
class Transaction {
public:
    explicit Transaction(Database& database) : database_(database) { database_.begin(); }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    ~Transaction() { undo(); }

    void commit()
    {
        database_.commit();
        open_ = false;
    }

    /// Undoes it now, unless it has ended already.
    void undo() noexcept
    {
        if (std::exchange(open_, false))
            database_.rollback();
    }

private:
    Database& database_;
    bool open_ = true;
};

} // namespace cuedrill::platform
