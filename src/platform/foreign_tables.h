#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace cuedrill::platform {

/// The rows of a query, read forward. It must not outlive the tables.
class ForeignRows {
public:
    ForeignRows() = default;
    ForeignRows(const ForeignRows&) = delete;
    ForeignRows& operator=(const ForeignRows&) = delete;
    virtual ~ForeignRows() = default;

    /// Goes to the next row, before the first call to the first one; false after the last row.
    /// @throws DatabaseError.
    [[nodiscard]] virtual bool next() = 0;

    /// A column (from 0) of the current row as an integer; 0 for null, and for a text that does not begin with a
    /// number.
    [[nodiscard]] virtual std::int64_t integer(int column) const = 0;

    /// A column (from 0) of the current row: the bytes of a text or a blob, a number in digits, "" for null. They may
    /// be no well-formed UTF-8.
    /// @throws DatabaseError.
    [[nodiscard]] virtual std::string text(int column) const = 0;
};

/// A database of another program in memory, which nobody vouches for. It is only read.
class ForeignTables {
public:
    ForeignTables() = default;
    ForeignTables(const ForeignTables&) = delete;
    ForeignTables& operator=(const ForeignTables&) = delete;
    virtual ~ForeignTables() = default;

    /// Whether there is a table of that name, ignoring case.
    [[nodiscard]] virtual bool has_table(std::string_view name) const = 0;

    /// Begins a single reading statement. Its functions are those of the engine, such as json_each. A collation that
    /// the engine does not know compares bytes. To read one row may take a few seconds of processor time at most.
    /// @throws DatabaseError.
    [[nodiscard]] virtual std::unique_ptr<ForeignRows> query(std::string_view sql) = 0;
};

/// Opens databases of other programs.
class ForeignDatabases {
public:
    virtual ~ForeignDatabases() = default;

    /// Opens a database from the bytes of its file. No file is touched.
    /// @throws DatabaseError when they are no database or cannot be read.
    [[nodiscard]] virtual std::unique_ptr<ForeignTables> open(std::string bytes) const = 0;
};

} // namespace cuedrill::platform
