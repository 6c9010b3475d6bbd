#pragma once

#include "platform/text_compare.h"

#include <cstdint>
#include <sqlite3.h>
#include <string>
#include <string_view>

namespace cuedrill::bench {

/// The engine used directly, as the floor that the program is measured against. It has the program's text order,
/// durability and cache size.
class BareSqlite {
public:
    BareSqlite(const std::string& path, const platform::TextCompare& text_compare);
    BareSqlite(const BareSqlite&) = delete;
    BareSqlite& operator=(const BareSqlite&) = delete;
    ~BareSqlite();

    /// Runs a statement to its end.
    /// @return the first column of its first row as an integer; 0 if there is no row.
    std::int64_t run(const std::string& sql);

    /// @throws common::Error if the result code `code` is an error.
    void check(int code);
    [[nodiscard]] sqlite3* handle() { return db_; }

private:
    sqlite3* db_ = nullptr;
};

/// A prepared statement of the bare engine.
class BareStatement {
public:
    BareStatement(BareSqlite& sqlite, const std::string& sql);
    BareStatement(const BareStatement&) = delete;
    BareStatement& operator=(const BareStatement&) = delete;
    ~BareStatement();

    BareStatement& bind(int position, std::int64_t number);
    BareStatement& bind(int position, double number);
    /// The text must live until the statement has run.
    BareStatement& bind(int position, std::string_view text);

    /// Goes to the next row. After the last one it resets the statement and returns false.
    bool step();
    void reset() { sqlite3_reset(statement_); }
    /// Runs the statement to its end.
    /// @return the first column of its first row as an integer; 0 if there is no row.
    std::int64_t run();
    /// The same, but stops at the first row.
    std::int64_t first();

    [[nodiscard]] std::int64_t integer(int column) { return sqlite3_column_int64(statement_, column); }
    [[nodiscard]] double number(int column) { return sqlite3_column_double(statement_, column); }
    [[nodiscard]] std::string_view text(int column);

private:
    BareSqlite& sqlite_;
    sqlite3_stmt* statement_ = nullptr;
};

} // namespace cuedrill::bench
