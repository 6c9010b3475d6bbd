#include "platform/sqlite/sqlite_foreign_databases.h"

#include "common/text.h"
#include "platform/sqlite/defences.h"
#include "platform/sqlite/engine_error.h"

#include <algorithm>
#include <ctime>
#include <new>
#include <sqlite3.h>
#include <string_view>
#include <utility>
#include <vector>

namespace cuedrill::platform::sqlite {
namespace {

constexpr int steps_between_looks_at_the_clock = 1000;

/// The processor time of the process at which a statement is interrupted.
struct Deadline {
    std::clock_t most;
    std::clock_t end = 0;

    void restart() { end = std::clock() + most; }
};

int is_past(void* deadline)
{
    return std::clock() > static_cast<const Deadline*>(deadline)->end ? 1 : 0;
}

int compare_bytes(void* /*context*/, int length_a, const void* a, int length_b, const void* b)
{
    const auto view = [](const void* bytes, int length) {
        return length > 0 ? std::string_view(static_cast<const char*>(bytes), static_cast<std::size_t>(length))
                          : std::string_view();
    };
    return view(a, length_a).compare(view(b, length_b));
}

void add_collation(void* /*context*/, sqlite3* db, int encoding, const char* name)
{
    sqlite3_create_collation_v2(db, name, encoding, nullptr, compare_bytes, nullptr);
}

[[noreturn]] void fail(sqlite3* db, int code)
{
    constexpr int primary = 0xFF;
    if ((code & primary) == SQLITE_NOMEM)
        throw own_error(DatabaseErrorKind::other, "There is not enough memory.");
    if ((code & primary) == SQLITE_NOTADB)
        throw own_error(DatabaseErrorKind::damaged, "It is not a database.");
    throw_engine_error(db, code);
}

void require_ok(sqlite3* db, int code)
{
    if (code != SQLITE_OK)
        fail(db, code);
}

class EngineRows : public ForeignRows {
public:
    EngineRows(sqlite3* db, Deadline& deadline, std::string_view sql) : db_(db), deadline_(deadline)
    {
        deadline_.restart();
        require_ok(db_, sqlite3_prepare_v2(db_, sql.data(), static_cast<int>(sql.size()), &statement_, nullptr));
        if (statement_ == nullptr || sqlite3_stmt_readonly(statement_) == 0 || sqlite3_column_count(statement_) == 0) {
            sqlite3_finalize(statement_);
            throw own_error(DatabaseErrorKind::other, "The statement does not read rows.");
        }
    }
    ~EngineRows() override { sqlite3_finalize(statement_); }

    [[nodiscard]] bool next() override
    {
        deadline_.restart();
        const int code = sqlite3_step(statement_);
        if (code != SQLITE_ROW && code != SQLITE_DONE)
            fail(db_, code);
        return code == SQLITE_ROW;
    }

    [[nodiscard]] std::int64_t integer(int column) const override { return sqlite3_column_int64(statement_, column); }

    [[nodiscard]] std::string text(int column) const override
    {
        const int type = sqlite3_column_type(statement_, column);
        const void* const bytes =
            type == SQLITE_BLOB ? sqlite3_column_blob(statement_, column) : sqlite3_column_text(statement_, column);
        const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement_, column));
        if (bytes == nullptr && (type != SQLITE_NULL && type != SQLITE_BLOB))
            fail(db_, SQLITE_NOMEM);
        return bytes == nullptr ? std::string() : std::string(static_cast<const char*>(bytes), length);
    }

private:
    sqlite3* db_;
    Deadline& deadline_;
    sqlite3_stmt* statement_ = nullptr;
};

class EngineTables : public ForeignTables {
public:
    EngineTables(std::string bytes, std::clock_t most_time) : bytes_(std::move(bytes)), deadline_{.most = most_time}
    {
        prepare_header();
        const int code = sqlite3_open_v2(":memory:", &db_,
                                         SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY | SQLITE_OPEN_NOMUTEX, nullptr);
        try {
            if (db_ == nullptr)
                throw std::bad_alloc();
            require_ok(db_, code);
            set_up();
        } catch (...) {
            sqlite3_close_v2(db_);
            throw;
        }
    }
    ~EngineTables() override { sqlite3_close_v2(db_); }

    [[nodiscard]] bool has_table(std::string_view name) const override
    {
        return std::any_of(names_.begin(), names_.end(),
                           [name](const std::string& one) { return common::equal_ascii(one, name); });
    }

    [[nodiscard]] std::unique_ptr<ForeignRows> query(std::string_view sql) override
    {
        return std::make_unique<EngineRows>(db_, deadline_, sql);
    }

private:
    /// Checks what the engine does not check, and changes what it cannot read from memory.
    void prepare_header()
    {
        constexpr std::string_view signature("SQLite format 3\0", 16);
        constexpr std::size_t header_size = 100;
        if (bytes_.size() < header_size || !bytes_.starts_with(signature))
            throw own_error(DatabaseErrorKind::damaged, "It is not a database.");
        const std::size_t size = byte(16) * 256 + byte(17);
        const std::size_t page_size = size == 1 ? 65536 : size; // two bytes cannot hold the largest one
        if (page_size == 0 || bytes_.size() % page_size != 0)
            throw own_error(DatabaseErrorKind::damaged, "It is damaged (its end is missing).");
        // In write-ahead log mode, the engine wants memory shared with others. There is no log next to these bytes.
        for (const std::size_t version : {std::size_t{18}, std::size_t{19}}) {
            if (byte(version) == 2)
                bytes_[version] = 1;
        }
    }

    [[nodiscard]] std::size_t byte(std::size_t place) const { return static_cast<unsigned char>(bytes_[place]); }

    void set_up()
    {
        sqlite3_extended_result_codes(db_, 1);
        sqlite3_progress_handler(db_, steps_between_looks_at_the_clock, is_past, &deadline_);
        set_up_defences(db_, SqliteForeignDatabases::longest_text);
        require_ok(db_, sqlite3_collation_needed(db_, nullptr, add_collation));
        const auto size = static_cast<sqlite3_int64>(bytes_.size());
        require_ok(db_, sqlite3_deserialize(db_, "main", reinterpret_cast<unsigned char*>(bytes_.data()), size, size,
                                            SQLITE_DESERIALIZE_READONLY));
        EngineRows objects(db_, deadline_, "SELECT name, rootpage FROM main.sqlite_schema WHERE type = 'table'");
        while (objects.next()) {
            // To mention a virtual table in a statement calls its module.
            if (objects.integer(1) <= 0)
                throw own_error(DatabaseErrorKind::damaged, "It has a table that is not an ordinary one.");
            names_.push_back(objects.text(0));
        }
    }

    std::string bytes_; ///< must outlive the engine's connection, which reads them
    Deadline deadline_;
    sqlite3* db_ = nullptr;
    std::vector<std::string> names_;
};

} // namespace

std::unique_ptr<ForeignTables> SqliteForeignDatabases::open(std::string bytes) const
{
    return std::make_unique<EngineTables>(std::move(bytes),
                                          static_cast<std::clock_t>(most_time_.count() * CLOCKS_PER_SEC / 1000));
}

} // namespace cuedrill::platform::sqlite
