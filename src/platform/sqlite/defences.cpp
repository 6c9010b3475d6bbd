#include "platform/sqlite/defences.h"

#include "platform/sqlite/engine_error.h"

#include <array>
#include <sqlite3.h>

namespace cuedrill::platform::sqlite {
namespace {

struct Limit {
    int id;
    int value;
};

// Limits on the engine: well above what the program's own statements and rows need, but too low for a malicious file to
// do harm.
constexpr std::array<Limit, 9> limits{{{SQLITE_LIMIT_SQL_LENGTH, 1'000'000},
                                       {SQLITE_LIMIT_COLUMN, 100},
                                       {SQLITE_LIMIT_EXPR_DEPTH, 1000},
                                       {SQLITE_LIMIT_COMPOUND_SELECT, 50},
                                       {SQLITE_LIMIT_VDBE_OP, 100'000},
                                       {SQLITE_LIMIT_FUNCTION_ARG, 16},
                                       {SQLITE_LIMIT_ATTACHED, 0},
                                       {SQLITE_LIMIT_TRIGGER_DEPTH, 1},
                                       {SQLITE_LIMIT_WORKER_THREADS, 0}}};

/// Heap limit of the engine for the whole process, in bytes. Caching and sorting a full course needs far less.
constexpr sqlite3_int64 most_memory = 160 * 1024 * 1024;

void run(sqlite3* db, const char* sql)
{
    const int code = sqlite3_exec(db, sql, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        throw_engine_error(db, code);
}

} // namespace

void set_switch(sqlite3* db, int option, bool on)
{
    const int code = sqlite3_db_config(db, option, on ? 1 : 0, static_cast<int*>(nullptr));
    if (code != SQLITE_OK)
        throw database_error(code, 0, sqlite3_errstr(code));
}

void set_up_defences(sqlite3* db, int longest_text)
{
    sqlite3_hard_heap_limit64(most_memory);
    set_switch(db, SQLITE_DBCONFIG_DEFENSIVE, true);
    for (const int option :
         {SQLITE_DBCONFIG_TRUSTED_SCHEMA, SQLITE_DBCONFIG_ENABLE_TRIGGER, SQLITE_DBCONFIG_ENABLE_VIEW,
          SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, SQLITE_DBCONFIG_ENABLE_FTS3_TOKENIZER, SQLITE_DBCONFIG_DQS_DDL,
          SQLITE_DBCONFIG_DQS_DML, SQLITE_DBCONFIG_WRITABLE_SCHEMA})
        set_switch(db, option, false);
    sqlite3_limit(db, SQLITE_LIMIT_LENGTH, longest_text);
    for (const Limit& limit : limits)
        sqlite3_limit(db, limit.id, limit.value);
    run(db, "PRAGMA cell_size_check = ON");
    run(db, "PRAGMA mmap_size = 0");
    // The engine creates no temporary files: sorting and the undo data of statements and savepoints stay in memory.
    run(db, "PRAGMA temp_store = MEMORY");
}

} // namespace cuedrill::platform::sqlite
