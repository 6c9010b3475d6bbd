#pragma once

#include "platform/text_compare.h"

#include <sqlite3.h>
#include <string>

namespace cuedrill::bench {

/// The engine used with as little as possible around it: the floor that the program is measured against. It has the
/// same order of texts and the same durability.
class BareSqlite {
public:
    BareSqlite(const std::string& path, const platform::TextCompare& text_compare);
    BareSqlite(const BareSqlite&) = delete;
    BareSqlite& operator=(const BareSqlite&) = delete;
    ~BareSqlite();

    /// Runs a statement to its end and gives the first column of its first row as a whole number, or 0.
    sqlite3_int64 run(const std::string& sql);

    /// Runs only up to the first row.
    sqlite3_int64 first(const std::string& sql);

    [[nodiscard]] sqlite3_stmt* prepare(const std::string& sql);
    void check(int code);

private:
    sqlite3_int64 step(const std::string& sql, bool all_rows);

    sqlite3* db_ = nullptr;
};

} // namespace cuedrill::bench
