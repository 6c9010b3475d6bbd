#include "drill/drill_state.h"
#include "drill/record_lists.h"
#include "record_lists_fixture.h"

namespace cuedrill::drill {
namespace {

using fakes::Operation;

/// The first record is the one on display.
class SimilarQuestions : public EitherDirectionLists {
protected:
    void open_questions(const Lines& questions)
    {
        for (const std::string& question : questions)
            add(question);
        open_course();
        show(1);
    }

    void list_similar() { choose("m_list_similar"); }

    void expect_end_at(const std::string& word, const std::string& reason)
    {
        expect_warning("The list ends at the word \"" + word + "\".\r\n\r\n" + reason);
        list_similar();
    }

    [[nodiscard]] std::string sql(const std::string& word) const
    {
        return "Select * from qa where " + asked_column() + " like '*" + word + "*' ";
    }

    static constexpr const char* apostrophe =
        "A word with an apostrophe cannot be looked for.\r\n\r\nFind, Find question finds it.";
};

INSTANTIATE_TEST_SUITE_P(Directions, SimilarQuestions, testing::Bool(), direction_name);

TEST_P(SimilarQuestions, are_listed_once_for_each_word_with_its_marks_alone)
{
    open_questions({"Capital of France", "Capital of Italy", "Kings of France and of Spain", "Rivers"});
    list_similar();
    EXPECT_EQ(lines(), (Lines{"00 - Capital* of Italy", "00 - Capital of* Italy", "00 - Kings of* France and of* Spain",
                              "00 - Kings of France* and of Spain"}));
    EXPECT_TRUE(list_shown());
    EXPECT_EQ(lists_shown(), 1);
    expect_status("4 lines: questions with a word of this one, marked by *. Click one to see it.");
    EXPECT_EQ(database.statements(), (Lines{sql("Capital"), sql("of"), sql("France")}));
}

TEST_P(SimilarQuestions, may_be_none)
{
    open_questions({"Capital", "Rivers"});
    choose("m_show_all");
    list_similar();
    EXPECT_TRUE(lines().empty());
    EXPECT_EQ(lists_shown(), 2);
    expect_status("No other question has a word of this one.");
    EXPECT_TRUE(recalled().empty());
}

TEST_P(SimilarQuestions, are_not_looked_for_without_a_question)
{
    open_questions({"Capital", "  "});
    for (const bool blank : {true, false}) {
        SCOPED_TRACE(blank);
        if (blank)
            show(2);
        else
            user([this] { logic->display.withdraw_question(); });
        form1.journal.clear();
        logic->lists.list_similar();
        EXPECT_TRUE(database.statements().empty());
        EXPECT_EQ(form1.journal, Lines{});
    }
}

TEST_P(SimilarQuestions, end_at_a_word_that_is_no_pattern)
{
    open_questions({"big [x small", "big dog", "small cat"});
    expect_end_at("[x", refusal_of(sql("[x")));
    EXPECT_EQ(lines(), (Lines{"00 - big* dog"}));
    expect_status("1 lines: questions with a word of this one; the list is not complete.");
}

TEST_P(SimilarQuestions, end_at_a_word_with_an_apostrophe)
{
    open_questions({"big it's small isn't", "big dog", "it's", "small cat"});
    expect_end_at("it's", apostrophe);
    EXPECT_EQ(lines(), (Lines{"00 - big* dog"}));
    EXPECT_EQ(database.statements(), (Lines{sql("big")}));
    EXPECT_EQ(recalled(), (Lines{"00 - big* dog"}));
}

TEST_P(SimilarQuestions, end_at_a_word_for_which_the_course_cannot_be_read)
{
    open_questions({"big red small", "big dog", "red dog", "small cat"});
    database.fail_at(Operation::open_recordset, 2);
    expect_end_at("red", unreadable());
    EXPECT_EQ(lines(), (Lines{"00 - big* dog"}));
}

TEST_P(SimilarQuestions, that_end_early_replace_the_list_before)
{
    open_questions({"it's", "big dog"});
    find_answer("answer");
    ASSERT_EQ(lines().size(), 2U);
    expect_end_at("it's", apostrophe);
    EXPECT_TRUE(lines().empty());
    expect_status("0 lines: questions with a word of this one; the list is not complete.");
    EXPECT_TRUE(recalled().empty());
}

TEST_P(SimilarQuestions, are_no_more_than_10000)
{
    add("item dog");
    add("big dog");
    open_course_with_items(10000);
    show(1);
    expect_end_at("dog", "Too many items found: 10000 are the most that a list can hold.");
    EXPECT_EQ(lines().size(), 10000U);
    expect_status("10000 lines: questions with a word of this one; the list is not complete.");
}

TEST_P(SimilarQuestions, are_read_with_a_busy_pointer)
{
    open_questions({"Capital", "Capital of Italy"});
    int depth = 0;
    database.at_each_call([&](Operation) { depth = desktop.pointer_depth; });
    list_similar();
    EXPECT_EQ(depth, 1);
    EXPECT_EQ(desktop.pointer_depth, 0);
}

TEST_P(SimilarQuestions, are_looked_for_two_seconds)
{
    open_questions({"a b c " + std::string(180, 'w') + " x", "y a"});
    database.at_each_call([this](Operation operation) {
        if (operation == Operation::open_recordset)
            clock.steady_seconds_more += 0.5;
    });
    expect_end_at(std::string(50, 'w') + "...", "Looking for more words would take too long.");
    EXPECT_EQ(lines(), (Lines{"00 - y a*"}));
}

/// A course from another program, with texts far longer than this program allows.
TEST_P(SimilarQuestions, with_long_texts_say_that_the_list_is_not_complete)
{
    open_questions({"item other"});
    change_course("PRAGMA ignore_check_constraints = ON");
    change_course("Drop index qa_q");
    change_course("Drop index qa_a");
    const std::string text = "n || ' item ' || replace(hex(zeroblob(50000)), '0', 'x')";
    change_course("Insert into qa (q, a) with recursive numbers (n) as (select 1 union all select n + 1 from numbers "
                  "where n < 400) select " +
                  (inverted ? "'x', " + text : text + ", 'x'") + " from numbers");
    desktop.expect_box_like({.text = "Too many items found, the list is not complete."}, platform::BoxAnswer::ok);
    list_similar();
    EXPECT_EQ(lines().size(), 319U);
    expect_status("319 lines: questions with a word of this one; the list is not complete.");
}

} // namespace
} // namespace cuedrill::drill
