#include "bank/record_bank.h"
#include "common/errors.h"
#include "fakes/course_builder.h"
#include "fakes/fake_desktop.h"
#include "fakes/recording_database.h"
#include "fakes/temp_folder.h"

#include <gtest/gtest.h>
#include <memory>
#include <sqlite3.h>
#include <stdexcept>
#include <string>

namespace cuedrill::bank {
namespace {

using fakes::Operation;
using platform::DatabaseErrorKind;

/// Runs a statement as another program would that knows nothing of this one.
void run_elsewhere(const std::string& path, const char* sql)
{
    sqlite3* handle = nullptr;
    sqlite3_open(path.c_str(), &handle);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> closed_at_exit(handle, sqlite3_close);
    const auto compare = [](void*, int a_size, const void* a, int b_size, const void* b) {
        return std::string_view(static_cast<const char*>(a), static_cast<std::size_t>(a_size))
            .compare(std::string_view(static_cast<const char*>(b), static_cast<std::size_t>(b_size)));
    };
    sqlite3_create_collation(handle, "CUEDRILL", SQLITE_UTF8, nullptr, compare);
    if (sqlite3_exec(handle, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(handle));
}

class WriteQa : public testing::Test {
protected:
    void SetUp() override
    {
        path = builder.write(folder);
        open();
    }

    void open()
    {
        course.db_path = path;
        course.apri_db();
        course.set_side_fields();
        course.record_count = course.count_records();
    }

    void reopen_after(const char* sql)
    {
        course.close();
        run_elsewhere(path, sql);
        open();
    }

    [[nodiscard]] fakes::CourseContents stored() const { return fakes::read_course(path); }

    void expect_nothing_stored() const
    {
        EXPECT_TRUE(stored().qa.empty());
        EXPECT_EQ(course.record_count, 0);
        EXPECT_EQ(course.current_cnt, 0);
        EXPECT_EQ(database.transaction_depth(), 0);
    }

    static std::string repeated(const char* character, int times)
    {
        std::string text;
        for (int i = 0; i < times; ++i)
            text += character;
        return text;
    }

    fakes::TempFolder folder;
    fakes::FakeDesktop desktop;
    fakes::RealEngine engine;
    fakes::RecordingDatabase database{engine.database};
    fakes::CourseBuilder builder;
    store::Course course{database};
    EditFlags flags;
    RecordBank bank{course, flags, desktop};
    std::string path;
};

TEST_F(WriteQa, stores_a_record_without_a_history)
{
    EXPECT_TRUE(bank.Write_QA("France?", "Paris"));
    const fakes::SideRow never_tested{0, 0, 0, std::nullopt, std::nullopt};
    EXPECT_EQ(stored().qa, (std::vector<fakes::QaRow>{{1, "France?", "Paris", never_tested, never_tested}}));
}

TEST_F(WriteQa, makes_the_new_record_the_current_one)
{
    flags.new_mode = true;
    ASSERT_TRUE(bank.Write_QA("France?", "Paris"));
    ASSERT_TRUE(bank.Write_QA("Italy?", "Rome"));
    EXPECT_EQ(course.current_cnt, 2);
    EXPECT_EQ(course.record_count, 2);
    EXPECT_FALSE(flags.editing());
}

TEST_F(WriteQa, is_durable_when_it_returns)
{
    ASSERT_TRUE(bank.Write_QA("France?", "Paris"));
    EXPECT_EQ(database.transaction_depth(), 0);
    EXPECT_EQ(stored().qa.size(), 1U);
}

TEST_F(WriteQa, refuses_an_empty_question)
{
    desktop.expect_box_like({.text = "Question empty. Record not inserted."}, platform::BoxAnswer::ok);
    EXPECT_FALSE(bank.Write_QA("", ""));
    expect_nothing_stored();
    EXPECT_EQ(bank.last_refusal(), "Question empty. Record not inserted.");
}

TEST_F(WriteQa, refuses_an_empty_answer)
{
    desktop.expect_box_like({.text = "Answer empty. Record not inserted."}, platform::BoxAnswer::ok);
    EXPECT_FALSE(bank.Write_QA("France?", ""));
    expect_nothing_stored();
    EXPECT_EQ(bank.last_refusal(), "Answer empty. Record not inserted.");
}

TEST_F(WriteQa, takes_texts_of_200_characters)
{
    EXPECT_TRUE(bank.Write_QA(repeated("q", 200), repeated("a", 200)));
    EXPECT_TRUE(bank.Write_QA(repeated("é", 200), repeated("\U0001F426", 200))) << "characters, not bytes";
    EXPECT_EQ(stored().qa.at(1).a, repeated("\U0001F426", 200));
}

TEST_F(WriteQa, refuses_texts_of_201_characters_in_words_for_the_user)
{
    EXPECT_FALSE(bank.Write_QA(repeated("q", 201), "a"));
    EXPECT_EQ(bank.last_refusal(), "The question has 201 characters; 200 fit.");
    EXPECT_FALSE(bank.Write_QA("q", repeated("é", 201)));
    EXPECT_EQ(bank.last_refusal(), "The answer has 201 characters; 200 fit.");
    expect_nothing_stored();
}

TEST_F(WriteQa, goes_on_after_a_refusal)
{
    ASSERT_FALSE(bank.Write_QA(repeated("q", 201), "a"));
    EXPECT_TRUE(bank.Write_QA("France?", "Paris"));
    EXPECT_EQ(bank.last_refusal(), "");
    EXPECT_EQ(stored().qa.size(), 1U);
}

TEST_F(WriteQa, takes_a_question_that_is_there_already)
{
    EXPECT_TRUE(bank.Write_QA("France?", "Paris"));
    EXPECT_TRUE(bank.Write_QA("france?", "Lyon"));
    EXPECT_TRUE(bank.Write_QA("France?", "Paris"));
    EXPECT_EQ(course.current_cnt, 3) << "the new record, not the first of the same text";
    EXPECT_EQ(stored().qa.size(), 3U);
}

// The columns and the index of the file are those of this program, only that the index tolerates no repetition.
TEST_F(WriteQa, tells_that_a_course_with_a_stricter_index_has_refused_the_record)
{
    reopen_after("Drop index qa_q; Create unique index qa_q on qa (q)");
    ASSERT_TRUE(bank.Write_QA("France?", "Paris"));
    EXPECT_FALSE(bank.Write_QA("France?", "Lyon"));
    EXPECT_EQ(bank.last_refusal(), "There is already a row with this value in column q.");
    EXPECT_EQ(course.record_count, 1);
    EXPECT_EQ(course.current_cnt, 1);
    EXPECT_EQ(stored().qa.size(), 1U);
    EXPECT_EQ(database.transaction_depth(), 0);
}

TEST_F(WriteQa, puts_the_question_on_the_asked_side_of_an_inverted_course)
{
    course.params.invert = true;
    course.set_side_fields();
    ASSERT_TRUE(bank.Write_QA("France?", "Paris"));
    const fakes::QaRow row = stored().qa.at(0);
    EXPECT_EQ(row.q, "Paris");
    EXPECT_EQ(row.a, "France?");
    EXPECT_EQ(row.q_side.successes, 0);
    EXPECT_EQ(row.a_side.successes, 0);
}

TEST_F(WriteQa, fills_the_course_up_to_32767_records)
{
    course.record_count = 32766;
    EXPECT_TRUE(bank.Write_QA("last", "a"));
    EXPECT_EQ(course.record_count, 32767);
    try {
        static_cast<void>(bank.Write_QA("one more", "a"));
        FAIL() << "not refused";
    } catch (const common::OverflowError& error) {
        EXPECT_STREQ(error.what(), "The course is full: 32767 questions and answers are the most that it can hold.");
    }
    EXPECT_EQ(course.record_count, 32767);
    EXPECT_EQ(stored().qa.size(), 1U);
}

TEST_F(WriteQa, stores_nothing_under_a_number_beyond_16_bits)
{
    reopen_after("Insert into qa (cnt, q) values (32766, 'x'); Delete from qa");
    EXPECT_TRUE(bank.Write_QA("last", "a"));
    EXPECT_EQ(course.current_cnt, 32767);
    EXPECT_THROW(static_cast<void>(bank.Write_QA("one more", "a")), common::OverflowError);
    EXPECT_EQ(stored().qa.size(), 1U);
    EXPECT_EQ(course.record_count, 1);
    EXPECT_EQ(course.current_cnt, 32767);
    EXPECT_EQ(database.transaction_depth(), 0);
}

class FailingStore : public WriteQa, public testing::WithParamInterface<Operation> {};

TEST_P(FailingStore, leaves_nothing_behind_and_may_be_repeated)
{
    database.fail_at(GetParam(), 1, DatabaseErrorKind::full);
    EXPECT_THROW(static_cast<void>(bank.Write_QA("France?", "Paris")), platform::DatabaseError);
    expect_nothing_stored();
    EXPECT_TRUE(bank.Write_QA("France?", "Paris"));
    EXPECT_EQ(stored().qa.size(), 1U);
    EXPECT_EQ(course.record_count, 1);
}

INSTANTIATE_TEST_SUITE_P(Steps, FailingStore, testing::Values(Operation::begin, Operation::execute, Operation::commit));

} // namespace
} // namespace cuedrill::bank
