#include "record_lists_fixture.h"

namespace cuedrill::bank {
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
        course.current_cnt = 1;
        screen.question = questions.at(0);
    }

    void expect_similar(const Lines& lines)
    {
        lists.list_similar();
        EXPECT_EQ(screen.lines, lines);
        EXPECT_TRUE(screen.shown);
        EXPECT_EQ(screen.lists_shown, 1);
    }

    [[nodiscard]] std::string sql(const std::string& word) const
    {
        return "Select * from qa where " + asked_column() + " like '*" + word + "*' ";
    }
};

INSTANTIATE_TEST_SUITE_P(Directions, SimilarQuestions, testing::Bool(), direction_name);

TEST_P(SimilarQuestions, are_looked_for_word_by_word)
{
    open_questions({"  Capital of   France? "});
    lists.list_similar();
    EXPECT_EQ(database.statements(), (std::vector<std::string>{sql("Capital"), sql("of"), sql("France?")}));
}

TEST_P(SimilarQuestions, are_listed_once_for_each_word_with_its_marks_alone)
{
    open_questions({"Capital of France", "Capital of Italy", "Kings of France and of Spain", "Rivers"});
    expect_similar({"00 - Capital* of Italy", "00 - Capital of* Italy", "00 - Kings of* France and of* Spain",
                    "00 - Kings of France* and of Spain"});
    expect_status("4 lines: questions with a word of this one, marked by *. Click one to see it.");
}

TEST_P(SimilarQuestions, have_their_scores)
{
    add("Capital").asked.level(3);
    add("Capital of Italy").asked.level(12);
    add("old capital");
    builder.question("x", "x").level(9).inverted().level(9);
    open_course();
    screen.question = "Capital";
    expect_similar({"12 - Capital* of Italy", "00 - old capital*"});
}

TEST_P(SimilarQuestions, are_other_ones)
{
    open_questions({"Capital of France", "CAPITAL of france", "  Capital of France ", "capital"});
    expect_similar({"00 - capital*"});
}

TEST_P(SimilarQuestions, have_the_word_in_any_case)
{
    open_questions({"\u00C9COLE \u00DCber", "une \u00E9cole", "\u00FCber", "ecole"});
    expect_similar({"00 - une \u00E9cole*", "00 - \u00FCber*"});
}

TEST_P(SimilarQuestions, have_the_word_by_itself)
{
    open_questions({"of", "often", "proof", "(of)", "a,of", "one of:", "of\ttab", "who of?"});
    expect_similar({"00 - (of*)", "00 - who of*?"});
}

TEST_P(SimilarQuestions, are_looked_for_on_the_asked_side_alone)
{
    add("Capital", "of");
    add("Rivers", "Capital");
    open_course();
    screen.question = "Capital";
    expect_similar({});
}

TEST_P(SimilarQuestions, may_be_none)
{
    open_questions({"Capital", "Rivers"});
    lists.m_show_all();
    lists.list_similar();
    EXPECT_TRUE(screen.lines.empty());
    EXPECT_EQ(screen.lists_shown, 2);
    expect_status("No other question has a word of this one.");
    EXPECT_TRUE(recalled().empty());
}

TEST_P(SimilarQuestions, are_not_looked_for_without_a_question)
{
    open_questions({"Capital", "Capital of Italy"});
    for (const char* const nothing : {"", "  "}) {
        screen.question = nothing;
        lists.list_similar();
    }
    EXPECT_TRUE(database.statements().empty());
    EXPECT_EQ(screen.lists_shown, 0);
    EXPECT_TRUE(status.texts.empty());
}

TEST_P(SimilarQuestions, keep_their_line_ends)
{
    open_questions({"Capital", "Capital of\r\nItaly", "of\r\nCapital"});
    expect_similar({"00 - Capital* of\r\nItaly"});
}

TEST_P(SimilarQuestions, take_the_characters_of_a_pattern_in_a_word_for_what_they_mean)
{
    open_questions({"what? a#b", "say what? now", "whatx", "what", "a#b too", "a5b"});
    expect_similar({"00 - say what?* now"});
}

TEST_P(SimilarQuestions, end_at_a_word_that_is_no_pattern)
{
    open_questions({"big [x small", "big dog", "small cat"});
    expect_warning("The list ends at the word \"[x\".\r\n\r\n" + refusal_of(sql("[x")));
    expect_similar({"00 - big* dog"});
    expect_status("1 lines: questions with a word of this one; the list is not complete.");
}

TEST_P(SimilarQuestions, end_at_a_word_with_an_apostrophe)
{
    open_questions({"big it's small isn't", "big dog", "it's", "small cat"});
    expect_warning("The list ends at the word \"it's\".\r\n\r\nA word with an apostrophe cannot be looked for."
                   "\r\n\r\nFind, Find question finds it.");
    expect_similar({"00 - big* dog"});
    EXPECT_EQ(database.statements(), (std::vector<std::string>{sql("big")}));
    EXPECT_EQ(recalled(), (Lines{"00 - big* dog"}));
}

TEST_P(SimilarQuestions, cannot_run_what_stands_in_a_word)
{
    open_questions({"question", "x", "y"});
    const fakes::CourseContents before = file();
    for (const std::string word : {"x';delete/**/from/**/qa;--", "'or'x", "''"}) {
        screen.question = word + " y";
        expect_warning("The list ends at the word \"" + word +
                       "\".\r\n\r\nA word with an apostrophe cannot be looked for."
                       "\r\n\r\nFind, Find question finds it.");
        lists.list_similar();
        EXPECT_TRUE(screen.lines.empty()) << word;
    }
    EXPECT_TRUE(database.statements().empty());
    EXPECT_EQ(file(), before);
}

TEST_P(SimilarQuestions, end_at_a_word_that_cannot_be_looked_for)
{
    open_questions({"big red small", "big dog", "red dog", "small cat"});
    database.fail_at(Operation::open_recordset, 2);
    expect_warning("The list ends at the word \"red\".\r\n\r\n" + unreadable());
    expect_similar({"00 - big* dog"});
}

TEST_P(SimilarQuestions, that_end_early_replace_the_list_before)
{
    open_questions({"it's", "big dog"});
    find_answer("answer");
    ASSERT_EQ(screen.lines.size(), 2U);
    expect_warning("The list ends at the word \"it's\".\r\n\r\nA word with an apostrophe cannot be looked for."
                   "\r\n\r\nFind, Find question finds it.");
    lists.list_similar();
    EXPECT_TRUE(screen.lines.empty());
    expect_status("0 lines: questions with a word of this one; the list is not complete.");
    EXPECT_TRUE(recalled().empty());
}

TEST_P(SimilarQuestions, are_10000_without_a_word)
{
    open_course_with_items(10000);
    screen.question = "item";
    lists.list_similar();
    ASSERT_EQ(screen.lines.size(), 10000U);
    EXPECT_EQ(screen.lines.back(), "00 - item* 10000");
}

TEST_P(SimilarQuestions, are_no_more_than_10000)
{
    add("dog item");
    open_course_with_items(10000);
    screen.question = "dog cat item bird";
    expect_warning(
        "The list ends at the word \"item\".\r\n\r\nToo many items found: 10000 are the most that a list can "
        "hold.");
    lists.list_similar();
    ASSERT_EQ(screen.lines.size(), 10000U);
    EXPECT_EQ(screen.lines.front(), "00 - dog* item");
    EXPECT_EQ(screen.lines.at(1), "00 - dog item*");
    EXPECT_EQ(screen.lines.back(), "00 - item* 9998");
    expect_status("10000 lines: questions with a word of this one; the list is not complete.");
    EXPECT_EQ(database.statements().size(), 3U) << "nothing is looked for any more";
}

TEST_P(SimilarQuestions, are_read_with_a_busy_pointer)
{
    open_questions({"Capital", "Capital of Italy"});
    int depth = 0;
    database.at_each_call([&](Operation) { depth = desktop.pointer_depth; });
    lists.list_similar();
    EXPECT_EQ(depth, 1);
    EXPECT_EQ(desktop.pointer_depth, 0);
}

} // namespace
} // namespace cuedrill::bank
