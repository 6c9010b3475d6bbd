#include "bank/question_list.h"
#include "common/errors.h"
#include "lists_fixture.h"

#include <numeric>

namespace cuedrill::bank {
namespace {

using fakes::Operation;

class QuestionLists : public EitherDirectionLists {
protected:
    /// The list with its lines. Fails the test if the course has no records.
    QuestionList build(const std::string& clause, bool with_answers)
    {
        std::optional<QuestionList> questions = read_questions(course, clause, with_answers);
        EXPECT_TRUE(questions.has_value());
        make_lines(questions.value(), course, engine.text_compare);
        EXPECT_EQ(database.open_recordsets(), 0);
        return std::move(questions).value();
    }

    QuestionList all() { return build("order by cnt", false); }
    QuestionList with_answers() { return build("order by " + asked_column(), true); }
};

INSTANTIATE_TEST_SUITE_P(Directions, QuestionLists, testing::Bool(), direction_name);

TEST_P(QuestionLists, come_in_the_order_of_their_clause)
{
    add("Delta?", "one").asked.level(3);
    add("alpha?", "two").answered.level(2);
    add("Bravo?", "three").asked.level(12);
    open_course();
    EXPECT_EQ(all().lines, (Lines{"03 - Delta?", "00 - alpha?", "12 - Bravo?"}));
    const QuestionList by_level = build("order by " + asked_column("_successes") + " desc", false);
    EXPECT_EQ(by_level.lines, (Lines{"12 - Bravo?", "03 - Delta?", "00 - alpha?"}));
    EXPECT_EQ(by_level.clause, "order by " + asked_column("_successes") + " desc");
    EXPECT_TRUE(by_level.complete);
    EXPECT_EQ(by_level.answers_not_found, 0);
    EXPECT_EQ(with_answers().lines,
              (Lines{"00 - alpha?  --->  two", "12 - Bravo?  --->  three", "03 - Delta?  --->  one"}));
}

TEST_P(QuestionLists, are_read_with_one_statement)
{
    add("France?", "Paris");
    add("Italy?", "Rome");
    open_course();
    static_cast<void>(with_answers());
    EXPECT_EQ(database.statements(), (Lines{"Select * from qa order by " + asked_column()}));
}

TEST_P(QuestionLists, of_an_empty_course_are_none)
{
    open_course();
    EXPECT_FALSE(read_questions(course, "order by cnt", true).has_value());
}

TEST_P(QuestionLists, have_scores_of_at_least_two_digits)
{
    add("one").asked.level(7);
    add("two").asked.level(10);
    add("three").asked.level(100);
    add("none");
    open_course();
    EXPECT_EQ(all().lines, (Lines{"07 - one", "10 - two", "100 - three", "00 - none"}));
}

TEST_P(QuestionLists, have_each_record_on_one_line)
{
    add("two\r\nlines", "a\r\nb\r\n\r\nc");
    add("other\nends\rhere", "x\ny");
    open_course();
    const QuestionList questions = all();
    EXPECT_EQ(questions.lines, (Lines{"00 - two lines", "00 - other\nends\rhere"}));
    EXPECT_EQ(questions.list.text(0), "two\r\nlines") << "the record is still known by its text";
    EXPECT_EQ(with_answers().lines, (Lines{"00 - other\nends\rhere  --->  x\ny", "00 - two lines  --->  a b  c"}));
}

TEST_P(QuestionLists, have_the_answer_of_the_first_record_beside_equal_questions)
{
    add("Twice?", "first");
    add("Once?", "single");
    add("twice?", "second");
    add("TWICE?", "third");
    open_course();
    EXPECT_EQ(with_answers().lines, (Lines{"00 - Once?  --->  single", "00 - Twice?  --->  first",
                                           "00 - twice?  --->  first", "00 - TWICE?  --->  first"}));
    EXPECT_EQ(database.statements().size(), 1U + 2U) << "the records, and those that repeat a question";
}

/// If equal questions are not adjacent, each answer is looked up.
TEST_P(QuestionLists, have_the_answer_of_the_first_record_in_any_order)
{
    add("Twice?", "first");
    add("Once?", "single");
    add("twice?", "second");
    open_course();
    EXPECT_EQ(build("order by cnt desc", true).lines,
              (Lines{"00 - twice?  --->  first", "00 - Once?  --->  single", "00 - Twice?  --->  first"}));
}

TEST_P(QuestionLists, have_its_own_answer_beside_each_record_without_a_question)
{
    add("x", "first");
    add("x", "second");
    open_course();
    database.execute("Update qa set " + asked_column() + " = null");
    EXPECT_EQ(with_answers().lines, (Lines{"00 -   --->  first", "00 -   --->  second"}));
}

TEST_P(QuestionLists, count_the_answers_that_have_vanished_meanwhile)
{
    add("Twice?", "first");
    add("twice?", "second");
    add("TWICE?", "third");
    open_course();
    database.at_each_call([this](Operation operation) {
        if (operation == Operation::query)
            engine.database.execute("Delete from qa");
    });
    const QuestionList questions = with_answers();
    EXPECT_EQ(questions.lines, (Lines{"00 - Twice?  --->  first", "00 - twice?  --->  ", "00 - TWICE?  --->  "}));
    EXPECT_EQ(questions.answers_not_found, 2);
    EXPECT_TRUE(questions.complete);
}

TEST_P(QuestionLists, cannot_be_read_from_a_disk_that_fails)
{
    add("Twice?", "first");
    add("twice?", "second");
    open_course();
    for (const Operation operation : {Operation::open_recordset, Operation::query}) {
        database.fail_at(operation);
        EXPECT_THROW(static_cast<void>(with_answers()), platform::DatabaseError);
        EXPECT_EQ(database.open_recordsets(), 0);
    }
}

TEST_P(QuestionLists, refuse_a_score_beyond_16_bits)
{
    add("France?");
    open_course();
    drop_checks();
    database.execute("Update qa set " + asked_column("_successes") + " = 32768");
    try {
        static_cast<void>(all());
        FAIL() << "not refused";
    } catch (const common::OverflowError& error) {
        EXPECT_STREQ(error.what(), "Overflow: the score 32768 is outside -32768 to 32767.");
    }
    EXPECT_EQ(database.open_recordsets(), 0);
}

TEST_P(QuestionLists, hold_10000_records)
{
    open_course_with_items(10000);
    const QuestionList questions = all();
    ASSERT_EQ(questions.lines.size(), 10000U);
    EXPECT_EQ(questions.lines.back(), "00 - item 10000");
    EXPECT_TRUE(questions.complete);
}

TEST_P(QuestionLists, hold_no_more_than_10000_records)
{
    open_course_with_items(10001);
    const QuestionList questions = all();
    ASSERT_EQ(questions.lines.size(), 10000U);
    EXPECT_EQ(questions.lines.back(), "00 - item 10000");
    EXPECT_FALSE(questions.complete);
    const QuestionList answered = with_answers();
    ASSERT_EQ(answered.lines.size(), 10000U);
    EXPECT_EQ(answered.lines.front(), "00 - item 1  --->  item 1");
    EXPECT_FALSE(answered.complete);
}

/// A course made elsewhere, with texts far longer than a course allows.
class LongQuestionLists : public QuestionLists {
protected:
    static void expect_cut(const QuestionList& questions, std::size_t count)
    {
        EXPECT_EQ(questions.lines.size(), count);
        EXPECT_EQ(questions.list.list_count(), count);
        EXPECT_FALSE(questions.complete);
    }
};

INSTANTIATE_TEST_SUITE_P(Straight, LongQuestionLists, testing::Values(false), direction_name);

TEST_P(LongQuestionLists, end_before_they_take_too_much_memory)
{
    open_course_with_long_texts(400, 100'000);
    const QuestionList questions = all();
    expect_cut(questions, 319);
    EXPECT_TRUE(questions.lines.back().starts_with("00 - 319 item x"));
}

TEST_P(LongQuestionLists, count_the_answers_too)
{
    open_course_with_long_texts(400, 2, 200'000);
    expect_cut(with_answers(), 319);
}

/// Proves that a looked-up answer of another record counts towards the size, too.
TEST_P(LongQuestionLists, count_the_answer_of_equal_questions)
{
    add("Twice?", "first");
    for (int i = 0; i < 700; ++i)
        add("twice?");
    open_course();
    drop_checks();
    database.execute("Update qa set a = " + text_of(100'000) + " where cnt = 1");
    const QuestionList questions = with_answers();
    expect_cut(questions, 639);
    EXPECT_LT(std::accumulate(questions.lines.begin(), questions.lines.end(), std::size_t{0},
                              [](std::size_t sum, const std::string& line) { return sum + line.size(); }),
              64'000'000U);
}

TEST_P(LongQuestionLists, do_not_end_while_there_is_room)
{
    open_course_with_long_texts(319, 100'000);
    const QuestionList questions = all();
    EXPECT_EQ(questions.lines.size(), 319U);
    EXPECT_TRUE(questions.complete);
}

} // namespace
} // namespace cuedrill::bank
