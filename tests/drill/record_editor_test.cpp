#include "drill/record_editor_fixture.h"

namespace cuedrill::drill {
namespace {

using platform::BoxAnswer;

class EitherDirection : public RecordEditorTest, public testing::WithParamInterface<bool> {
protected:
    void SetUp() override { open_course(GetParam()); }

    /// Expects these texts in the stored record, in the current direction.
    void expect_record(std::size_t index, const std::string& question, const std::string& answer) const
    {
        if (GetParam())
            expect_texts(index, answer, question);
        else
            expect_texts(index, question, answer);
    }
};

INSTANTIATE_TEST_SUITE_P(Directions, EitherDirection, testing::Values(false, true),
                         [](const auto& inverted) { return std::string(inverted.param ? "inverted" : "straight"); });

TEST_P(EitherDirection, new_record_begins_with_the_question_and_no_current_record)
{
    editor.begin_new_record();
    EXPECT_TRUE(flags.new_mode);
    EXPECT_FALSE(flags.edit_mode);
    EXPECT_EQ(current_cnt(), 0);
    EXPECT_EQ(view.typed().question, "");
    EXPECT_TRUE(view.open());
    EXPECT_EQ(view.caret(), "question");
}

TEST_P(EitherDirection, change_begins_with_the_answer_shown)
{
    editor.begin_edit();
    EXPECT_TRUE(flags.edit_mode);
    EXPECT_FALSE(flags.new_mode);
    EXPECT_EQ(current_cnt(), 1);
    EXPECT_EQ(view.typed().answer, view.loaded().answer);
    EXPECT_TRUE(view.open());
}

TEST_P(EitherDirection, nothing_can_be_changed_without_a_current_record)
{
    display.take_for_record(0);
    editor.begin_edit();
    EXPECT_FALSE(editor.editing());
    EXPECT_FALSE(view.open());
}

TEST_P(EitherDirection, new_record_is_stored_and_becomes_the_current_one)
{
    begin_new("Spain?", "Madrid");
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    expect_record(3, "Spain?", "Madrid");
    EXPECT_EQ(current_cnt(), 4);
    EXPECT_EQ(course.record_count, 4);
    EXPECT_FALSE(editor.editing());
    EXPECT_EQ(view.status(), saved);
}

TEST_P(EitherDirection, change_is_stored_in_the_record_and_in_no_other)
{
    begin_change("Where?", "There");
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    expect_record(0, "Where?", "There");
    EXPECT_EQ(file().qa.at(1), before.qa.at(1));
    EXPECT_EQ(file().qa.at(2), before.qa.at(2));
    EXPECT_EQ(current_cnt(), 1);
    EXPECT_EQ(course.record_count, 3);
}

TEST_P(EitherDirection, blanks_around_the_texts_are_dropped_and_no_others)
{
    begin_new("  Spain \t", " \t Ma  drid\r\n ");
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    expect_record(3, "Spain \t", "\t Ma  drid\r\n");
    EXPECT_EQ(view.typed().question, "Spain \t");
    EXPECT_EQ(view.typed().answer, "\t Ma  drid") << "a line end at the end of an answer is not shown";
}

TEST_P(EitherDirection, texts_are_stored_composed)
{
    begin_new("Cafe\u0301?", "A\u030Angstro\u0308m");
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    expect_record(3, "Café?", "Ångström");
}

TEST_P(EitherDirection, lengths_are_those_of_the_stored_texts)
{
    begin_new(many(" ", 50) + many("e\u0301", 200), many("a", 200) + many(" ", 50));
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    expect_record(3, many("é", 200), many("a", 200));
}

TEST_P(EitherDirection, empty_question_leaves_the_editor)
{
    for (const char* text : {"", "   "}) {
        begin_new(text, " Madrid");
        desktop.expect_box_like({.text = "The question is empty. No saving performed."}, BoxAnswer::ok);
        EXPECT_EQ(editor.save_record(), SaveResult::rejected);
        expect_left("", " Madrid");
    }
    EXPECT_EQ(file(), before);
}

TEST_P(EitherDirection, empty_answer_keeps_the_editor_open_at_the_answer)
{
    for (const char* text : {"", "   "}) {
        begin_change(" Where? ", text);
        desktop.expect_box_like({.text = "The answer is empty. No saving performed."}, BoxAnswer::ok);
        EXPECT_EQ(editor.save_record(), SaveResult::rejected);
        expect_open("Where?", "");
        EXPECT_TRUE(flags.edit_mode);
        EXPECT_EQ(view.caret(), "answer");
    }
    EXPECT_EQ(file(), before);
}

TEST_P(EitherDirection, empty_question_is_told_before_an_empty_answer)
{
    begin_new(" ", " ");
    desktop.expect_box("The question is empty. No saving performed.");
    EXPECT_EQ(editor.save_record(), SaveResult::rejected);
    expect_left("", " ");
}

TEST_P(EitherDirection, unchanged_record_is_saved_and_starts_again)
{
    begin_change(view.loaded().question, view.loaded().answer);
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    fakes::QaRow again = before.qa.at(0);
    again.q_side.attempts = again.q_side.fails = again.q_side.successes = 0;
    again.a_side.attempts = again.a_side.fails = again.a_side.successes = 0;
    EXPECT_EQ(file().qa.at(0), again);
}

TEST_P(EitherDirection, record_may_change_the_case_of_its_own_texts)
{
    begin_change(engine.text_compare.lower(view.loaded().question), engine.text_compare.lower(view.loaded().answer));
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    expect_texts(0, "france?", "paris");
}

TEST_P(EitherDirection, text_that_is_too_long_is_told_with_its_length)
{
    begin_change(view.loaded().question, many("a", 100) + " " + many("\U0001F426", 112) + "  ");
    desktop.expect_box_like({.text = "The answer has 213 characters; 200 fit.", .icon = platform::BoxIcon::exclamation},
                            BoxAnswer::ok);
    EXPECT_EQ(editor.save_record(), SaveResult::refused);
    expect_open(view.loaded().question, many("a", 100) + " " + many("\U0001F426", 112));
    EXPECT_EQ(view.caret(), "answer");
    EXPECT_EQ(file(), before);
}

TEST_P(EitherDirection, both_texts_that_are_too_long_are_told_in_one_box)
{
    begin_new(many("q", 201), many("a", 202));
    desktop.expect_box("The question has 201 characters; 200 fit. The answer has 202 characters; 200 fit.");
    EXPECT_EQ(editor.save_record(), SaveResult::refused);
    expect_open(many("q", 201), many("a", 202));
    EXPECT_EQ(view.caret(), "question");
    EXPECT_EQ(course.record_count, 3);
    EXPECT_EQ(current_cnt(), 0);
    view.type({"Spain?", "Madrid"});
    EXPECT_EQ(editor.save_record(), SaveResult::saved) << "a second try";
    expect_record(3, "Spain?", "Madrid");
}

class Inverted : public RecordEditorTest {
protected:
    void SetUp() override { open_course(true); }
};

TEST_F(Straight, question_that_is_there_already_keeps_the_editor_open_at_the_question)
{
    for (const char* text : {"Italy?", " ITALY? "}) {
        begin_new(text, "Milan");
        desktop.expect_box_like({.text = "Question is already in database."}, BoxAnswer::ok);
        EXPECT_EQ(editor.save_record(), SaveResult::rejected);
        expect_open(text[0] == ' ' ? "ITALY?" : "Italy?", "Milan");
        EXPECT_TRUE(flags.new_mode);
        EXPECT_EQ(view.caret(), "question");
    }
    EXPECT_EQ(file(), before);
    EXPECT_EQ(course.record_count, 3);
}

TEST_F(Straight, question_of_another_record_is_not_taken_by_a_change)
{
    begin_change("italy?", "Paris");
    desktop.expect_box("Question is already in database.");
    EXPECT_EQ(editor.save_record(), SaveResult::rejected);
    expect_open("italy?", "Paris");
    EXPECT_TRUE(flags.edit_mode);
    EXPECT_EQ(file(), before);
}

TEST_F(Straight, old_question_of_the_record_itself_is_free_after_the_change)
{
    begin_change("Gaul?", "Paris");
    ASSERT_EQ(editor.save_record(), SaveResult::saved);
    begin_new("France?", "Paris");
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    expect_texts(3, "France?", "Paris");
}

TEST_F(Straight, answer_may_repeat)
{
    begin_new("Spain?", "Rome");
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    begin_change("Spain?", "Paris");
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    expect_texts(3, "Spain?", "Paris");
}

TEST_F(Straight, question_that_is_an_answer_elsewhere_is_free)
{
    begin_new("Rome", "Italy?");
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    expect_texts(3, "Rome", "Italy?");
}

TEST_F(Inverted, answer_that_is_there_already_leaves_the_editor)
{
    for (const char* text : {"Italy?", "italy?"}) {
        begin_new("Milan", text);
        desktop.expect_box_like({.text = "Answer is already in database."}, BoxAnswer::ok);
        EXPECT_EQ(editor.save_record(), SaveResult::rejected);
        expect_left("Milan", text);
    }
    EXPECT_EQ(file(), before);
    EXPECT_EQ(course.record_count, 3);
}

TEST_F(Inverted, answer_of_another_record_is_not_taken_by_a_change)
{
    begin_change("Paris", "Italy?");
    desktop.expect_box("Answer is already in database.");
    EXPECT_EQ(editor.save_record(), SaveResult::rejected);
    expect_left("Paris", "Italy?");
    EXPECT_EQ(current_cnt(), 0) << "what stands in the boxes is no record";
    EXPECT_EQ(file(), before);
}

TEST_F(Inverted, question_may_repeat_and_the_record_stored_is_the_current_one)
{
    begin_new("Paris", "Largest town of France?");
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    EXPECT_EQ(current_cnt(), 4);
    begin_change("Rome", "Largest town of Italy?");
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    EXPECT_EQ(current_cnt(), 4);
    expect_texts(3, "Largest town of Italy?", "Rome");
    expect_texts(1, "Italy?", "Rome");
}

/// Records from other programs may contain duplicate questions.
TEST_F(Straight, second_of_two_records_of_one_question_is_changed_and_stays_the_current_one)
{
    ASSERT_EQ(bank.insert_record("France?", "Lyon"), 4);
    display.show_record(4);
    begin_change("France?", "Marseille");
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    EXPECT_EQ(current_cnt(), 4);
    expect_texts(3, "France?", "Marseille");
    EXPECT_EQ(file().qa.at(0), before.qa.at(0));
}

} // namespace
} // namespace cuedrill::drill
