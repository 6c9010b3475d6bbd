#pragma once

#include "common/errors.h"
#include "platform/course_copy.h"

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

/// A stored value: null, an integer, a floating-point number, or a UTF-8 text.
using Value = std::variant<std::monostate, std::int64_t, double, std::string>;

enum class DatabaseErrorKind {
    full,         ///< no room on the storage medium
    input_output, ///< the medium failed to read or write
    locked,       ///< another program holds the file
    read_only,    ///< the file or its folder cannot be written
    moved,        ///< the file was moved or deleted while it was open
    damaged,      ///< the contents are malformed
    not_a_course, ///< the file is not a course
    missing,      ///< no such file
    exists,       ///< a file of that name already exists
    constraint,   ///< a row breaks a rule of its table (length, uniqueness, range)
    other
};

/// An error of the database engine. `what()` gives the reason in words for the user, without the path.
class DatabaseError : public common::Error {
public:
    DatabaseError(DatabaseErrorKind kind, int code, const std::string& reason)
        : common::Error(reason), kind_(kind), code_(code)
    {
    }

    [[nodiscard]] DatabaseErrorKind kind() const { return kind_; }

    /// The engine's own error code, for the trace log; 0 if there is none.
    [[nodiscard]] int code() const { return code_; }

private:
    DatabaseErrorKind kind_;
    int code_;
};

/// The outcome of committing the outermost transaction is unknown. The engine has closed the transaction, but its
/// writes may be in the file; only reading the file again tells.
class CommitError : public DatabaseError {
public:
    explicit CommitError(const DatabaseError& error) : DatabaseError(error) {}
};

/// An index that makes a course faster; the course is complete without it.
struct AidIndex {
    std::string name;
    std::string statement; ///< CREATE INDEX
};

/// A table, given by the statements that create it.
struct TableSchema {
    std::string name;
    std::string table;                ///< CREATE TABLE
    std::vector<std::string> indexes; ///< CREATE INDEX, one each
    std::vector<AidIndex> aids{};     ///< created with the table, and at opening if they are missing
};

/// The rows of a query, read forward. It keeps a statement of the engine open: destroy it before showing a box, pumping
/// events or writing to the database.
class Recordset {
public:
    virtual ~Recordset() = default;

    /// True if there is no row at all (then eof() is true as well).
    [[nodiscard]] virtual bool bof() const = 0;
    /// True after the last row.
    [[nodiscard]] virtual bool eof() const = 0;
    /// Goes back to the first row, where a new Recordset starts.
    virtual void move_first() = 0;
    virtual void move_next() = 0;

    /// A column of the current row by its name, ignoring case.
    [[nodiscard]] virtual Value field(std::string_view column) const = 0;
    /// A column of the current row by its index, from 0.
    [[nodiscard]] virtual Value field(int column) const = 0;
};

/// One row of a query's result. A view: it must not outlive the object it was taken from.
class Row {
public:
    Row(std::span<const std::string> columns, std::span<const Value> values) : columns_(columns), values_(values) {}

    [[nodiscard]] std::span<const std::string> columns() const { return columns_; }
    [[nodiscard]] std::span<const Value> values() const { return values_; }

    /// A column by its index, from 0.
    /// @throws DatabaseError when the query has no such column.
    [[nodiscard]] const Value& field(int column) const;
    /// A column by its name, ignoring case.
    /// @throws DatabaseError when the query has no such column.
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
    std::vector<Value> values_; ///< row by row
    std::size_t size_ = 0;
};

/// Called for each row of a query; returning false ends the reading. The engine's statement is open meanwhile, so a
/// visitor must not show a box, pump events or write to the database.
using RowVisitor = std::function<bool(const Row&)>;

/// One database file. Every function but close may throw DatabaseError.
class Database {
public:
    virtual ~Database() = default;

    /// Begins a new file that will be named `path`. No file of that name exists until `finish_creation`; closing the
    /// database before that leaves nothing behind.
    virtual void create(const std::string& path) = 0;
    /// Adds a table to the file being created.
    virtual void append_table(const TableSchema& table) = 0;
    /// Gives the complete file its name and leaves it open. Never overwrites an existing file.
    virtual void finish_creation() = 0;

    /// Opens an existing file for reading and writing after checking that it is sound, writable, and holds plain tables
    /// with exactly the columns of `expected`. A rejected file is not changed. Creates the aid indexes that the file
    /// lacks, in one transaction; if they cannot be written, the file is open without them. Whether the whole file is
    /// sound may be checked only later, before the first write (see `finish_check`).
    virtual void open(const std::string& path, std::span<const TableSchema> expected) = 0;

    /// Does the part of the check that `open` has put off, if any: it reads the whole file. A write does it first, too.
    /// @throws DatabaseError if the file is not sound. It stays open and cannot be written; close it.
    virtual void finish_check() = 0;

    /// What opening could not store because the disk was full, in words for the trace log; empty if nothing is missing.
    /// It is stored before the next write.
    [[nodiscard]] virtual std::string unstored() const { return {}; }

    /// Differs from the mark of every earlier state of the open file. One line of text without blanks.
    [[nodiscard]] virtual std::string mark() = 0;

    /// Begins a copy of the open file that will be named `path` and be accessible to this user only. It may live
    /// longer than the file is open, and is abandoned then.
    /// @param expected the tables for which the copy is checked when it is complete.
    [[nodiscard]] virtual std::unique_ptr<CourseCopy> begin_copy(const std::string& path,
                                                                 std::span<const TableSchema> expected) = 0;

    /// Closes the file, if one is open. An open transaction is rolled back.
    virtual void close() noexcept = 0;
    [[nodiscard]] virtual bool is_open() const = 0;

    /// Runs a single reading statement.
    [[nodiscard]] virtual std::unique_ptr<Recordset> open_recordset(std::string_view sql) = 0;

    /// All rows of a single reading statement. `values` bind to its parameters ?1, ?2, …
    [[nodiscard]] Rows query(std::string_view sql, std::span<const Value> values = {});
    [[nodiscard]] Rows query(std::string_view sql, std::initializer_list<Value> values);
    /// The same row by row, for results too large for memory. An exception from `visit` ends the reading, too.
    void query(std::string_view sql, std::span<const Value> values, const RowVisitor& visit);

    /// Runs a single statement that returns no rows. `values` bind to its parameters ?1, ?2, …
    /// @return the number of rows added, changed or deleted.
    std::int64_t execute(std::string_view sql, std::span<const Value> values = {});
    std::int64_t execute(std::string_view sql, std::initializer_list<Value> values);

    /// Begins a transaction and takes the write lock at once; inside another transaction, begins a savepoint.
    virtual void begin() = 0;
    /// Ends the innermost transaction. When this returns for the outermost one, its writes are durable.
    /// @throws CommitError when the outermost transaction's writes may be stored although its end failed. Any other
    /// DatabaseError means that none of them is. Roll back in both cases.
    virtual void commit() = 0;
    /// Rolls back the innermost transaction.
    virtual void rollback() noexcept = 0;

protected:
    /// Implements `query`.
    virtual void read(std::string_view sql, std::span<const Value> values, const RowVisitor& visit) = 0;
    /// Implements `execute`.
    virtual std::int64_t write(std::string_view sql, std::span<const Value> values) = 0;
};

/// A transaction of `database`; rolls back on destruction unless it was committed.
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

    /// Rolls back now, unless the transaction has ended already.
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
