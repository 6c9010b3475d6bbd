#include "bank/new_records.h"
#include "common/errors.h"
#include "fakes/course_builder.h"
#include "fakes/recording_database.h"
#include "fakes/temp_folder.h"

#include <gtest/gtest.h>
#include <memory>
#include <sqlite3.h>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace cuedrill::bank {
namespace {

using fakes::Operation;
using platform::DatabaseErrorKind;

/// Runs a statement through another connection, as another program would.
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
        EXPECT_EQ(database.transaction_depth(), 0);
    }

    /// Adds one record and stores it.
    std::variant<common::Int16, Refusal> write_alone(const std::string& question, const std::string& answer)
    {
        NewRecords records(course);
        auto written = records.Write_QA(question, answer);
        records.commit();
        return written;
    }

    /// The number of the stored record; 0 if it was refused.
    common::Int16 write(const std::string& question, const std::string& answer)
    {
        const auto written = write_alone(question, answer);
        const auto* cnt = std::get_if<common::Int16>(&written);
        return cnt == nullptr ? common::Int16{0} : *cnt;
    }

    /// Why the record is refused; empty if it is stored.
    std::string refusal(const std::string& question, const std::string& answer)
    {
        const auto written = write_alone(question, answer);
        const auto* refused = std::get_if<Refusal>(&written);
        return refused == nullptr ? std::string() : refused->words;
    }

    static std::string repeated(const char* character, int times)
    {
        std::string text;
        for (int i = 0; i < times; ++i)
            text += character;
        return text;
    }

    fakes::TempFolder folder;
    fakes::RealEngine engine;
    fakes::RecordingDatabase database{engine.database};
    fakes::CourseBuilder builder;
    store::Course course{database};
    std::string path;
};

TEST_F(WriteQa, stores_a_record_without_a_history)
{
    EXPECT_NE(write("France?", "Paris"), 0);
    const fakes::SideRow never_tested{0, 0, 0, std::nullopt, std::nullopt};
    EXPECT_EQ(stored().qa, (std::vector<fakes::QaRow>{{1, "France?", "Paris", never_tested, never_tested}}));
}

TEST_F(WriteQa, gives_the_number_of_the_new_record)
{
    EXPECT_EQ(write("France?", "Paris"), 1);
    EXPECT_EQ(write("Italy?", "Rome"), 2);
    EXPECT_EQ(course.record_count, 2);
}

TEST_F(WriteQa, is_durable_when_it_returns)
{
    ASSERT_NE(write("France?", "Paris"), 0);
    EXPECT_EQ(database.transaction_depth(), 0);
    EXPECT_EQ(stored().qa.size(), 1U);
}

TEST_F(WriteQa, refuses_an_empty_question)
{
    EXPECT_EQ(refusal("", ""), "Question empty. Record not inserted.");
    expect_nothing_stored();
}

TEST_F(WriteQa, refuses_an_empty_answer)
{
    EXPECT_EQ(refusal("France?", ""), "Answer empty. Record not inserted.");
    expect_nothing_stored();
}

TEST_F(WriteQa, takes_texts_of_200_characters)
{
    EXPECT_NE(write(repeated("q", 200), repeated("a", 200)), 0);
    EXPECT_NE(write(repeated("é", 200), repeated("\U0001F426", 200)), 0) << "characters, not bytes";
    EXPECT_EQ(stored().qa.at(1).a, repeated("\U0001F426", 200));
}

TEST_F(WriteQa, refuses_texts_of_201_characters_in_words_for_the_user)
{
    EXPECT_EQ(refusal(repeated("q", 201), "a"), "The question has 201 characters; 200 fit.");
    EXPECT_EQ(refusal("q", repeated("é", 201)), "The answer has 201 characters; 200 fit.");
    expect_nothing_stored();
}

TEST_F(WriteQa, goes_on_after_a_refusal)
{
    ASSERT_EQ(write(repeated("q", 201), "a"), 0);
    EXPECT_EQ(write("France?", "Paris"), 1);
    EXPECT_EQ(stored().qa.size(), 1U);
}

TEST_F(WriteQa, takes_a_question_that_is_there_already)
{
    EXPECT_EQ(write("France?", "Paris"), 1);
    EXPECT_EQ(write("france?", "Lyon"), 2);
    EXPECT_EQ(write("France?", "Paris"), 3) << "the new record, not the first of the same text";
    EXPECT_EQ(stored().qa.size(), 3U);
}

// The file has the columns and the index of a course, except that the index is unique.
TEST_F(WriteQa, tells_that_a_course_with_a_stricter_index_has_refused_the_record)
{
    reopen_after("Drop index qa_q; Create unique index qa_q on qa (q)");
    ASSERT_NE(write("France?", "Paris"), 0);
    EXPECT_EQ(refusal("France?", "Lyon"), "There is already a row with this value in column q.");
    EXPECT_EQ(course.record_count, 1);
    EXPECT_EQ(stored().qa.size(), 1U);
    EXPECT_EQ(database.transaction_depth(), 0);
}

TEST_F(WriteQa, puts_the_question_on_the_asked_side_of_an_inverted_course)
{
    course.params.invert = true;
    course.set_side_fields();
    ASSERT_NE(write("France?", "Paris"), 0);
    const fakes::QaRow row = stored().qa.at(0);
    EXPECT_EQ(row.q, "Paris");
    EXPECT_EQ(row.a, "France?");
    EXPECT_EQ(row.q_side.successes, 0);
    EXPECT_EQ(row.a_side.successes, 0);
}

TEST_F(WriteQa, fills_the_course_up_to_32767_records)
{
    course.record_count = 32766;
    EXPECT_NE(write("last", "a"), 0);
    EXPECT_EQ(course.record_count, 32767);
    try {
        static_cast<void>(write_alone("one more", "a"));
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
    EXPECT_EQ(write("last", "a"), 32767);
    EXPECT_THROW(static_cast<void>(write_alone("one more", "a")), common::OverflowError);
    EXPECT_EQ(stored().qa.size(), 1U);
    EXPECT_EQ(course.record_count, 1);
    EXPECT_EQ(database.transaction_depth(), 0);
}

class FailingStore : public WriteQa, public testing::WithParamInterface<Operation> {};

TEST_P(FailingStore, leaves_nothing_behind_and_may_be_repeated)
{
    database.fail_at(GetParam(), 1, DatabaseErrorKind::full);
    EXPECT_THROW(static_cast<void>(write_alone("France?", "Paris")), platform::DatabaseError);
    expect_nothing_stored();
    EXPECT_NE(write("France?", "Paris"), 0);
    EXPECT_EQ(stored().qa.size(), 1U);
    EXPECT_EQ(course.record_count, 1);
}

INSTANTIATE_TEST_SUITE_P(Steps, FailingStore, testing::Values(Operation::begin, Operation::execute, Operation::commit));

class SeveralNewRecords : public WriteQa {
protected:
    [[nodiscard]] std::vector<std::pair<int, std::string>> numbers_and_questions() const
    {
        std::vector<std::pair<int, std::string>> found;
        for (const fakes::QaRow& row : stored().qa)
            found.emplace_back(row.cnt, row.q);
        return found;
    }
};

TEST_F(SeveralNewRecords, are_stored_by_the_commit_and_counted_from_then_on)
{
    NewRecords records(course);
    EXPECT_EQ(records.add("France?", "Paris"), 1);
    EXPECT_EQ(records.add("Italy?", "Rome"), 2);
    EXPECT_EQ(course.record_count, 0);
    records.commit();
    EXPECT_EQ(numbers_and_questions(), (std::vector<std::pair<int, std::string>>{{1, "France?"}, {2, "Italy?"}}));
    EXPECT_EQ(course.record_count, 2);
    EXPECT_EQ(records.count(), 2);
    EXPECT_EQ(records.last_cnt(), 2);
}

TEST_F(SeveralNewRecords, go_with_the_transaction_that_is_not_committed)
{
    {
        NewRecords records(course);
        records.add("France?", "Paris");
    }
    expect_nothing_stored();
    EXPECT_EQ(write("Italy?", "Rome"), 1);
}

TEST_F(SeveralNewRecords, may_be_none)
{
    NewRecords records(course);
    EXPECT_EQ(records.last_cnt(), 0);
    records.commit();
    expect_nothing_stored();
}

TEST_F(SeveralNewRecords, are_numbered_without_a_gap_where_one_is_refused)
{
    reopen_after("Drop index qa_q; Create unique index qa_q on qa (q)");
    NewRecords records(course);
    records.add("France?", "Paris");
    for (const auto& [question, answer] : {std::pair<std::string, std::string>{repeated("q", 201), "a"},
                                           std::pair<std::string, std::string>{"France?", "Lyon"}})
        EXPECT_TRUE(std::holds_alternative<Refusal>(records.Write_QA(question, answer)));
    records.add("Italy?", "Rome");
    records.commit();
    EXPECT_EQ(numbers_and_questions(), (std::vector<std::pair<int, std::string>>{{1, "France?"}, {2, "Italy?"}}));
    EXPECT_EQ(course.record_count, 2);
}

TEST_F(SeveralNewRecords, get_numbers_above_that_of_a_deleted_one)
{
    reopen_after("Insert into qa (cnt, q) values (5, 'x'), (9, 'x'); Delete from qa where cnt=9");
    NewRecords records(course);
    EXPECT_EQ(records.add("France?", "Paris"), 10);
    EXPECT_EQ(records.add("Italy?", "Rome"), 11);
    records.commit();
    EXPECT_EQ(stored().qa.size(), 3U);
}

TEST_F(SeveralNewRecords, keep_those_before_a_number_beyond_16_bits)
{
    reopen_after("Insert into qa (cnt, q) values (32765, 'x'); Delete from qa");
    NewRecords records(course);
    records.add("France?", "Paris");
    records.add("Italy?", "Rome");
    EXPECT_THROW(records.add("Spain?", "Madrid"), common::OverflowError);
    EXPECT_EQ(std::get<Refusal>(records.Write_QA(repeated("q", 201), "a")).words,
              "The question has 201 characters; 200 fit.");
    records.commit();
    EXPECT_EQ(numbers_and_questions(),
              (std::vector<std::pair<int, std::string>>{{32766, "France?"}, {32767, "Italy?"}}));
    EXPECT_EQ(course.record_count, 2);
}

TEST_F(SeveralNewRecords, of_unknown_outcome_are_counted_when_they_turn_out_to_be_stored)
{
    int told = 0;
    {
        NewRecords records(course);
        records.add("France?", "Paris");
        records.add("Italy?", "Rome");
        database.fail_commit(true);
        database.fail_at(Operation::query);
        EXPECT_THROW(records.commit([&told] { ++told; }), store::OutcomeUnknown);
    }
    EXPECT_EQ(course.record_count, 0);
    EXPECT_EQ(told, 0);
    store::settle(course);
    EXPECT_EQ(course.record_count, 2);
    EXPECT_EQ(told, 1);
}

} // namespace
} // namespace cuedrill::bank
