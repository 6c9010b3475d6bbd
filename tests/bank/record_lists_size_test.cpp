#include "record_lists_fixture.h"

#include <numeric>

namespace cuedrill::bank {
namespace {

using fakes::Operation;

constexpr const char* not_complete = "Too many items found, the list is not complete.";

/// A course made elsewhere, whose texts are far longer than a course gives them.
class LongTexts : public RecordListsTest {
protected:
    /// Adds records whose texts have so many letters, after the number of the record and the word "item".
    void open_course_with_long_texts(int records, int letters, int answer_letters = 2)
    {
        open_course();
        database.execute("PRAGMA ignore_check_constraints = ON");
        // Keeping long texts in order is what takes the time.
        database.execute("Drop index qa_q");
        database.execute("Drop index qa_a");
        const std::string text = "n || ' item ' || " + text_of(letters);
        const std::string answer = text_of(answer_letters);
        database.execute("Insert into qa (q, a) with recursive numbers (n) as (select 1 union all select n + 1 from "
                         "numbers where n < " +
                         std::to_string(records) + ") select " + text + ", " + answer + " from numbers");
        database.forget();
    }

    /// The statement's words for a text of so many letters, an even number.
    static std::string text_of(int letters)
    {
        return "replace(hex(zeroblob(" + std::to_string(letters / 2) + ")), '0', 'x')";
    }

    [[nodiscard]] std::size_t shown_bytes() const
    {
        return std::accumulate(screen.lines.begin(), screen.lines.end(), std::size_t{0},
                               [](std::size_t sum, const std::string& line) { return sum + line.size(); });
    }
};

TEST_F(LongTexts, end_a_list_of_questions)
{
    open_course_with_long_texts(400, 100'000);
    desktop.expect_box(not_complete);
    lists.m_show_all();
    EXPECT_EQ(screen.lines.size(), 319U);
    EXPECT_TRUE(screen.lines.back().starts_with("00 - 319 item x"));
    expect_status("319 questions (the number on the left is the question score)");
    EXPECT_EQ(recalled().size(), 319U);
}

TEST_F(LongTexts, end_a_list_with_answers)
{
    open_course_with_long_texts(400, 2, 200'000);
    desktop.expect_box(not_complete);
    lists.m_all_q_and_a();
    EXPECT_EQ(screen.lines.size(), 319U);
    EXPECT_EQ(recalled().size(), 319U);
}

/// Proves that the answer of another record, which is looked up, counts as well.
TEST_F(LongTexts, that_are_the_answer_of_equal_questions_end_a_list)
{
    add("Twice?", "first");
    for (int i = 0; i < 700; ++i)
        add("twice?");
    open_course();
    database.execute("PRAGMA ignore_check_constraints = ON");
    database.execute("Update qa set a = " + text_of(100'000) + " where cnt = 1");
    desktop.expect_box(not_complete);
    lists.m_all_q_and_a();
    EXPECT_EQ(screen.lines.size(), 639U);
    EXPECT_LT(shown_bytes(), 64'000'000U);
    EXPECT_EQ(recalled().size(), 639U);
}

TEST_F(LongTexts, end_a_search)
{
    open_course_with_long_texts(37, 900'000);
    desktop.expect_input("String?", "item");
    desktop.expect_box(not_complete);
    lists.m_find_q();
    EXPECT_EQ(screen.lines.size(), 35U);
    expect_status("35 questions found.");
}

TEST_F(LongTexts, end_a_list_of_similar_questions)
{
    open_course_with_long_texts(400, 100'000);
    screen.question = "item other";
    desktop.expect_box(not_complete);
    lists.list_similar();
    EXPECT_EQ(screen.lines.size(), 319U);
    expect_status("319 lines: questions with a word of this one; the list is not complete.");
    EXPECT_EQ(database.statements().size(), 1U) << "no other word is looked for";
}

TEST_F(LongTexts, end_no_list_while_there_is_room)
{
    open_course_with_long_texts(319, 100'000);
    lists.m_show_all();
    EXPECT_EQ(screen.lines.size(), 319U);
}

TEST_F(LongTexts, end_a_list_that_is_built_anew)
{
    open_course_with_long_texts(319, 100'000);
    lists.m_show_all();
    database.execute("Insert into qa (q, a) select q, a from qa where cnt = 1");
    desktop.expect_box(not_complete);
    lists.rebuild_shown_list();
    EXPECT_EQ(screen.lines.size(), 319U);
    EXPECT_EQ(screen.lists_replaced, 1);
}

/// The first record is the one on display; looking for a word takes half a second.
class SlowComparison : public EitherDirectionLists {
protected:
    void open_questions(const Lines& questions)
    {
        for (const std::string& question : questions)
            add(question);
        open_course();
        screen.question = questions.at(0);
        database.at_each_call([this](Operation operation) {
            if (operation == Operation::open_recordset)
                clock.steady_seconds_more += 0.5;
        });
    }

    void expect_end_at(const std::string& word)
    {
        expect_warning("The list ends at the word \"" + word +
                       "\".\r\n\r\nLooking for more words would take too long.");
        lists.list_similar();
    }
};

INSTANTIATE_TEST_SUITE_P(Directions, SlowComparison, testing::Bool(), direction_name);

TEST_P(SlowComparison, ends_after_two_seconds)
{
    open_questions({"a b c d e f", "x a", "x d", "x e"});
    expect_end_at("d");
    EXPECT_EQ(screen.lines, (Lines{"00 - x a*"}));
    EXPECT_EQ(database.statements().size(), 4U);
    expect_status("1 lines: questions with a word of this one; the list is not complete.");
}

TEST_P(SlowComparison, ends_also_where_nothing_is_found)
{
    open_questions({"a b c d e f"});
    screen.question = "u v w x y z";
    expect_end_at("y");
    EXPECT_TRUE(screen.lines.empty());
}

TEST_P(SlowComparison, begins_anew_each_time)
{
    open_questions({"a b c", "x c"});
    for (int i = 0; i < 3; ++i) {
        lists.list_similar();
        EXPECT_EQ(screen.lines, (Lines{"00 - x c*"}));
    }
}

TEST_P(SlowComparison, shows_the_beginning_of_a_word_without_an_end)
{
    open_questions({"other"});
    screen.question = "a b c d " + std::string(300, 'w');
    expect_end_at(std::string(50, 'w') + "...");
}

} // namespace
} // namespace cuedrill::bank
