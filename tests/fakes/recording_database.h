#pragma once

#include "platform/database.h"

#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cuedrill::fakes {

/// What can be asked of a database and its cursors, and made to fail.
enum class Operation {
    create,
    append_table,
    finish_creation,
    open,
    open_table,
    open_recordset,
    query,
    execute,
    begin,
    commit,
    seek,
    edit,
    update
};

/// What a RecordingDatabase has seen; shared with its cursors, which may outlive the caller's interest in it.
struct DatabaseRecord {
    struct Failure {
        int calls_left = 0;
        platform::DatabaseErrorKind kind = platform::DatabaseErrorKind::other;
        std::string words;
    };

    std::map<Operation, int> counts;
    std::map<Operation, Failure> failures;
    int statement_count = 0;
    std::optional<Failure> statement_failure; ///< of the statement counted from now on
    std::optional<Failure> row_failure;       ///< of the row counted in the next query
    std::function<void(Operation)> on_call;
    std::vector<std::string> statements;
    int transaction_depth = 0;
    int open_recordsets = 0;

    /// Counts the call, and fails when it is the one that a test has chosen.
    void called(Operation operation)
    {
        ++counts[operation];
        if (on_call)
            on_call(operation);
        if (is_statement(operation)) {
            ++statement_count;
            come_due(statement_failure);
        }
        const auto planned = failures.find(operation);
        if (planned == failures.end() || --planned->second.calls_left > 0)
            return;
        const Failure failure = planned->second;
        failures.erase(planned);
        throw platform::DatabaseError(failure.kind, 0, failure.words);
    }

    static void come_due(std::optional<Failure>& planned)
    {
        if (!planned || --planned->calls_left > 0)
            return;
        const Failure failure = *std::exchange(planned, std::nullopt);
        throw platform::DatabaseError(failure.kind, 0, failure.words);
    }

    /// Whether the engine runs a statement for it.
    static bool is_statement(Operation operation)
    {
        switch (operation) {
        case Operation::create:
        case Operation::append_table:
        case Operation::finish_creation:
        case Operation::open:
        case Operation::open_table:
            return false;
        case Operation::open_recordset:
        case Operation::query:
        case Operation::execute:
        case Operation::begin:
        case Operation::commit:
        case Operation::seek:
        case Operation::edit:
        case Operation::update:
            break;
        }
        return true;
    }
};

/// A cursor that counts, and fails where it is told to before anything has happened.
class RecordingCursor : public platform::TableCursor {
public:
    RecordingCursor(std::unique_ptr<platform::TableCursor> cursor, std::shared_ptr<DatabaseRecord> record)
        : m_cursor(std::move(cursor)), m_record(std::move(record))
    {
    }

    void set_index(std::string_view name) override { m_cursor->set_index(name); }
    void seek(const platform::Value& key) override
    {
        m_record->called(Operation::seek);
        m_cursor->seek(key);
    }
    [[nodiscard]] bool no_match() const override { return m_cursor->no_match(); }
    void move_first() override { m_cursor->move_first(); }
    void move_next() override { m_cursor->move_next(); }
    void move_previous() override { m_cursor->move_previous(); }
    void move_last() override { m_cursor->move_last(); }
    [[nodiscard]] bool bof() const override { return m_cursor->bof(); }
    [[nodiscard]] bool eof() const override { return m_cursor->eof(); }
    [[nodiscard]] platform::Value field(std::string_view column) const override { return m_cursor->field(column); }
    void add_new() override { m_cursor->add_new(); }
    void edit() override
    {
        m_record->called(Operation::edit);
        m_cursor->edit();
    }
    void set(std::string_view column, platform::Value value) override { m_cursor->set(column, std::move(value)); }
    void update() override
    {
        m_record->called(Operation::update);
        m_cursor->update();
    }
    void cancel() override { m_cursor->cancel(); }
    void delete_row() override { m_cursor->delete_row(); }

private:
    std::unique_ptr<platform::TableCursor> m_cursor;
    std::shared_ptr<DatabaseRecord> m_record;
};

/// A recordset that is counted while it lives.
class RecordingRecordset : public platform::Recordset {
public:
    RecordingRecordset(std::unique_ptr<platform::Recordset> recordset, std::shared_ptr<DatabaseRecord> record)
        : m_recordset(std::move(recordset)), m_record(std::move(record))
    {
        ++m_record->open_recordsets;
    }
    RecordingRecordset(const RecordingRecordset&) = delete;
    RecordingRecordset& operator=(const RecordingRecordset&) = delete;
    ~RecordingRecordset() override { --m_record->open_recordsets; }

    [[nodiscard]] bool bof() const override { return m_recordset->bof(); }
    [[nodiscard]] bool eof() const override { return m_recordset->eof(); }
    void move_first() override { m_recordset->move_first(); }
    void move_next() override { m_recordset->move_next(); }
    [[nodiscard]] platform::Value field(std::string_view column) const override { return m_recordset->field(column); }
    [[nodiscard]] platform::Value field(int column) const override { return m_recordset->field(column); }

private:
    std::unique_ptr<platform::Recordset> m_recordset;
    std::shared_ptr<DatabaseRecord> m_record;
};

/// A thin layer over a real database that keeps what it is asked, and fails once where a test has told it to, before
/// the real database has done anything. A failure that was planned and never came fails the test.
class RecordingDatabase : public platform::Database {
public:
    explicit RecordingDatabase(platform::Database& database) : m_database(database) {}
    RecordingDatabase(const RecordingDatabase&) = delete;
    RecordingDatabase& operator=(const RecordingDatabase&) = delete;
    ~RecordingDatabase() override
    {
        EXPECT_TRUE(m_record->failures.empty() && !m_record->statement_failure && !m_record->row_failure &&
                    !m_commit_stored)
            << "A failure was planned and never came.";
    }

    static constexpr const char* failure_words = "The disk is full.";
    static constexpr const char* commit_words = "The commit failed.";

    /// The `call`-th such operation from now on (1 is the next) throws.
    void fail_at(Operation operation, int call = 1,
                 platform::DatabaseErrorKind kind = platform::DatabaseErrorKind::full,
                 std::string words = failure_words)
    {
        m_record->failures[operation] = {call, kind, std::move(words)};
    }

    /// The `call`-th statement from now on (1 is the next; begin and commit are statements too) throws.
    void fail_at_statement(int call, platform::DatabaseErrorKind kind = platform::DatabaseErrorKind::full,
                           std::string words = failure_words)
    {
        m_record->statement_failure = {call, kind, std::move(words)};
    }

    /// The next query throws in place of its `row`-th row (1 is the first).
    void fail_at_row(int row, platform::DatabaseErrorKind kind = platform::DatabaseErrorKind::input_output,
                     std::string words = failure_words)
    {
        m_record->row_failure = {row, kind, std::move(words)};
    }

    /// The next end of an outermost transaction reports an error, with what it wrote stored or not.
    void fail_commit(bool stored) { m_commit_stored = stored; }

    /// Runs at each operation, before it happens; what it throws comes out of the operation.
    void at_each_call(std::function<void(Operation)> hook) { m_record->on_call = std::move(hook); }

    /// The texts given to `open_recordset`, `query` and `execute`, in their order.
    [[nodiscard]] const std::vector<std::string>& statements() const { return m_record->statements; }
    [[nodiscard]] int count(Operation operation) const
    {
        const auto found = m_record->counts.find(operation);
        return found == m_record->counts.end() ? 0 : found->second;
    }
    /// Statements run: queries, executions, begins, commits, and what cursors ask.
    [[nodiscard]] int statement_count() const { return m_record->statement_count; }
    /// Transactions begun and not ended; recordsets alive and queries being read. Both are 0 while a box is shown.
    [[nodiscard]] int transaction_depth() const { return m_record->transaction_depth; }
    [[nodiscard]] int open_recordsets() const { return m_record->open_recordsets; }

    /// Forgets what was asked so far, not the planned failures.
    void forget()
    {
        m_record->statements.clear();
        m_record->counts.clear();
        m_record->statement_count = 0;
    }

    void create(const std::string& path) override
    {
        m_record->called(Operation::create);
        m_database.create(path);
    }
    void append_table(const platform::TableDefinition& table) override
    {
        m_record->called(Operation::append_table);
        m_database.append_table(table);
    }
    void finish_creation() override
    {
        m_record->called(Operation::finish_creation);
        m_database.finish_creation();
    }
    void open(const std::string& path, const std::vector<platform::TableDefinition>& expected) override
    {
        m_record->called(Operation::open);
        m_database.open(path, expected);
    }
    [[nodiscard]] std::string unstored() const override { return m_database.unstored(); }
    void close() noexcept override
    {
        m_record->transaction_depth = 0;
        m_database.close();
    }
    [[nodiscard]] bool is_open() const override { return m_database.is_open(); }

    [[nodiscard]] std::unique_ptr<platform::TableCursor> open_table(std::string_view name) override
    {
        m_record->called(Operation::open_table);
        return std::make_unique<RecordingCursor>(m_database.open_table(name), m_record);
    }
    [[nodiscard]] std::unique_ptr<platform::Recordset> open_recordset(std::string_view sql) override
    {
        m_record->statements.emplace_back(sql);
        m_record->called(Operation::open_recordset);
        return std::make_unique<RecordingRecordset>(m_database.open_recordset(sql), m_record);
    }
    void begin() override
    {
        m_record->called(Operation::begin);
        m_database.begin();
        ++m_record->transaction_depth;
    }
    void commit() override
    {
        m_record->called(Operation::commit);
        if (m_commit_stored && m_record->transaction_depth == 1)
            end_with_error();
        m_database.commit();
        --m_record->transaction_depth;
    }
    void rollback() noexcept override
    {
        m_database.rollback();
        --m_record->transaction_depth;
    }

protected:
    void read(std::string_view sql, std::span<const platform::Value> values, const platform::RowVisitor& visit) override
    {
        m_record->statements.emplace_back(sql);
        m_record->called(Operation::query);
        const RowsBeingRead reading(*m_record);
        m_database.query(sql, values, [&](const platform::Row& row) {
            DatabaseRecord::come_due(m_record->row_failure);
            return visit(row);
        });
    }
    std::int64_t write(std::string_view sql, std::span<const platform::Value> values) override
    {
        m_record->statements.emplace_back(sql);
        m_record->called(Operation::execute);
        return m_database.execute(sql, values);
    }

private:
    class RowsBeingRead {
    public:
        explicit RowsBeingRead(DatabaseRecord& record) : m_record(record) { ++m_record.open_recordsets; }
        RowsBeingRead(const RowsBeingRead&) = delete;
        RowsBeingRead& operator=(const RowsBeingRead&) = delete;
        ~RowsBeingRead() { --m_record.open_recordsets; }

    private:
        DatabaseRecord& m_record;
    };

    /// As the engine does: the transaction is over, and the caller has still to roll back.
    [[noreturn]] void end_with_error()
    {
        if (*std::exchange(m_commit_stored, std::nullopt))
            m_database.commit();
        else
            m_database.rollback();
        throw platform::CommitError({platform::DatabaseErrorKind::input_output, 0, commit_words});
    }

    platform::Database& m_database;
    std::optional<bool> m_commit_stored;
    std::shared_ptr<DatabaseRecord> m_record = std::make_shared<DatabaseRecord>();
};

} // namespace cuedrill::fakes
