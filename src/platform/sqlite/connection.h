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

/// One open file with its statements and transactions. Cursors and recordsets share it; after `close` each of its
/// functions throws, so that those that outlive the course fail in words. Every function but `close` and `rollback`
/// may throw DatabaseError.
class Connection {
public:
    static constexpr std::size_t header_size = 100;

    /// Opens the existing file `file`, a canonical absolute path, with every defence of the engine raised.
    /// The file itself is not read yet.
    Connection(const std::string& file, const TextCompare& compare, std::chrono::milliseconds busy_timeout);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() { close(); }

    /// Rolls back what is open, drops all statements and closes the file. May be called again.
    void close() noexcept;
    [[nodiscard]] bool is_open() const noexcept { return db_ != nullptr; }

    /// The first bytes of the file (zeros where it is shorter), read without a lock or a look into the journal.
    [[nodiscard]] std::array<unsigned char, header_size> header();
    /// Differs from the mark of every earlier state of the file: its size, the time when its contents or its inode
    /// changed last, its inode, and the engine's count of changes. It has no blank and no line end.
    [[nodiscard]] std::string mark();
    /// Whether a read of the file, its journal or its log has failed so far.
    [[nodiscard]] bool read_failed() const noexcept { return files_.read_failed(); }
    /// Whether a statement has met a malformed page so far.
    [[nodiscard]] bool damage_met() const noexcept { return rules_.damage_met; }
    /// Whether a tree of pages that goes deeper than any sound one is damage.
    void limit_depth(bool limited) noexcept { files_.limit_depth(limited); }
    /// Whether closing the last connection carries a write-ahead log over into the file.
    void set_checkpoint_at_close(bool checkpoint);
    /// The settings under which a course is worked with: rollback journal, durable when a commit returns, and room for
    /// its pages in memory. Requires a file that has been checked: the engine looks into it.
    void set_up_for_work();

    /// Lifts the bound on processor time under which a file is read that has not been checked yet.
    void allow_any_time() noexcept;
    /// Measures the processor time from now on.
    void restart_time() noexcept { started_ = std::clock(); }

    /// Prepares a statement that is used once.
    [[nodiscard]] Statement prepare(std::string_view sql);
    /// Runs one of the adapter's own statements, ignoring rows.
    void run(std::string_view sql);
    /// The first column of the first row.
    [[nodiscard]] std::int64_t query_integer(std::string_view sql);
    [[nodiscard]] std::vector<TableColumn> columns_of(const std::string& table);
    [[nodiscard]] std::string collation_of_key(const std::string& table);
    [[nodiscard]] StatementPool& pool();
    [[nodiscard]] sqlite3* handle();
    /// Rows that all writing statements so far have changed.
    [[nodiscard]] std::int64_t total_changes();

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

    /// Puts off what must be written before anything else is: it runs before the next write outside a transaction, and
    /// again before each one until it succeeds.
    void put_off(std::function<void()> job) { put_off_ = std::move(job); }

    /// Throws when rows of a recordset are still being read, or when the transaction that the caller believes open was
    /// undone by the engine: a write would stand alone. Then does what was put off.
    void require_ready_to_write();
    void recordset_opened() { ++open_recordsets_; }
    void recordset_closed() noexcept { --open_recordsets_; }

private:
    void require_open() const;
    void open_file(const std::string& file);
    void harden();
    void set_switch(int option, bool on);
    void require_not_moved();
    void do_what_was_put_off();
    [[nodiscard]] bool in_transaction() const noexcept;
    void run_pooled(std::string_view sql);
    /// Runs without throwing; false on an error.
    bool try_run(const char* sql) noexcept;
    bool undo_savepoint(int depth) noexcept;

    std::chrono::milliseconds busy_timeout_;
    std::vector<std::weak_ptr<Backup>> backups_;
    TextRules rules_;
    CourseFiles files_; ///< outlives the engine's connection, which works through it
    sqlite3* db_ = nullptr;
    std::unique_ptr<StatementPool> pool_;
    std::clock_t started_; ///< processor time of the process from which on the bound counts
    std::function<void()> put_off_;
    int depth_ = 0;
    int open_recordsets_ = 0;
};

/// A statement of the pool, held for one user.
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

    /// @throws DatabaseError when the connection was closed, which ended the statement.
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
