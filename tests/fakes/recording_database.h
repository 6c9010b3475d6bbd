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

/// What can be asked of a database, and made to fail.
enum class Operation { create, append_table, finish_creation, open, open_recordset, query, execute, begin, commit };

struct DatabaseRecord;

/// A thin layer over a real database that keeps what it is asked, and fails once where a test has told it to, before
/// the real database has done anything. A failure that was planned and never came fails the test.
class RecordingDatabase : public platform::Database {
public:
    explicit RecordingDatabase(platform::Database& database);
    RecordingDatabase(const RecordingDatabase&) = delete;
    RecordingDatabase& operator=(const RecordingDatabase&) = delete;
    ~RecordingDatabase() override;

    static constexpr const char* failure_words = "The disk is full.";
    static constexpr const char* commit_words = "The commit failed.";

    /// The `call`-th such operation from now on (1 is the next) throws.
    void fail_at(Operation operation, int call = 1,
                 platform::DatabaseErrorKind kind = platform::DatabaseErrorKind::full,
                 std::string words = failure_words);

    /// The `call`-th statement from now on (1 is the next; begin and commit are statements too) throws.
    void fail_at_statement(int call, platform::DatabaseErrorKind kind = platform::DatabaseErrorKind::full,
                           std::string words = failure_words);

    /// The next query throws in place of its `row`-th row (1 is the first).
    void fail_at_row(int row, platform::DatabaseErrorKind kind = platform::DatabaseErrorKind::input_output,
                     std::string words = failure_words);

    /// The next end of an outermost transaction reports an error, with what it wrote stored or not.
    void fail_commit(bool stored);

    /// Opening has found no room for what it wanted to store.
    void leave_unstored(std::string words) { unstored_ = std::move(words); }

    /// Runs at each operation, before it happens; what it throws comes out of the operation.
    void at_each_call(std::function<void(Operation)> hook);

    /// The texts given to `open_recordset`, `query` and `execute`, in their order.
    [[nodiscard]] const std::vector<std::string>& statements() const;
    [[nodiscard]] int count(Operation operation) const;
    /// Statements run: queries, executions, begins, commits.
    [[nodiscard]] int statement_count() const;
    /// Transactions begun and not ended; recordsets alive and queries being read. Both are 0 while a box is shown.
    [[nodiscard]] int transaction_depth() const;
    [[nodiscard]] int open_recordsets() const;

    /// Forgets what was asked so far, not the planned failures.
    void forget();

    void create(const std::string& path) override;
    void append_table(const platform::TableSchema& table) override;
    void finish_creation() override;
    void open(const std::string& path, std::span<const platform::TableSchema> expected) override;
    [[nodiscard]] std::string unstored() const override;
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
    /// As the engine does: the transaction is over, and the caller has still to roll back.
    [[noreturn]] void end_with_error();

    platform::Database& database_;
    std::optional<bool> commit_stored_;
    std::string unstored_;
    std::shared_ptr<DatabaseRecord> record_;
};

} // namespace cuedrill::fakes
