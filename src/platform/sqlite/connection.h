#pragma once

#include "platform/database.h"
#include "platform/sqlite/course_files.h"
#include "platform/sqlite/engine_functions.h"
#include "platform/sqlite/statement_pool.h"
#include "platform/sqlite/table_columns.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct sqlite3;

namespace cuedrill::platform::sqlite {

class Backup;

/// An open file with its prepared statements and its transaction. Recordsets share ownership of it. After `close`, what
/// still uses it gets a DatabaseError with a text for the user. Functions that are not noexcept may throw
/// DatabaseError.
class Connection {
public:
    static constexpr std::size_t header_size = 100;

    /// Opens the existing file `file`, a canonical absolute path, with all of the engine's defences against malicious
    /// files turned on. The file is not read yet.
    Connection(const std::string& file, const TextCompare& compare, std::chrono::milliseconds busy_timeout);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() { close(); }

    /// Rolls back an open transaction, finalizes the statements of the pool and closes the file. May be called again.
    void close() noexcept;
    [[nodiscard]] bool is_open() const noexcept { return db_ != nullptr; }

    /// The first bytes of the file, padded with zeros if it is shorter. Takes no lock and ignores the journal.
    [[nodiscard]] std::array<unsigned char, header_size> header();
    /// A mark of the file's present state that differs from the mark of every earlier state: the size, the time of the
    /// last change of the contents or the inode, the inode number, and the engine's change counter. It contains no
    /// blank and no line end.
    [[nodiscard]] std::string mark();
    /// Whether any read of the file, its journal or its write-ahead log has failed.
    [[nodiscard]] bool read_failed() const noexcept { return files_.read_failed(); }
    /// Whether any statement has failed because of a malformed page.
    [[nodiscard]] bool damage_met() const noexcept { return rules_.damage_met; }
    /// While `limited`, reading a page tree that is deeper than in any sound file fails with SQLITE_CORRUPT.
    void limit_depth(bool limited) noexcept { files_.limit_depth(limited); }
    /// Whether closing the last connection copies the write-ahead log into the file.
    void set_checkpoint_at_close(bool checkpoint);
    /// Applies the settings for work: a rollback journal, commits that are durable when they return, and a page cache
    /// for a full course. It reads the file, so call it only after the file has been checked.
    /// @throws DatabaseError (locked) if another program keeps the file in write-ahead log mode.
    void set_up_for_work();

    /// Limits the processor time of statements, measured from now on. So it is while the file has not been checked.
    void limit_time() noexcept;
    /// Lifts this limit.
    void allow_any_time() noexcept;
    /// Measures the processor time for the limit from now on.
    void restart_time() noexcept { started_ = std::clock(); }

    /// Prepares a statement outside the pool, for a single use.
    [[nodiscard]] Statement prepare(std::string_view sql);
    /// Runs one of the adapter's own statements and ignores its rows.
    void run(std::string_view sql);
    /// The first column of the first row; 0 if there is no row.
    [[nodiscard]] std::int64_t query_integer(std::string_view sql);
    [[nodiscard]] std::vector<TableColumn> columns_of(const std::string& table);
    [[nodiscard]] std::string collation_of_key(const std::string& table);
    [[nodiscard]] StatementPool& pool();
    [[nodiscard]] sqlite3* handle();
    /// The number of rows added, changed or deleted since the file was opened.
    [[nodiscard]] std::int64_t total_changes();

    /// Changes when another connection commits, but not when this one does.
    [[nodiscard]] std::int64_t data_version() { return query_integer("PRAGMA main.data_version"); }

    void begin();
    void commit();
    void rollback() noexcept;

    /// Begins to copy all pages into the empty file of `target`, which must outlive the result. Closing either
    /// connection ends it.
    [[nodiscard]] std::shared_ptr<Backup> begin_backup(Connection& target);
    /// Whether a statement or a backup waits for another program's lock, for as long as the constructor says.
    void wait_for_locks(bool wait);
    /// The settings for a file that only gets the pages of another one: nothing is brought to the disk, and hardly
    /// anything is kept in memory until the end.
    void set_up_for_backup();

    /// Lets the engine read a file that is shorter than it says. Requires that nothing is written.
    void tolerate_damage();

    /// Defers `job` until just before the next transaction or single write. If it throws, that write fails with its
    /// error, and the job runs again before the following one.
    void put_off(std::function<void()> job) { put_off_ = std::move(job); }

    /// Call it before each write. Runs the deferred job, unless a transaction is open.
    /// @throws DatabaseError (other) if rows are still being read, or if the engine has rolled back the transaction
    /// that the caller believes open: the write would then be committed on its own. What the job throws.
    void require_ready_to_write();
    void recordset_opened() { ++open_recordsets_; }
    void recordset_closed() noexcept { --open_recordsets_; }

private:
    void require_open() const;
    void open_file(const std::string& file);
    void require_not_moved();
    void do_what_was_put_off();
    [[nodiscard]] bool in_transaction() const noexcept;
    void run_pooled(std::string_view sql);
    /// Runs a statement without throwing; returns false on an error.
    bool try_run(const char* sql) noexcept;
    bool undo_savepoint(int depth) noexcept;

    std::chrono::milliseconds busy_timeout_;
    std::vector<std::weak_ptr<Backup>> backups_;
    TextRules rules_;
    CourseFiles files_; ///< must outlive the engine's connection, which accesses all files through it
    sqlite3* db_ = nullptr;
    std::unique_ptr<StatementPool> pool_;
    std::clock_t started_ = 0; ///< processor time of the process from which the limit is measured
    std::function<void()> put_off_;
    int depth_ = 0;
    int open_recordsets_ = 0;
};

/// Borrows a statement from the pool of a connection and gives it back on destruction.
class StatementLease {
public:
    StatementLease(std::shared_ptr<Connection> connection, std::string_view sql)
        : connection_(std::move(connection)), statement_(&connection_->pool().take(sql))
    {
    }
    StatementLease(StatementLease&& other) noexcept
        : connection_(std::move(other.connection_)), statement_(std::exchange(other.statement_, nullptr))
    {
    }
    StatementLease(const StatementLease&) = delete;
    StatementLease& operator=(const StatementLease&) = delete;
    StatementLease& operator=(StatementLease&&) = delete;
    ~StatementLease()
    {
        if (statement_ != nullptr && connection_->is_open())
            connection_->pool().give_back(*statement_);
    }

    /// @throws DatabaseError if the connection was closed, which finalizes the statement.
    [[nodiscard]] Statement& get() const
    {
        static_cast<void>(connection_->handle());
        return *statement_;
    }

private:
    std::shared_ptr<Connection> connection_;
    Statement* statement_;
};

} // namespace cuedrill::platform::sqlite
