#include "platform/sqlite/connection.h"

#include "platform/sqlite/backup.h"
#include "platform/sqlite/defences.h"
#include "platform/sqlite/engine_error.h"

#include <cerrno>
#include <new>
#include <sqlite3.h>
#include <sys/stat.h>
#include <utility>

namespace cuedrill::platform::sqlite {
namespace {

/// The most bytes of a text: far more than a course can hold.
constexpr int longest_text = 1'000'000;

/// Limit on the time for reading a file that has not been checked, because even a small malicious file can make a
/// statement endless. It is processor time (1.5 s), so waiting for a slow disk does not count.
constexpr std::clock_t most_time = 3 * CLOCKS_PER_SEC / 2;
constexpr int steps_between_looks_at_the_clock = 1000;

int is_out_of_time(void* started)
{
    return std::clock() - *static_cast<const std::clock_t*>(started) > most_time ? 1 : 0;
}

constexpr const char* undone = "The changes before were undone.";

std::string savepoint_name(int depth)
{
    return "inner_" + std::to_string(depth);
}

} // namespace

Connection::Connection(const std::string& file, const TextCompare& compare, std::chrono::milliseconds busy_timeout)
    : busy_timeout_(busy_timeout), rules_{compare}, files_(file)
{
    open_file(file);
    try {
        sqlite3_extended_result_codes(db_, 1);
        wait_for_locks(true);
        limit_time();
        set_up_defences(db_, longest_text);
        register_functions(db_, rules_);
        pool_ = std::make_unique<StatementPool>(db_, rules_);
    } catch (...) {
        close();
        throw;
    }
}

void Connection::open_file(const std::string& file)
{
    // The path is never taken for a URI: SQLITE_OPEN_URI is not set, and an absolute path does not begin with "file:".
    constexpr int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOFOLLOW | SQLITE_OPEN_NOMUTEX;
    const int code = sqlite3_open_v2(file.c_str(), &db_, flags, files_.name());
    if (code == SQLITE_OK)
        return;
    const DatabaseError error = database_error(db_ == nullptr ? code : sqlite3_extended_errcode(db_),
                                               db_ == nullptr ? 0 : sqlite3_system_errno(db_), sqlite3_errstr(code));
    close();
    throw error;
}

void Connection::close() noexcept
{
    if (db_ == nullptr)
        return;
    // The engine would keep the file open for the sake of a copy that is under way.
    for (const std::weak_ptr<Backup>& started : backups_) {
        if (const std::shared_ptr<Backup> backup = started.lock())
            backup->end();
    }
    backups_.clear();
    if (in_transaction())
        try_run("ROLLBACK");
    depth_ = 0;
    pool_.reset();
    sqlite3_close_v2(db_);
    db_ = nullptr;
}

void Connection::require_open() const
{
    if (db_ == nullptr)
        throw own_error(DatabaseErrorKind::other, "The course is closed.");
}

sqlite3* Connection::handle()
{
    require_open();
    return db_;
}

StatementPool& Connection::pool()
{
    require_open();
    return *pool_;
}

std::array<unsigned char, Connection::header_size> Connection::header()
{
    // Reads through the engine's file descriptor. Opening the file a second time and closing it would release the POSIX
    // locks that other connections of this process hold on it.
    sqlite3_file* file = nullptr;
    int code = sqlite3_file_control(handle(), "main", SQLITE_FCNTL_FILE_POINTER, static_cast<void*>(&file));
    std::array<unsigned char, header_size> bytes{};
    if (code == SQLITE_OK && file->pMethods != nullptr)
        code = file->pMethods->xRead(file, bytes.data(), static_cast<int>(bytes.size()), 0);
    if (code != SQLITE_OK && code != SQLITE_IOERR_SHORT_READ)
        throw database_error(code, 0, sqlite3_errstr(code));
    return bytes;
}

std::string Connection::mark()
{
    constexpr std::size_t place_of_change_counter = 24;
    // Another file may have this path by now.
    require_not_moved();
    const auto bytes = header();
    struct stat status {};
    if (::stat(sqlite3_db_filename(db_, "main"), &status) != 0)
        throw database_error(SQLITE_IOERR_FSTAT, errno, "");
    std::string result = std::to_string(status.st_size) + "." + std::to_string(status.st_ctim.tv_sec) + "." +
                         std::to_string(status.st_ctim.tv_nsec) + "." + std::to_string(status.st_ino);
    for (std::size_t i = 0; i < 4; ++i)
        result += "." + std::to_string(bytes[place_of_change_counter + i]);
    return result;
}

void Connection::set_checkpoint_at_close(bool checkpoint)
{
    set_switch(db_, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, !checkpoint);
}

void Connection::limit_time() noexcept
{
    started_ = std::clock();
    sqlite3_progress_handler(db_, steps_between_looks_at_the_clock, is_out_of_time, &started_);
}

void Connection::allow_any_time() noexcept
{
    sqlite3_progress_handler(db_, 0, nullptr, nullptr);
}

void Connection::set_up_for_work()
{
    // If the engine cannot leave another mode, it returns the name of that mode.
    Statement mode = prepare("PRAGMA main.journal_mode = DELETE");
    if (!mode.step() || mode.text(0) != "delete")
        throw own_error(DatabaseErrorKind::locked, "Another program is using it.");
    mode.reset();
    run("PRAGMA main.synchronous = EXTRA");
    // 16 MiB (negative values are KiB), enough for the pages of a full course. With the smaller default, each list of
    // all records would read every page from the file again.
    run("PRAGMA main.cache_size = -16384");
}

void Connection::set_up_for_backup()
{
    run("PRAGMA main.journal_mode = MEMORY");
    run("PRAGMA main.synchronous = OFF");
    // In pages. More would be written all at once by the last step.
    run("PRAGMA main.cache_size = 64");
}

void Connection::tolerate_damage()
{
    // The engine takes this switch for the wish of somebody who wants to repair the file by hand, and only without the
    // defence against statements that write its inner tables. The program has no such statement.
    set_switch(db_, SQLITE_DBCONFIG_DEFENSIVE, false);
    set_switch(db_, SQLITE_DBCONFIG_WRITABLE_SCHEMA, true);
}

void Connection::wait_for_locks(bool wait)
{
    sqlite3_busy_timeout(handle(), wait ? static_cast<int>(busy_timeout_.count()) : 0);
}

std::shared_ptr<Backup> Connection::begin_backup(Connection& target)
{
    auto backup = std::make_shared<Backup>(*this, target);
    std::erase_if(backups_, [](const std::weak_ptr<Backup>& started) { return started.expired(); });
    backups_.push_back(backup);
    target.backups_.push_back(backup);
    return backup;
}

Statement Connection::prepare(std::string_view sql)
{
    return Statement(handle(), rules_, sql);
}

void Connection::run(std::string_view sql)
{
    prepare(sql).run();
}

std::int64_t Connection::query_integer(std::string_view sql)
{
    Statement statement = prepare(sql);
    return statement.step() ? statement.integer(0) : 0;
}

std::vector<TableColumn> Connection::columns_of(const std::string& table)
{
    return sqlite::columns_of(handle(), rules_, table);
}

std::string Connection::collation_of_key(const std::string& table)
{
    return sqlite::collation_of_key(handle(), rules_, table);
}

std::int64_t Connection::total_changes()
{
    return sqlite3_total_changes64(handle());
}

bool Connection::in_transaction() const noexcept
{
    return sqlite3_get_autocommit(db_) == 0;
}

bool Connection::try_run(const char* sql) noexcept
{
    return sqlite3_exec(db_, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

void Connection::run_pooled(std::string_view sql)
{
    Statement& statement = pool().take(sql);
    try {
        statement.step();
    } catch (...) {
        pool_->give_back(statement);
        throw;
    }
    pool_->give_back(statement);
}

void Connection::require_ready_to_write()
{
    require_open();
    if (open_recordsets_ > 0)
        throw own_error(DatabaseErrorKind::other, "A recordset is still open.");
    if (depth_ > 0 && !in_transaction())
        throw own_error(DatabaseErrorKind::other, undone);
    if (depth_ == 0 && put_off_)
        do_what_was_put_off();
}

void Connection::do_what_was_put_off()
{
    // Removed while it runs: the job begins a transaction, which would run it again.
    std::function<void()> job = std::exchange(put_off_, nullptr);
    try {
        job();
    } catch (...) {
        put_off_ = std::move(job);
        throw;
    }
}

void Connection::require_not_moved()
{
    int moved = 0;
    const int code = sqlite3_file_control(db_, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    const int system_error = errno;
    if (code == SQLITE_IOERR_FSTAT)
        throw database_error(code, system_error, "");
    if (code == SQLITE_OK && moved != 0)
        throw database_error(SQLITE_READONLY_DBMOVED, 0, "");
}

void Connection::begin()
{
    require_ready_to_write();
    if (depth_ == 0) {
        require_not_moved();
        run_pooled("BEGIN IMMEDIATE");
    } else {
        run_pooled("SAVEPOINT " + savepoint_name(depth_));
    }
    ++depth_;
}

void Connection::commit()
{
    require_open();
    if (depth_ == 0)
        throw own_error(DatabaseErrorKind::other, "There is no transaction to end.");
    if (!in_transaction())
        throw own_error(DatabaseErrorKind::other, undone);
    // On an error the depth stays the same, because the caller's guard still rolls back.
    try {
        run_pooled(depth_ == 1 ? std::string("COMMIT") : "RELEASE " + savepoint_name(depth_ - 1));
    } catch (const DatabaseError& error) {
        // If another program blocks the commit, the transaction stays open and can be rolled back. After any other
        // error the engine has closed it. The writes are in the file if the engine got as far as deleting the journal:
        // the fsync of the folder and the release of the lock come after that, and can fail.
        if (depth_ == 1 && !in_transaction())
            throw CommitError(error);
        throw;
    }
    --depth_;
}

void Connection::rollback() noexcept
{
    if (db_ == nullptr || depth_ == 0)
        return;
    --depth_;
    // After a full disk or an I/O error the engine may have rolled back the whole transaction already.
    if (in_transaction()) {
        if (depth_ > 0 && undo_savepoint(depth_))
            return;
        // A savepoint that cannot be rolled back takes the whole transaction with it: the outer commit then fails,
        // instead of storing half of the changes.
        try_run("ROLLBACK");
    }
    // After such an error the engine restores the file only when it is next read. Read it now, so that the file on disk
    // is not left half-written while the user reads a box.
    if (depth_ == 0)
        try_run("SELECT 1 FROM sqlite_schema LIMIT 1");
}

bool Connection::undo_savepoint(int depth) noexcept
{
    try {
        const std::string name = savepoint_name(depth);
        return try_run(("ROLLBACK TO " + name).c_str()) && try_run(("RELEASE " + name).c_str());
    } catch (const std::bad_alloc&) {
        return false;
    }
}

} // namespace cuedrill::platform::sqlite
