#include "fakes/recording_database.h"

#include <gtest/gtest.h>
#include <map>
#include <utility>

namespace cuedrill::fakes {

/// What a RecordingDatabase has seen; shared with its recordsets, which may outlive the caller's interest in it.
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
            return false;
        case Operation::open_recordset:
        case Operation::query:
        case Operation::execute:
        case Operation::begin:
        case Operation::commit:
            break;
        }
        return true;
    }
};

namespace {

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

/// Counts a query while it is read.
class RowsBeingRead {
public:
    explicit RowsBeingRead(DatabaseRecord& record) : m_record(record) { ++m_record.open_recordsets; }
    RowsBeingRead(const RowsBeingRead&) = delete;
    RowsBeingRead& operator=(const RowsBeingRead&) = delete;
    ~RowsBeingRead() { --m_record.open_recordsets; }

private:
    DatabaseRecord& m_record;
};

} // namespace

RecordingDatabase::RecordingDatabase(platform::Database& database)
    : m_database(database), m_record(std::make_shared<DatabaseRecord>())
{
}

RecordingDatabase::~RecordingDatabase()
{
    EXPECT_TRUE(m_record->failures.empty() && !m_record->statement_failure && !m_record->row_failure &&
                !m_commit_stored)
        << "A failure was planned and never came.";
}

void RecordingDatabase::fail_at(Operation operation, int call, platform::DatabaseErrorKind kind, std::string words)
{
    m_record->failures[operation] = {call, kind, std::move(words)};
}

void RecordingDatabase::fail_at_statement(int call, platform::DatabaseErrorKind kind, std::string words)
{
    m_record->statement_failure = {call, kind, std::move(words)};
}

void RecordingDatabase::fail_at_row(int row, platform::DatabaseErrorKind kind, std::string words)
{
    m_record->row_failure = {row, kind, std::move(words)};
}

void RecordingDatabase::fail_commit(bool stored)
{
    m_commit_stored = stored;
}

void RecordingDatabase::at_each_call(std::function<void(Operation)> hook)
{
    m_record->on_call = std::move(hook);
}

const std::vector<std::string>& RecordingDatabase::statements() const
{
    return m_record->statements;
}

int RecordingDatabase::count(Operation operation) const
{
    const auto found = m_record->counts.find(operation);
    return found == m_record->counts.end() ? 0 : found->second;
}

int RecordingDatabase::statement_count() const
{
    return m_record->statement_count;
}

int RecordingDatabase::transaction_depth() const
{
    return m_record->transaction_depth;
}

int RecordingDatabase::open_recordsets() const
{
    return m_record->open_recordsets;
}

void RecordingDatabase::forget()
{
    m_record->statements.clear();
    m_record->counts.clear();
    m_record->statement_count = 0;
}

void RecordingDatabase::create(const std::string& path)
{
    m_record->called(Operation::create);
    m_database.create(path);
}

void RecordingDatabase::append_table(const platform::TableSchema& table)
{
    m_record->called(Operation::append_table);
    m_database.append_table(table);
}

void RecordingDatabase::finish_creation()
{
    m_record->called(Operation::finish_creation);
    m_database.finish_creation();
}

void RecordingDatabase::open(const std::string& path, std::span<const platform::TableSchema> expected)
{
    m_record->called(Operation::open);
    m_database.open(path, expected);
}

std::string RecordingDatabase::unstored() const
{
    return m_unstored.empty() ? m_database.unstored() : m_unstored;
}

void RecordingDatabase::close() noexcept
{
    m_record->transaction_depth = 0;
    m_database.close();
}

bool RecordingDatabase::is_open() const
{
    return m_database.is_open();
}

std::unique_ptr<platform::Recordset> RecordingDatabase::open_recordset(std::string_view sql)
{
    m_record->statements.emplace_back(sql);
    m_record->called(Operation::open_recordset);
    return std::make_unique<RecordingRecordset>(m_database.open_recordset(sql), m_record);
}

void RecordingDatabase::begin()
{
    m_record->called(Operation::begin);
    m_database.begin();
    ++m_record->transaction_depth;
}

void RecordingDatabase::commit()
{
    m_record->called(Operation::commit);
    if (m_commit_stored && m_record->transaction_depth == 1)
        end_with_error();
    m_database.commit();
    --m_record->transaction_depth;
}

void RecordingDatabase::rollback() noexcept
{
    m_database.rollback();
    --m_record->transaction_depth;
}

void RecordingDatabase::read(std::string_view sql, std::span<const platform::Value> values,
                             const platform::RowVisitor& visit)
{
    m_record->statements.emplace_back(sql);
    m_record->called(Operation::query);
    const RowsBeingRead reading(*m_record);
    m_database.query(sql, values, [&](const platform::Row& row) {
        DatabaseRecord::come_due(m_record->row_failure);
        return visit(row);
    });
}

std::int64_t RecordingDatabase::write(std::string_view sql, std::span<const platform::Value> values)
{
    m_record->statements.emplace_back(sql);
    m_record->called(Operation::execute);
    return m_database.execute(sql, values);
}

void RecordingDatabase::end_with_error()
{
    if (*std::exchange(m_commit_stored, std::nullopt))
        m_database.commit();
    else
        m_database.rollback();
    throw platform::CommitError({platform::DatabaseErrorKind::input_output, 0, commit_words});
}

} // namespace cuedrill::fakes
