#include "fakes/recording_database.h"

#include <gtest/gtest.h>
#include <map>
#include <utility>

namespace cuedrill::fakes {

/// The records and planned failures of a RecordingDatabase; shared with its recordsets, which may outlive it.
struct DatabaseRecord {
    struct Failure {
        int calls_left = 0;
        platform::DatabaseErrorKind kind = platform::DatabaseErrorKind::other;
        std::string words;
    };

    std::map<Operation, int> counts;
    std::map<Operation, Failure> failures;
    int statement_count = 0;
    std::optional<Failure> statement_failure; ///< counted in statements from now on
    std::optional<Failure> row_failure;       ///< counted in rows of the next query
    std::function<void(Operation)> on_call;
    std::vector<std::string> statements;
    int transaction_depth = 0;
    int open_recordsets = 0;

    /// Counts the call, and throws if a test has planned a failure for it.
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

    /// Whether the operation runs a statement of the engine.
    static bool is_statement(Operation operation)
    {
        switch (operation) {
        case Operation::create:
        case Operation::append_table:
        case Operation::finish_creation:
        case Operation::open:
        case Operation::begin_copy:
        case Operation::copy_step:
        case Operation::copy_flush:
        case Operation::copy_finish:
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

/// A recordset that counts as open while it lives.
class RecordingRecordset : public platform::Recordset {
public:
    RecordingRecordset(std::unique_ptr<platform::Recordset> recordset, std::shared_ptr<DatabaseRecord> record)
        : recordset_(std::move(recordset)), record_(std::move(record))
    {
        ++record_->open_recordsets;
    }
    RecordingRecordset(const RecordingRecordset&) = delete;
    RecordingRecordset& operator=(const RecordingRecordset&) = delete;
    ~RecordingRecordset() override { --record_->open_recordsets; }

    [[nodiscard]] bool bof() const override { return recordset_->bof(); }
    [[nodiscard]] bool eof() const override { return recordset_->eof(); }
    void move_first() override { recordset_->move_first(); }
    void move_next() override { recordset_->move_next(); }
    [[nodiscard]] platform::Value field(std::string_view column) const override { return recordset_->field(column); }
    [[nodiscard]] platform::Value field(int column) const override { return recordset_->field(column); }

private:
    std::unique_ptr<platform::Recordset> recordset_;
    std::shared_ptr<DatabaseRecord> record_;
};

/// A copy whose steps are recorded.
class RecordingCopy : public platform::CourseCopy {
public:
    RecordingCopy(std::unique_ptr<platform::CourseCopy> copy, std::shared_ptr<DatabaseRecord> record)
        : copy_(std::move(copy)), record_(std::move(record))
    {
    }

    [[nodiscard]] bool step(int most) override
    {
        record_->called(Operation::copy_step);
        return copy_->step(most);
    }
    [[nodiscard]] std::string mark() const override { return copy_->mark(); }
    void flush() override
    {
        record_->called(Operation::copy_flush);
        copy_->flush();
    }
    void finish() override
    {
        record_->called(Operation::copy_finish);
        copy_->finish();
    }
    [[nodiscard]] bool abandoned() const noexcept override { return copy_->abandoned(); }

private:
    std::unique_ptr<platform::CourseCopy> copy_;
    std::shared_ptr<DatabaseRecord> record_;
};

/// Counts a query as open while it is being read.
class RowsBeingRead {
public:
    explicit RowsBeingRead(DatabaseRecord& record) : record_(record) { ++record_.open_recordsets; }
    RowsBeingRead(const RowsBeingRead&) = delete;
    RowsBeingRead& operator=(const RowsBeingRead&) = delete;
    ~RowsBeingRead() { --record_.open_recordsets; }

private:
    DatabaseRecord& record_;
};

} // namespace

RecordingDatabase::RecordingDatabase(platform::Database& database)
    : database_(database), record_(std::make_shared<DatabaseRecord>())
{
}

RecordingDatabase::~RecordingDatabase()
{
    EXPECT_TRUE(record_->failures.empty() && !record_->statement_failure && !record_->row_failure && !commit_stored_)
        << "A failure was planned and never came.";
}

void RecordingDatabase::fail_at(Operation operation, int call, platform::DatabaseErrorKind kind, std::string words)
{
    record_->failures[operation] = {call, kind, std::move(words)};
}

void RecordingDatabase::fail_at_statement(int call, platform::DatabaseErrorKind kind, std::string words)
{
    record_->statement_failure = {call, kind, std::move(words)};
}

void RecordingDatabase::fail_at_row(int row, platform::DatabaseErrorKind kind, std::string words)
{
    record_->row_failure = {row, kind, std::move(words)};
}

void RecordingDatabase::fail_commit(bool stored)
{
    commit_stored_ = stored;
}

void RecordingDatabase::at_each_call(std::function<void(Operation)> hook)
{
    record_->on_call = std::move(hook);
}

const std::vector<std::string>& RecordingDatabase::statements() const
{
    return record_->statements;
}

int RecordingDatabase::count(Operation operation) const
{
    const auto found = record_->counts.find(operation);
    return found == record_->counts.end() ? 0 : found->second;
}

int RecordingDatabase::statement_count() const
{
    return record_->statement_count;
}

int RecordingDatabase::transaction_depth() const
{
    return record_->transaction_depth;
}

int RecordingDatabase::open_recordsets() const
{
    return record_->open_recordsets;
}

void RecordingDatabase::forget()
{
    record_->statements.clear();
    record_->counts.clear();
    record_->statement_count = 0;
}

void RecordingDatabase::create(const std::string& path)
{
    record_->called(Operation::create);
    database_.create(path);
}

void RecordingDatabase::append_table(const platform::TableSchema& table)
{
    record_->called(Operation::append_table);
    database_.append_table(table);
}

void RecordingDatabase::finish_creation()
{
    record_->called(Operation::finish_creation);
    database_.finish_creation();
}

void RecordingDatabase::open(const std::string& path, std::span<const platform::TableSchema> expected)
{
    record_->called(Operation::open);
    database_.open(path, expected);
}

std::string RecordingDatabase::unstored() const
{
    return unstored_.empty() ? database_.unstored() : unstored_;
}

void RecordingDatabase::finish_check()
{
    if (const auto failure = std::exchange(check_failure_, std::nullopt))
        throw *failure;
    database_.finish_check();
}

void RecordingDatabase::fail_check(platform::DatabaseErrorKind kind, const std::string& words)
{
    check_failure_.emplace(kind, 0, words);
}

std::string RecordingDatabase::mark()
{
    return database_.mark();
}

std::unique_ptr<platform::CourseCopy> RecordingDatabase::begin_copy(const std::string& path,
                                                                    std::span<const platform::TableSchema> expected)
{
    record_->called(Operation::begin_copy);
    return std::make_unique<RecordingCopy>(database_.begin_copy(path, expected), record_);
}

void RecordingDatabase::close() noexcept
{
    record_->transaction_depth = 0;
    database_.close();
}

bool RecordingDatabase::is_open() const
{
    return database_.is_open();
}

std::unique_ptr<platform::Recordset> RecordingDatabase::open_recordset(std::string_view sql)
{
    record_->statements.emplace_back(sql);
    record_->called(Operation::open_recordset);
    return std::make_unique<RecordingRecordset>(database_.open_recordset(sql), record_);
}

void RecordingDatabase::begin()
{
    record_->called(Operation::begin);
    database_.begin();
    ++record_->transaction_depth;
}

void RecordingDatabase::commit()
{
    record_->called(Operation::commit);
    if (commit_stored_ && record_->transaction_depth == 1)
        end_with_error();
    database_.commit();
    --record_->transaction_depth;
}

void RecordingDatabase::rollback() noexcept
{
    database_.rollback();
    --record_->transaction_depth;
}

void RecordingDatabase::read(std::string_view sql, std::span<const platform::Value> values,
                             const platform::RowVisitor& visit)
{
    record_->statements.emplace_back(sql);
    record_->called(Operation::query);
    const RowsBeingRead reading(*record_);
    database_.query(sql, values, [&](const platform::Row& row) {
        DatabaseRecord::come_due(record_->row_failure);
        return visit(row);
    });
}

std::int64_t RecordingDatabase::write(std::string_view sql, std::span<const platform::Value> values)
{
    record_->statements.emplace_back(sql);
    record_->called(Operation::execute);
    return database_.execute(sql, values);
}

void RecordingDatabase::end_with_error()
{
    if (*std::exchange(commit_stored_, std::nullopt))
        database_.commit();
    else
        database_.rollback();
    throw platform::CommitError({platform::DatabaseErrorKind::input_output, 0, commit_words});
}

} // namespace cuedrill::fakes
