#include "bank/record_search.h"
#include "lists_fixture.h"

namespace cuedrill::bank {
namespace {

using fakes::Operation;

class Similar : public EitherDirectionLists {
protected:
    void open_questions(const Lines& questions)
    {
        for (const std::string& question : questions)
            add(question);
        open_course();
    }

    SimilarQuestions look_for(const std::string& question)
    {
        SimilarQuestions similar = similar_questions(course, question, engine.text_compare, clock);
        EXPECT_EQ(database.open_recordsets(), 0);
        return similar;
    }

    void expect_similar(const std::string& question, const Lines& lines)
    {
        const SimilarQuestions similar = look_for(question);
        EXPECT_EQ(similar.list.lines(), lines);
        EXPECT_TRUE(similar.complete);
        EXPECT_FALSE(similar.stop.has_value());
    }

    void expect_end(const std::string& question, const Lines& lines, const std::string& word, const std::string& reason)
    {
        const SimilarQuestions similar = look_for(question);
        EXPECT_EQ(similar.list.lines(), lines);
        EXPECT_FALSE(similar.complete);
        ASSERT_TRUE(similar.stop.has_value()) << question;
        EXPECT_EQ(similar.stop->word, word);
        EXPECT_EQ(similar.stop->reason, reason);
    }

    [[nodiscard]] std::string sql(const std::string& word) const
    {
        return "Select * from qa where " + asked_column() + " like '*" + word + "*' ";
    }
};

INSTANTIATE_TEST_SUITE_P(Directions, Similar, testing::Bool(), direction_name);

TEST_P(Similar, questions_are_looked_for_word_by_word)
{
    open_questions({"  Capital of   France? "});
    expect_similar("  Capital of   France? ", {});
    EXPECT_EQ(database.statements(), (Lines{sql("Capital"), sql("of"), sql("France?")}));
}

TEST_P(Similar, questions_are_found_once_for_each_word_with_its_marks_alone)
{
    open_questions({"Capital of France", "Capital of Italy", "Kings of France and of Spain", "Rivers"});
    expect_similar("Capital of France", {"00 - Capital* of Italy", "00 - Capital of* Italy",
                                         "00 - Kings of* France and of* Spain", "00 - Kings of France* and of Spain"});
}

TEST_P(Similar, questions_have_their_scores)
{
    add("Capital").asked.level(3);
    add("Capital of Italy").asked.level(12);
    add("old capital");
    builder.question("x", "x").level(9).inverted().level(9);
    open_course();
    expect_similar("Capital", {"12 - Capital* of Italy", "00 - old capital*"});
}

TEST_P(Similar, questions_are_other_ones)
{
    open_questions({"Capital of France", "CAPITAL of france", "  Capital of France ", "capital"});
    expect_similar("Capital of France", {"00 - capital*"});
    expect_similar(" Capital of France  ", {"00 - capital*"});
}

TEST_P(Similar, questions_have_the_word_in_any_case)
{
    open_questions({"\u00C9COLE \u00DCber", "une \u00E9cole", "\u00FCber", "ecole"});
    expect_similar("\u00C9COLE \u00DCber", {"00 - une \u00E9cole*", "00 - \u00FCber*"});
}

TEST_P(Similar, questions_have_the_word_by_itself)
{
    open_questions({"of", "often", "proof", "(of)", "a,of", "one of:", "of\ttab", "who of?"});
    expect_similar("of", {"00 - (of*)", "00 - who of*?"});
}

TEST_P(Similar, questions_are_looked_for_on_the_asked_side_alone)
{
    add("Capital", "of");
    add("Rivers", "Capital");
    open_course();
    expect_similar("Capital", {});
}

TEST_P(Similar, questions_keep_their_line_ends)
{
    open_questions({"Capital", "Capital of\r\nItaly", "of\r\nCapital"});
    expect_similar("Capital", {"00 - Capital* of\r\nItaly"});
}

TEST_P(Similar, questions_take_the_characters_of_a_pattern_in_a_word_for_what_they_mean)
{
    open_questions({"what? a#b", "say what? now", "whatx", "what", "a#b too", "a5b"});
    expect_similar("what? a#b", {"00 - say what?* now"});
}

TEST_P(Similar, questions_end_at_a_word_that_is_no_pattern)
{
    open_questions({"big [x small", "big dog", "small cat"});
    expect_end("big [x small", {"00 - big* dog"}, "[x", refusal_of(sql("[x")));
}

TEST_P(Similar, questions_end_at_a_word_with_an_apostrophe)
{
    open_questions({"big it's small isn't", "big dog", "it's", "small cat"});
    expect_end("big it's small isn't", {"00 - big* dog"}, "it's", "A word with an apostrophe cannot be looked for.");
    EXPECT_EQ(database.statements(), (Lines{sql("big")}));
    EXPECT_TRUE(has_apostrophe("it's"));
    EXPECT_FALSE(has_apostrophe("\"its\""));
}

TEST_P(Similar, questions_cannot_run_what_stands_in_a_word)
{
    open_questions({"question", "x", "y"});
    const fakes::CourseContents before = file();
    for (const std::string word : {"x';delete/**/from/**/qa;--", "'or'x", "''"})
        expect_end(word + " y", {}, word, "A word with an apostrophe cannot be looked for.");
    EXPECT_TRUE(database.statements().empty());
    EXPECT_EQ(file(), before);
}

TEST_P(Similar, questions_end_at_a_word_for_which_the_course_cannot_be_read)
{
    open_questions({"big red small", "big dog", "red dog", "small cat"});
    database.fail_at(Operation::open_recordset, 2);
    expect_end("big red small", {"00 - big* dog"}, "red", unreadable());
}

TEST_P(Similar, questions_are_10000)
{
    open_course_with_items(10000);
    const SimilarQuestions similar = look_for("item");
    ASSERT_EQ(similar.list.list_count(), 10000U);
    EXPECT_EQ(similar.list.line(9999), "00 - item* 10000");
    EXPECT_TRUE(similar.complete);
}

TEST_P(Similar, questions_are_no_more_than_10000)
{
    add("dog item");
    open_course_with_items(10000);
    const SimilarQuestions similar = look_for("dog cat item bird");
    ASSERT_TRUE(similar.stop.has_value());
    EXPECT_EQ(similar.stop->word, "item");
    EXPECT_EQ(similar.stop->reason, "Too many items found: 10000 are the most that a list can hold.");
    ASSERT_EQ(similar.list.list_count(), 10000U);
    EXPECT_EQ(similar.list.line(0), "00 - dog* item");
    EXPECT_EQ(similar.list.line(1), "00 - dog item*");
    EXPECT_EQ(similar.list.line(9999), "00 - item* 9998");
    EXPECT_EQ(database.statements().size(), 3U) << "nothing is looked for any more";
}

class SimilarLongQuestions : public ListsOfACourse {};

TEST_F(SimilarLongQuestions, end_before_they_take_too_much_memory)
{
    open_course_with_long_texts(400, 100'000);
    const SimilarQuestions similar = similar_questions(course, "item other", engine.text_compare, clock);
    EXPECT_EQ(similar.list.list_count(), 319U);
    EXPECT_FALSE(similar.complete);
    EXPECT_FALSE(similar.stop.has_value());
    EXPECT_EQ(database.statements().size(), 1U) << "no other word is looked for";
}

/// Each word takes half a second to search for.
class SlowComparison : public Similar {
protected:
    void open_questions(const Lines& questions)
    {
        Similar::open_questions(questions);
        database.at_each_call([this](Operation operation) {
            if (operation == Operation::open_recordset)
                clock.steady_seconds_more += 0.5;
        });
    }

    static constexpr const char* too_long = "Looking for more words would take too long.";
};

INSTANTIATE_TEST_SUITE_P(Directions, SlowComparison, testing::Bool(), direction_name);

TEST_P(SlowComparison, ends_after_two_seconds)
{
    open_questions({"a b c d e f", "x a", "x d", "x e"});
    expect_end("a b c d e f", {"00 - x a*"}, "d", too_long);
    EXPECT_EQ(database.statements().size(), 4U);
}

TEST_P(SlowComparison, ends_also_where_nothing_is_found)
{
    open_questions({"a b c d e f"});
    expect_end("u v w x y z", {}, "y", too_long);
}

TEST_P(SlowComparison, begins_anew_each_time)
{
    open_questions({"a b c", "x c"});
    for (int i = 0; i < 3; ++i)
        expect_similar("a b c", {"00 - x c*"});
}

} // namespace
} // namespace cuedrill::bank
