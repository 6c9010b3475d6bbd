#include "common/errors.h"
#include "exchange/question_import_fixture.h"

#include <csignal>
#include <filesystem>
#include <new>
#include <stdexcept>
#include <sys/resource.h>

namespace cuedrill::exchange {
namespace {

using fakes::Operation;
using platform::DatabaseErrorKind;

/// Whatever stops an import: what the box says to be stored is in the file, and nothing else.
class StoppedImport : public ImportFixture {
protected:
    void expect_stored(int count)
    {
        const Texts texts = stored();
        EXPECT_EQ(texts.size(), static_cast<std::size_t>(count));
        EXPECT_EQ(course.record_count, count);
        EXPECT_EQ(course.current_cnt, count);
        EXPECT_EQ(database.transaction_depth(), 0);
        EXPECT_TRUE(view.statuses.empty() || view.statuses.back().empty());
    }

    void expect_course_still_usable(int count)
    {
        database.commits_left.reset();
        EXPECT_TRUE(bank.Write_QA("afterwards", "a"));
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

// The calls of five records in one group: the group begins, each record begins and commits its part, the group commits.
TEST_P(FailingImport, tells_how_many_records_are_stored)
{
    const Failure& failure = GetParam();
    database.fail_at(failure.operation, failure.call, failure.kind, "It failed.");
    desktop.expect_box_like({.text = stopped("It failed.", failure.stored), .icon = platform::BoxIcon::exclamation},
                            platform::BoxAnswer::ok);
    import(records(5));
    expect_stored(failure.stored);
    expect_course_still_usable(failure.stored);
}

INSTANTIATE_TEST_SUITE_P(
    Steps, FailingImport,
    testing::Values(
        Failure{"full_at_the_first_record", Operation::execute, 1, DatabaseErrorKind::full, 0},
        Failure{"full_at_the_third_record", Operation::execute, 3, DatabaseErrorKind::full, 2},
        Failure{"input_output_at_the_last_record", Operation::execute, 5, DatabaseErrorKind::input_output, 4},
        Failure{"locked_at_the_beginning", Operation::begin, 1, DatabaseErrorKind::locked, 0},
        Failure{"at_the_beginning_of_the_second_record", Operation::begin, 3, DatabaseErrorKind::input_output, 1},
        Failure{"at_the_end_of_the_second_record", Operation::commit, 2, DatabaseErrorKind::full, 1},
        Failure{"passing_at_the_commit", Operation::commit, 6, DatabaseErrorKind::locked, 5}),
    [](const auto& failure) { return std::string(failure.param.name); });

TEST_F(StoppedImport, takes_a_group_back_that_cannot_be_committed)
{
    database.commits_left = 0;
    desktop.expect_box(stopped("The disk is full.", 0));
    import(records(5));
    expect_stored(0);
    EXPECT_TRUE(view.shown.empty());
    expect_course_still_usable(0);
}

TEST_F(StoppedImport, keeps_the_groups_that_were_committed)
{
    clock.step = 0.03; // two records to a group, but for the first
    database.commits_left = 2;
    desktop.expect_box(stopped("The disk is full.", 3));
    import(records(11));
    expect_stored(3);
    EXPECT_EQ(view.shown.back(), std::pair(common::Int16{3}, std::int64_t{3}));
    expect_course_still_usable(3);
}

TEST_F(StoppedImport, keeps_the_record_that_was_current_before)
{
    ASSERT_TRUE(bank.Write_QA("before", "a"));
    database.commits_left = 0;
    desktop.expect_box(stopped("The disk is full.", 0));
    import(records(5));
    EXPECT_EQ(course.current_cnt, 1);
    EXPECT_EQ(course.record_count, 1);
}

TEST_F(StoppedImport, goes_on_after_a_commit_that_reports_an_error_and_has_stored)
{
    clock.step = 0.125; // two records to a group
    database.fail_commit(true);
    desktop.expect_box(inserted(5));
    import(records(5));
    expect_stored(5);
}

TEST_F(StoppedImport, counts_nothing_of_a_group_that_is_not_stored)
{
    database.fail_commit(false);
    desktop.expect_box(stopped("The commit failed.", 0));
    import(records(5));
    expect_stored(0);
    expect_course_still_usable(0);
}

TEST_F(StoppedImport, says_of_how_many_records_nobody_can_tell_and_counts_them_later)
{
    database.fail_commit(true);
    database.fail_at(Operation::query, 6); // those before tell the numbers of the records
    desktop.expect_box(stopped("The commit failed. It is not known whether the change is stored, because the course "
                               "cannot be read again.",
                               0) +
                       " Of 5 more it is not known whether they are stored.");
    import(records(5));
    EXPECT_EQ(stored().size(), 5U);
    expect_course_still_usable(5);
}

TEST_F(StoppedImport, shows_no_message_about_a_record_before_what_came_before_is_stored)
{
    database.commits_left = 0;
    desktop.expect_box(stopped("The disk is full.", 0));
    import("@Q@ y @A@ z @Q@ @A@ v @Q@ x @A@ w");
    expect_stored(0);
}

TEST_F(StoppedImport, by_a_lack_of_memory_keeps_what_came_before_and_tells_how_much)
{
    database.at_each_call([this](Operation operation) {
        if (operation == Operation::execute && database.count(operation) == 3)
            throw std::bad_alloc();
    });
    desktop.expect_box_like({.text = stopped("There is not enough memory.", 2), .icon = platform::BoxIcon::exclamation},
                            platform::BoxAnswer::ok);
    import(records(5));
    database.at_each_call(nullptr);
    expect_stored(2);
    expect_course_still_usable(2);
}

TEST_F(StoppedImport, takes_back_what_a_lack_of_memory_keeps_from_being_committed)
{
    bool lacking = false;
    database.at_each_call([this, &lacking](Operation operation) {
        lacking = lacking || (operation == Operation::execute && database.count(operation) == 3);
        if (lacking)
            throw std::bad_alloc();
    });
    desktop.on_box = [this] { EXPECT_EQ(database.transaction_depth(), 0); };
    desktop.expect_box(stopped("There is not enough memory.", 0));
    import(records(5));
    database.at_each_call(nullptr);
    expect_stored(0);
    expect_course_still_usable(0);
}

TEST_F(StoppedImport, lists_what_was_refused_before)
{
    database.fail_at(Operation::execute, 2); // the refused record is not written
    desktop.expect_box(stopped("The disk is full.", 1));
    desktop.expect_box("Refused, and not stored: 1");
    import("@Q@ a @A@ b @Q@ " + std::string(201, 'q') + " @A@ b @Q@ c @A@ d");
    expect_stored(1);
}

TEST_F(StoppedImport, says_that_the_course_is_full)
{
    course.record_count = 32765;
    desktop.expect_box(stopped("The course is full: 32767 questions and answers are the most that it can hold.", 2));
    import(records(5));
    EXPECT_EQ(course.record_count, 32767);
    EXPECT_EQ(stored(), (Texts{{"q1", "a1"}, {"q2", "a2"}}));
}

TEST_F(StoppedImport, says_that_a_record_number_is_too_large)
{
    database.execute("Insert into qa (cnt) values (32766)");
    database.execute("Delete from qa");
    desktop.expect_box(stopped("Overflow: the record number 32768 is outside -32768 to 32767.", 1));
    import(records(5));
    EXPECT_EQ(stored(), (Texts{{"q1", "a1"}}));
}

TEST_F(StoppedImport, says_why_the_file_cannot_be_read)
{
    const std::string file = folder.file("gone.txt");
    desktop.on_box = [&] {
        const std::string& text = desktop.boxes.back().text;
        EXPECT_NE(text.find(file), std::string::npos) << text;
        desktop.expect_box(text);
        EXPECT_TRUE(text.ends_with("\r\n\r\n0 questions and answers are stored.")) << text;
    };
    question_import.import_file(file);
    EXPECT_EQ(desktop.boxes.size(), 1U);
}

TEST_F(StoppedImport, refuses_a_file_beyond_its_limit)
{
    const std::string file = folder.write("huge.txt", "@Q@ a @A@ b");
    std::filesystem::resize_file(file, 64ULL * 1024 * 1024 + 1); // takes no room on the disk
    desktop.on_box = [&] {
        const std::string& text = desktop.boxes.back().text;
        EXPECT_NE(text.find("it is longer than 67108864 bytes"), std::string::npos) << text;
        desktop.expect_box(text);
    };
    question_import.import_file(file);
    EXPECT_EQ(desktop.boxes.size(), 1U);
    expect_stored(0);
}

TEST_F(StoppedImport, refuses_utf16)
{
    desktop.expect_box(
        stopped("The file is encoded as UTF-16. Save it as UTF-8 or Windows-1252 and import it again.", 0));
    import(std::string_view("\xFF\xFE@\0Q\0", 6));
}

TEST_F(StoppedImport, waits_for_a_course_that_another_program_writes_and_then_gives_up)
{
    platform::sqlite::SqliteDatabase impatient(engine.text_compare, std::chrono::milliseconds(1));
    store::Course locked{impatient};
    locked.db_path = path;
    locked.apri_db();
    locked.set_side_fields();
    bank::RecordBank locked_bank{locked, flags, desktop};
    QuestionImport into_locked{locked, locked_bank, flags, view, view, {files, clock, desktop, engine.text_compare}};
    platform::Transaction other(engine.database);
    desktop.on_box = nullptr;
    desktop.expect_box(stopped("Another program is using it.", 0));
    into_locked.import_file(folder.write("questions.txt", records(5)));
    EXPECT_EQ(locked.record_count, 0);
}

/// A limit of the size of every file that this process writes, as a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(std::uintmax_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        m_signal_before = std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit = m_before;
        limit.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_signal_before);
    }

private:
    rlimit m_before{};
    void (*m_signal_before)(int) = nullptr;
};

// With a real lack of room the engine takes back more than the statement that failed: all of the transaction.
TEST_F(StoppedImport, on_a_disk_that_fills_up_keeps_exactly_what_it_says)
{
    const std::string file = folder.write("questions.txt", records(3000));
    clock.step = 0.01;
    desktop.on_box = [this] {
        EXPECT_EQ(database.transaction_depth(), 0);
        desktop.expect_box(stopped("A file would become larger than the system allows.", course.record_count));
    };
    {
        const FileSizeLimit limit(std::filesystem::file_size(path) + 40000);
        question_import.import_file(file);
    }
    EXPECT_EQ(desktop.boxes.size(), 1U);
    const Texts texts = stored();
    EXPECT_EQ(texts.size(), static_cast<std::size_t>(course.record_count));
    EXPECT_GT(texts.size(), 0U);
    EXPECT_LT(texts.size(), 3000U);
    EXPECT_TRUE(bank.Write_QA("afterwards", "a"));
}

class EndedImport : public StoppedImport {
protected:
    void end_at_once()
    {
        course.close();
        throw common::ProgramEnded{};
    }
};

TEST_F(EndedImport, at_the_pump_keeps_what_was_committed)
{
    clock.step = 0.03;
    desktop.on_pump = [this] {
        if (course.record_count == 3)
            end_at_once();
    };
    EXPECT_THROW(import(records(8)), common::ProgramEnded);
    EXPECT_EQ(stored().size(), 3U);
    EXPECT_EQ(database.transaction_depth(), 0);
}

TEST_F(EndedImport, at_a_box_keeps_what_came_before)
{
    desktop.on_box = [this] { end_at_once(); };
    EXPECT_THROW(import("@Q@ y @A@ z @Q@ @A@ v @Q@ x @A@ w"), common::ProgramEnded);
    EXPECT_EQ(stored(), (Texts{{"y", "z"}}));
}

TEST_F(EndedImport, by_an_unforeseen_error_leaves_no_transaction_open)
{
    struct Broken : SteppingClock {
        mutable int reads = 0;
        [[nodiscard]] double steady_seconds() const override { return ++reads < 3 ? 0 : throw std::logic_error("x"); }
    } broken;
    QuestionImport unlucky{course, bank, flags, view, view, {files, broken, desktop, engine.text_compare}};
    EXPECT_THROW(unlucky.import_file(folder.write("questions.txt", records(5))), std::logic_error);
    EXPECT_EQ(database.transaction_depth(), 0);
    EXPECT_EQ(course.record_count, 0);
    EXPECT_EQ(course.current_cnt, 0);
    EXPECT_TRUE(stored().empty());
    EXPECT_TRUE(bank.Write_QA("afterwards", "a"));
}

} // namespace
} // namespace cuedrill::exchange
