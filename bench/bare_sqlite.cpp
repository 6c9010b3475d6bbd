#include "bare_sqlite.h"

#include "common/errors.h"

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
    check(sqlite3_open_v2(path.c_str(), &db_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr));
    // The C interface takes a pointer to non-const; compare_texts does not write through it.
    void* const context = const_cast<platform::TextCompare*>(&text_compare);
    check(sqlite3_create_collation(db_, "CUEDRILL", SQLITE_UTF8, context, compare_texts));
    run("pragma journal_mode=DELETE");
    run("pragma synchronous=EXTRA");
    run("pragma cache_size=-16384");
    run("pragma temp_store=MEMORY");
}

BareSqlite::~BareSqlite()
{
    sqlite3_close(db_);
}

std::int64_t BareSqlite::run(const std::string& sql)
{
    return BareStatement(*this, sql).run();
}

void BareSqlite::check(int code)
{
    if (code != SQLITE_OK && code != SQLITE_DONE && code != SQLITE_ROW)
        throw common::Error(sqlite3_errmsg(db_));
}

BareStatement::BareStatement(BareSqlite& sqlite, const std::string& sql) : sqlite_(sqlite)
{
    sqlite_.check(sqlite3_prepare_v3(sqlite_.handle(), sql.c_str(), static_cast<int>(sql.size()),
                                     SQLITE_PREPARE_PERSISTENT, &statement_, nullptr));
}

BareStatement::~BareStatement()
{
    sqlite3_finalize(statement_);
}

BareStatement& BareStatement::bind(int position, std::int64_t number)
{
    sqlite_.check(sqlite3_bind_int64(statement_, position, number));
    return *this;
}

BareStatement& BareStatement::bind(int position, double number)
{
    sqlite_.check(sqlite3_bind_double(statement_, position, number));
    return *this;
}

BareStatement& BareStatement::bind(int position, std::string_view text)
{
    sqlite_.check(sqlite3_bind_text(statement_, position, text.data(), static_cast<int>(text.size()), SQLITE_STATIC));
    return *this;
}

bool BareStatement::step()
{
    const int code = sqlite3_step(statement_);
    sqlite_.check(code);
    if (code == SQLITE_DONE)
        sqlite_.check(sqlite3_reset(statement_));
    return code == SQLITE_ROW;
}

std::int64_t BareStatement::run()
{
    if (!step())
        return 0;
    const std::int64_t value = integer(0);
    while (step()) {
    }
    return value;
}

std::int64_t BareStatement::first()
{
    if (!step())
        return 0;
    const std::int64_t value = integer(0);
    reset();
    return value;
}

std::string_view BareStatement::text(int column)
{
    const auto* const bytes = static_cast<const char*>(sqlite3_column_blob(statement_, column));
    return {bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
}

} // namespace cuedrill::bench
