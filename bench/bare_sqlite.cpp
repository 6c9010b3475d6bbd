#include "bare_sqlite.h"

#include "common/errors.h"

#include <string_view>

namespace cuedrill::bench {
namespace {

int compare_texts(void* context, int length_a, const void* a, int length_b, const void* b)
{
    const auto view = [](const void* text, int length) {
        return std::string_view(static_cast<const char*>(text), static_cast<std::size_t>(length));
    };
    return static_cast<const platform::TextCompare*>(context)->compare(view(a, length_a), view(b, length_b));
}

} // namespace

BareSqlite::BareSqlite(const std::string& path, const platform::TextCompare& text_compare)
{
    check(sqlite3_open_v2(path.c_str(), &db_, SQLITE_OPEN_READWRITE, nullptr));
    // The interface is C: what it hands back to the function is never written to.
    void* const context = const_cast<platform::TextCompare*>(&text_compare);
    check(sqlite3_create_collation(db_, "CUEDRILL", SQLITE_UTF8, context, compare_texts));
    run("pragma journal_mode=DELETE");
    run("pragma synchronous=EXTRA");
}

BareSqlite::~BareSqlite()
{
    sqlite3_close(db_);
}

sqlite3_int64 BareSqlite::run(const std::string& sql)
{
    return step(sql, true);
}

sqlite3_int64 BareSqlite::first(const std::string& sql)
{
    return step(sql, false);
}

sqlite3_int64 BareSqlite::step(const std::string& sql, bool all_rows)
{
    sqlite3_stmt* const statement = prepare(sql);
    int code = sqlite3_step(statement);
    const sqlite3_int64 value = code == SQLITE_ROW ? sqlite3_column_int64(statement, 0) : 0;
    while (all_rows && code == SQLITE_ROW)
        code = sqlite3_step(statement);
    check(sqlite3_finalize(statement));
    return value;
}

sqlite3_stmt* BareSqlite::prepare(const std::string& sql)
{
    sqlite3_stmt* statement = nullptr;
    check(sqlite3_prepare_v2(db_, sql.c_str(), static_cast<int>(sql.size()), &statement, nullptr));
    return statement;
}

void BareSqlite::check(int code)
{
    if (code != SQLITE_OK && code != SQLITE_DONE && code != SQLITE_ROW)
        throw common::Error(sqlite3_errmsg(db_));
}

} // namespace cuedrill::bench
