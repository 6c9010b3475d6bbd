#pragma once

#include "platform/database.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::fakes {

/// The operations of a database that a test can count and make fail.
enum class Operation {
    create,
    append_table,
    finish_creation,
    open,
    open_recordset,
    query,
    execute,
    begin,
    commit,
    begin_copy,
    copy_step,
    copy_flush,
    copy_finish
};

struct DatabaseRecord;

/// A thin layer over a real database that records the operations and throws once where a test planned it, before the
/// real database has done anything. A planned failure that never happened fails the test.
class RecordingDatabase : public platform::Database {
public:
    explicit RecordingDatabase(platform::Database& database);
    RecordingDatabase(const RecordingDatabase&) = delete;
    RecordingDatabase& operator=(const RecordingDatabase&) = delete;
    ~RecordingDatabase() override;

    static constexpr const char* failure_words = "The disk is full.";
    static constexpr const char* commit_words = "The commit failed.";

    /// The `call`-th operation of this kind from now on (1 is the next) throws.
    void fail_at(Operation operation, int call = 1,
                 platform::DatabaseErrorKind kind = platform::DatabaseErrorKind::full,
                 std::string words = failure_words);

    /// The `call`-th statement from now on (1 is the next; begin and commit count, too) throws.
    void fail_at_statement(int call, platform::DatabaseErrorKind kind = platform::DatabaseErrorKind::full,
                           std::string words = failure_words);

    /// The next query throws instead of returning its `row`-th row (1 is the first).
    void fail_at_row(int row, platform::DatabaseErrorKind kind = platform::DatabaseErrorKind::input_output,
                     std::string words = failure_words);

    /// The next commit of an outermost transaction throws CommitError; `stored` tells whether its writes are stored.
    void fail_commit(bool stored);

    /// The next `finish_check` throws.
    void fail_check(platform::DatabaseErrorKind kind, const std::string& words);

    /// Makes `unstored` return `words`, as if opening had found the disk full.
    void leave_unstored(std::string words) { unstored_ = std::move(words); }

    /// Called at each operation, before it runs; an exception from it leaves the operation.
    void at_each_call(std::function<void(Operation)> hook);

    /// The SQL given to `open_recordset`, `query` and `execute`, in order.
    [[nodiscard]] const std::vector<std::string>& statements() const;
    [[nodiscard]] int count(Operation operation) const;
    /// Number of statements run: queries, executions, begins, commits.
    [[nodiscard]] int statement_count() const;
    /// Open transactions; below, open recordsets and queries being read. Both must be 0 while a box is shown.
    [[nodiscard]] int transaction_depth() const;
    [[nodiscard]] int open_recordsets() const;

    /// Forgets the recorded operations, but not the planned failures.
    void forget();

    void create(const std::string& path) override;
    void append_table(const platform::TableSchema& table) override;
    void finish_creation() override;
    void open(const std::string& path, std::span<const platform::TableSchema> expected) override;
    [[nodiscard]] std::string unstored() const override;
    void finish_check() override;
    [[nodiscard]] std::string mark() override;
    [[nodiscard]] std::unique_ptr<platform::CourseCopy>
    begin_copy(const std::string& path, std::span<const platform::TableSchema> expected) override;
    void close() noexcept override;
    [[nodiscard]] bool is_open() const override;

    [[nodiscard]] std::unique_ptr<platform::Recordset> open_recordset(std::string_view sql) override;
    void begin() override;
    void commit() override;
    void rollback() noexcept override;

protected:
    void read(std::string_view sql, std::span<const platform::Value> values,
              const platform::RowVisitor& visit) override;
    std::int64_t write(std::string_view sql, std::span<const platform::Value> values) override;

private:
    /// Behaves as the engine does: the transaction is over, and the caller still has to roll back.
    [[noreturn]] void end_with_error();

    platform::Database& database_;
    std::optional<bool> commit_stored_;
    std::optional<platform::DatabaseError> check_failure_;
    std::string unstored_;
    std::shared_ptr<DatabaseRecord> record_;
};

} // namespace cuedrill::fakes
