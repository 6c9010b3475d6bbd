#include "common/errors.h"
#include "exchange/importer_fixture.h"
#include "fakes/file_size_limit.h"
#include "platform/sqlite/sqlite_database.h"

#include <filesystem>
#include <new>
#include <stdexcept>

namespace cuedrill::exchange {
namespace {

using fakes::Operation;
using platform::DatabaseErrorKind;

/// Whatever stops an import, the file has exactly the records that the import counts as stored.
class StoppedImport : public ImportFixture {
protected:
    /// Expects only these records in the course, and the course still usable.
    void expect_stored(const Outcome& outcome, int count)
    {
        EXPECT_EQ(outcome.progress.stored, count);
        EXPECT_EQ(outcome.progress.last_cnt, count);
        EXPECT_EQ(outcome.progress.unknown, 0);
        EXPECT_EQ(stored().size(), static_cast<std::size_t>(count));
        EXPECT_EQ(course.record_count, count);
        expect_course_still_usable(count);
    }

    void expect_course_still_usable(int count)
    {
        database.commits_left.reset();
        EXPECT_EQ(bank.insert_record("afterwards", "a"), count + 1);
        EXPECT_EQ(course.record_count, count + 1);
    }
};

struct Failure {
    const char* name;
    Operation operation;
    int call;
    DatabaseErrorKind kind;
    int stored;
};

class FailingImport : public StoppedImport, public testing::WithParamInterface<Failure> {};

// The calls for five records in one group: it begins, each record is one execution, and it commits.
TEST_P(FailingImport, tells_how_many_records_are_stored)
{
    const Failure& failure = GetParam();
    database.fail_at(failure.operation, failure.call, failure.kind, "It failed.");
    const Outcome outcome = import(records(5));
    EXPECT_EQ(outcome.failure, "It failed.");
    expect_stored(outcome, failure.stored);
}

INSTANTIATE_TEST_SUITE_P(
    Steps, FailingImport,
    testing::Values(Failure{"full_at_the_first_record", Operation::execute, 1, DatabaseErrorKind::full, 0},
                    Failure{"full_at_the_third_record", Operation::execute, 3, DatabaseErrorKind::full, 2},
                    Failure{"input_output_at_the_last_record", Operation::execute, 5, DatabaseErrorKind::input_output,
                            4},
                    Failure{"locked_at_the_beginning", Operation::begin, 1, DatabaseErrorKind::locked, 0},
                    Failure{"before_the_first_number", Operation::query, 1, DatabaseErrorKind::input_output, 0},
                    Failure{"passing_at_the_commit", Operation::commit, 1, DatabaseErrorKind::locked, 5}),
    [](const auto& failure) { return std::string(failure.param.name); });

TEST_F(StoppedImport, takes_a_group_back_that_cannot_be_committed)
{
    database.commits_left = 0;
    const Outcome outcome = import(records(5));
    EXPECT_EQ(outcome.failure, "The disk is full.");
    expect_stored(outcome, 0);
}

TEST_F(StoppedImport, keeps_the_groups_that_were_committed)
{
    clock.step = 0.03; // two records per group, except the first
    database.commits_left = 2;
    const Outcome outcome = import(records(11));
    EXPECT_EQ(outcome.failure, "The disk is full.");
    expect_stored(outcome, 3);
}

TEST_F(StoppedImport, keeps_what_was_there_before)
{
    ASSERT_EQ(bank.insert_record("before", "a"), 1);
    database.commits_left = 0;
    EXPECT_EQ(import(records(5)).progress.last_cnt, 0);
    EXPECT_EQ(course.record_count, 1);
}

TEST_F(StoppedImport, is_not_stopped_by_a_commit_that_reports_an_error_and_has_stored)
{
    clock.step = 0.125;
    database.fail_commit(true);
    const Outcome outcome = import(records(5));
    EXPECT_EQ(outcome.failure, "");
    expect_stored(outcome, 5);
}

TEST_F(StoppedImport, counts_nothing_of_a_group_that_is_not_stored)
{
    database.fail_commit(false);
    const Outcome outcome = import(records(5));
    EXPECT_EQ(outcome.failure, "The commit failed.");
    expect_stored(outcome, 0);
}

/// Proves that the group is looked up on the side on which it was stored, and counted even after the import is gone.
TEST_F(StoppedImport, says_of_how_many_records_nobody_can_tell_and_counts_them_later)
{
    database.fail_commit(true);
    database.fail_at(Operation::query, 2); // the one before it gives the first number
    const Outcome outcome = import(records(5));
    EXPECT_EQ(outcome.failure,
              "The commit failed. It is not known whether the change is stored, because the course cannot be read "
              "again.");
    EXPECT_EQ(outcome.progress.stored, 0);
    EXPECT_EQ(outcome.progress.unknown, 5);
    EXPECT_EQ(course.record_count, 0);
    EXPECT_EQ(stored().size(), 5U);
    course.params.invert = true;
    course.set_side_fields();
    expect_course_still_usable(5);
}

TEST_F(StoppedImport, tells_nothing_of_a_record_before_what_came_before_is_stored)
{
    database.commits_left = 0;
    const Outcome outcome = import("@Q@ y @A@ z @Q@ @A@ v @Q@ x @A@ w");
    EXPECT_EQ(outcome.failure, "The disk is full.");
    EXPECT_TRUE(outcome.empty.empty());
    EXPECT_FALSE(outcome.progress.empty);
    expect_stored(outcome, 0);
}

TEST_F(StoppedImport, by_a_lack_of_memory_keeps_what_came_before_and_tells_how_much)
{
    database.at_each_call([this](Operation operation) {
        if (operation == Operation::execute && database.count(operation) == 3)
            throw std::bad_alloc();
    });
    const Outcome outcome = import(records(5));
    database.at_each_call(nullptr);
    EXPECT_EQ(outcome.failure, "There is not enough memory.");
    expect_stored(outcome, 2);
}

TEST_F(StoppedImport, takes_back_what_a_lack_of_memory_keeps_from_being_committed)
{
    bool lacking = false;
    database.at_each_call([this, &lacking](Operation operation) {
        lacking = lacking || (operation == Operation::execute && database.count(operation) == 3);
        if (lacking)
            throw std::bad_alloc();
    });
    const Outcome outcome = import(records(5));
    database.at_each_call(nullptr);
    EXPECT_EQ(outcome.failure, "There is not enough memory.");
    expect_stored(outcome, 0);
}

TEST_F(StoppedImport, lists_what_was_refused_before)
{
    database.fail_at(Operation::execute, 2); // the refused record is not written
    const Outcome outcome = import("@Q@ a @A@ b @Q@ " + std::string(201, 'q') + " @A@ b @Q@ c @A@ d");
    EXPECT_EQ(outcome.failure, "The disk is full.");
    EXPECT_EQ(outcome.summary, "Refused, and not stored: 1");
    expect_stored(outcome, 1);
}

TEST_F(StoppedImport, says_that_the_course_is_full)
{
    course.record_count = 32765;
    const Outcome outcome = import(records(5));
    EXPECT_EQ(outcome.failure, "The course is full: 32767 questions and answers are the most that it can hold.");
    EXPECT_EQ(outcome.progress.stored, 2);
    EXPECT_EQ(course.record_count, 32767);
    EXPECT_EQ(stored(), (Texts{{"q1", "a1"}, {"q2", "a2"}}));
}

TEST_F(StoppedImport, says_that_a_record_number_is_too_large)
{
    database.execute("Insert into qa (cnt) values (32764)");
    database.execute("Delete from qa");
    const Outcome outcome = import(records(5));
    EXPECT_EQ(outcome.failure, "Overflow: the record number 32768 is outside -32768 to 32767.");
    EXPECT_EQ(outcome.progress.stored, 3);
    EXPECT_EQ(outcome.progress.last_cnt, 32767);
    EXPECT_EQ(course.record_count, 3);
    EXPECT_EQ(stored(), (Texts{{"q1", "a1"}, {"q2", "a2"}, {"q3", "a3"}}));
}

TEST_F(StoppedImport, says_why_the_file_cannot_be_read)
{
    const std::string file = folder.file("gone.txt");
    const Outcome outcome = import_file(file);
    EXPECT_NE(outcome.failure.find(file), std::string::npos) << outcome.failure;
    expect_stored(outcome, 0);
}

TEST_F(StoppedImport, refuses_a_file_beyond_its_limit)
{
    const std::string file = folder.write("huge.txt", "@Q@ a @A@ b");
    std::filesystem::resize_file(file, 64ULL * 1024 * 1024 + 1); // sparse: takes no room on the disk
    const Outcome outcome = import_file(file);
    EXPECT_NE(outcome.failure.find("it is longer than 67108864 bytes"), std::string::npos) << outcome.failure;
    expect_stored(outcome, 0);
}

TEST_F(StoppedImport, refuses_utf16)
{
    const Outcome outcome = import(std::string_view("\xFF\xFE@\0Q\0", 6));
    EXPECT_EQ(outcome.failure, "The file is encoded as UTF-16. Save it as UTF-8 or Windows-1252 and import it again.");
    expect_stored(outcome, 0);
}

TEST_F(StoppedImport, waits_for_a_course_that_another_program_writes_and_then_gives_up)
{
    platform::sqlite::SqliteDatabase impatient(engine.text_compare, std::chrono::milliseconds(1));
    store::Course locked{impatient};
    locked.db_path = path;
    locked.apri_db();
    locked.set_side_fields();
    Importer importer(locked, files, clock, engine.text_compare, folder.write("questions.txt", records(5)));
    const platform::Transaction other(engine.database);
    try {
        importer.step(Importer::usual_step);
        FAIL() << "not stopped";
    } catch (const common::Error& error) {
        EXPECT_STREQ(error.what(), "Another program is using it.");
    }
    EXPECT_EQ(importer.progress().stored, 0);
    EXPECT_EQ(locked.record_count, 0);
}

// When the disk is really full, the engine rolls back the whole transaction, not only the failed statement.
TEST_F(StoppedImport, on_a_disk_that_fills_up_keeps_exactly_what_it_says)
{
    const std::string file = folder.write("questions.txt", records(3000));
    clock.step = 0.01;
    Outcome outcome;
    {
        const fakes::FileSizeLimit limit(std::filesystem::file_size(path) + 40000);
        outcome = import_file(file);
    }
    EXPECT_EQ(outcome.failure, "A file would become larger than the system allows.");
    const auto count = static_cast<int>(stored().size());
    EXPECT_GT(count, 0);
    EXPECT_LT(count, 3000);
    expect_stored(outcome, count);
}

class EndedImport : public StoppedImport {};

TEST_F(EndedImport, between_two_steps_keeps_what_was_committed)
{
    clock.step = 0.03;
    after_step = [this] {
        if (course.record_count == 3) {
            course.close();
            throw common::ProgramEnded{};
        }
    };
    EXPECT_THROW(import(records(8)), common::ProgramEnded);
    EXPECT_EQ(stored().size(), 3U);
    expect_nothing_open();
}

TEST_F(EndedImport, by_an_unforeseen_error_leaves_no_transaction_open)
{
    /// Throws when two records have been stored.
    struct Broken : fakes::FakeClock {
        explicit Broken(const FillingDisk& written) : database(written) {}

        [[nodiscard]] double steady_seconds() const override
        {
            return database.count(Operation::execute) < 2 ? 0 : throw std::logic_error("x");
        }

        const FillingDisk& database;
    } broken(database);
    const std::string file = folder.write("questions.txt", records(5));
    {
        Importer unlucky(course, files, broken, engine.text_compare, file);
        EXPECT_THROW(unlucky.step(Importer::usual_step), std::logic_error);
        EXPECT_EQ(database.transaction_depth(), 1);
    }
    expect_nothing_open();
    EXPECT_EQ(course.record_count, 0);
    EXPECT_TRUE(stored().empty());
    expect_course_still_usable(0);
}

} // namespace
} // namespace cuedrill::exchange
