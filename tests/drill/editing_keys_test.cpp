#include "drill/drill_fixture.h"
#include "drill/drill_state.h"
#include "drill/edit_flags.h"
#include "drill/record_editor.h"
#include "store/course.h"

namespace cuedrill::drill {
namespace {

using platform::Key;

constexpr const char* how_to = "Type the question and its answer, then press Save. Escape leaves without saving.";
constexpr const char* not_saved = "The changes are not saved.";

/// The first question is on display.
class KeysOfTheEditor : public DrillFixture {
protected:
    void SetUp() override
    {
        start_with_three_questions();
        yes();
        before = fakes::read_course(path);
    }

    /// Replaces the text of the box by typing.
    void retype(fakes::FakeTextBox& box, std::string_view text)
    {
        box.selection = {0, common::code_points(box.text_value)};
        form1.type(box, text);
    }

    void expect_nothing_judged() const
    {
        EXPECT_EQ(fakes::read_course(path), before);
        EXPECT_EQ(desktop.beeps, 0);
        EXPECT_TRUE(desktop.boxes.empty());
    }

    void expect_left(const std::string& question_text, const std::string& answer_text)
    {
        EXPECT_FALSE(logic->editor.editing());
        EXPECT_TRUE(form1.Text_q.locked);
        EXPECT_TRUE(form1.Text_a.locked);
        EXPECT_EQ(question(), question_text);
        EXPECT_EQ(answer(), answer_text);
        EXPECT_EQ(form1.focus.owner, &form1.bot_focus);
        EXPECT_FALSE(ended);
        expect_nothing_judged();
    }

    fakes::CourseContents before;
};

TEST_F(KeysOfTheEditor, enter_makes_a_line_in_a_new_record)
{
    toolbar(9);
    for (fakes::FakeTextBox* box : {&form1.Text_q, &form1.Text_a}) {
        form1.type(*box, "Po");
        form1.press_in(*box, {.key = Key::enter});
        form1.type(*box, "Arno");
        EXPECT_EQ(box->text_value, "Po\r\nArno") << box->name;
    }
    expect_nothing_judged();
}

TEST_F(KeysOfTheEditor, enter_makes_a_line_in_an_answer_that_was_emptied)
{
    toolbar(8);
    form1.Text_a.text_value.clear();
    enter_in_answer();
    EXPECT_EQ(answer(), "\r\n");
    EXPECT_FALSE(logic->state.AwaitingVerdict);
    EXPECT_TRUE(logic->editor.editing());
    expect_nothing_judged();
}

TEST_F(KeysOfTheEditor, signs_are_ordinary_characters_behind_the_answer_that_is_shown)
{
    toolbar(8);
    ASSERT_EQ(answer(), "Paris");
    type_answer("+-*");
    EXPECT_EQ(answer(), "Paris+-*");
    expect_nothing_judged();
}

TEST_F(KeysOfTheEditor, signs_are_ordinary_characters_in_an_empty_box)
{
    toolbar(8);
    for (const char* sign : {"+", "-", "*"}) {
        form1.Text_a.text_value.clear();
        type_answer(sign);
        EXPECT_EQ(answer(), sign);
    }
    EXPECT_EQ(logic->state.SelfJudgement, "");
    expect_nothing_judged();
}

TEST_F(KeysOfTheEditor, signs_judge_nothing_outside_the_boxes)
{
    toolbar(8);
    form1.bot_focus.set_focus();
    EXPECT_FALSE(press("+"));
    EXPECT_FALSE(press("-"));
    EXPECT_TRUE(logic->editor.editing());
    expect_nothing_judged();
}

TEST_F(KeysOfTheEditor, selected_text_is_replaced_by_what_is_typed)
{
    toolbar(8);
    retype(form1.Text_a, "Lyon");
    EXPECT_EQ(answer(), "Lyon");
}

TEST_F(KeysOfTheEditor, letter_of_the_command_can_be_the_first_one_of_the_text)
{
    press("i");
    ASSERT_TRUE(form1.Text_q.has_focus());
    form1.type(form1.Text_q, "iguana?");
    EXPECT_EQ(question(), "iguana?");
}

TEST_F(KeysOfTheEditor, letters_of_commands_that_cannot_be_used_do_nothing)
{
    toolbar(8);
    form1.bot_focus.set_focus();
    for (const char* letter : {"a", "h", "t", "e", "i", "d"})
        EXPECT_TRUE(press(letter)) << letter;
    EXPECT_TRUE(logic->edit_flags.edit_mode);
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(answer(), "Paris");
    expect_nothing_judged();
}

TEST_F(KeysOfTheEditor, change_shows_the_answer_that_was_hidden_and_withdraws_the_request_for_a_verdict)
{
    choose("m_show_answer");
    ASSERT_FALSE(form1.screen.panel_a.visible);
    choose("m_edit");
    EXPECT_TRUE(form1.screen.panel_a.visible);
    EXPECT_EQ(answer(), "Paris");
    EXPECT_EQ(form1.Text_a.background, std::nullopt);
    EXPECT_EQ(status(), "Saving starts this record's history again.");
    EXPECT_EQ(form1.screen.P_status.background, std::nullopt);
    EXPECT_FALSE(logic->state.AwaitingVerdict);
}

TEST_F(KeysOfTheEditor, change_takes_the_place_of_an_answer_that_was_begun)
{
    toolbar(5);
    type_answer("Lyo");
    toolbar(8);
    EXPECT_EQ(answer(), "Paris");
    EXPECT_EQ(form1.screen.panel_a.text, "Answer");
    EXPECT_TRUE(form1.Text_q.has_focus());
    EXPECT_FALSE(form1.Text_q.locked);
    EXPECT_FALSE(form1.Text_a.locked);
}

TEST_F(KeysOfTheEditor, status_line_tells_how_to_go_on_while_something_is_typed)
{
    toolbar(9);
    clock.advance_seconds(600);
    form1.timer_250_ms.tick();
    EXPECT_EQ(status(), how_to);
}

TEST_F(KeysOfTheEditor, status_line_tells_what_saving_a_change_costs_while_it_is_made)
{
    toolbar(8);
    clock.advance_seconds(600);
    form1.timer_250_ms.tick();
    EXPECT_EQ(status(), "Saving starts this record's history again.");
    press(Key::escape);
    EXPECT_EQ(status(), "");
    toolbar(9);
    EXPECT_EQ(status(), how_to);
}

TEST_F(KeysOfTheEditor, escape_leaves_a_change_with_its_texts_and_says_so)
{
    toolbar(8);
    retype(form1.Text_q, "Gaul?");
    press(Key::escape);
    expect_left("Gaul?", "Paris");
    EXPECT_EQ(status(), not_saved);
    clock.advance_seconds(600);
    form1.timer_250_ms.tick();
    EXPECT_EQ(status(), not_saved);
}

TEST_F(KeysOfTheEditor, escape_leaves_a_new_record_with_its_texts)
{
    toolbar(9);
    form1.type(form1.Text_q, "Norway?");
    form1.type(form1.Text_a, "Oslo");
    press(Key::escape);
    expect_left("Norway?", "Oslo");
    EXPECT_EQ(status(), not_saved);
    EXPECT_EQ(logic->state.shown.current_cnt(), 0);
    EXPECT_FALSE(press(Key::enter)) << "no question is on display";
    EXPECT_EQ(answer(), "Oslo");
}

TEST_F(KeysOfTheEditor, escape_says_nothing_where_nothing_was_changed)
{
    toolbar(8);
    press(Key::escape);
    expect_left("France?", "Paris");
    EXPECT_EQ(status(), "");
    toolbar(9);
    press(Key::escape);
    expect_left("", "");
    EXPECT_EQ(status(), "");
}

TEST_F(KeysOfTheEditor, escape_leaves_the_editor_from_anywhere_and_the_program_only_then)
{
    toolbar(8);
    form1.bot_focus.set_focus();
    press(Key::escape);
    expect_left("France?", "Paris");
    EXPECT_TRUE(press(Key::escape, true)) << "the key is still held down";
    EXPECT_FALSE(ended);
    press(Key::escape);
    EXPECT_TRUE(ended);
}

TEST_F(KeysOfTheEditor, changed_question_that_was_left_is_no_record_to_be_judged)
{
    toolbar(8);
    retype(form1.Text_q, "Gaul?");
    press(Key::escape);
    EXPECT_EQ(logic->state.shown.current_cnt(), 0);
    EXPECT_FALSE(press("+"));
    for (const int button : {2, 5, 6, 7, 8})
        EXPECT_FALSE(form1.toolbar(button).is_enabled) << button;
    EXPECT_EQ(stored(1).q, "France?");
    EXPECT_EQ(stored(1).q_side.attempts, 4);
}

TEST_F(KeysOfTheEditor, changed_answer_that_was_left_is_no_verdict_for_a_sign)
{
    toolbar(8);
    retype(form1.Text_a, "Lyon");
    press(Key::escape);
    EXPECT_FALSE(press("+"));
    EXPECT_FALSE(press("-"));
    EXPECT_EQ(answer(), "Lyon");
    expect_nothing_judged();
}

TEST_F(KeysOfTheEditor, options_and_statistics_leave_the_texts_alone)
{
    toolbar(8);
    retype(form1.Text_a, "Lyon");
    desktop.expect_box("Mature questions of a given level will be extracted randomly");
    for (const char* command : {"m_list_mode", "m_always_let_me_type", "m_random_extraction", "m_list_mode"})
        choose(command);
    form1.timer_1_min.tick();
    EXPECT_TRUE(logic->edit_flags.edit_mode);
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(answer(), "Lyon");
    EXPECT_FALSE(form1.Text_q.locked);
    EXPECT_FALSE(form1.Text_a.locked);
    EXPECT_FALSE(form1.panel_lista.is_visible);
    EXPECT_FALSE(logic->state.TypingMode);
}

/// The editor was left a moment ago with unsaved texts.
class PauseOfTheKeys : public KeysOfTheEditor {
protected:
    void leave_with_escape()
    {
        toolbar(9);
        form1.type(form1.Text_q, "Norway?");
        form1.type(form1.Text_a, "Oslo");
        press(Key::escape);
        expect_left("Norway?", "Oslo");
    }

    void leave_by_rejection()
    {
        toolbar(9);
        form1.type(form1.Text_a, "Oslo");
        desktop.expect_box("The question is empty. No saving performed.");
        toolbar(10);
        ASSERT_FALSE(logic->editor.editing());
    }

    /// Presses a key this many seconds after the last one.
    template <class... Press>
    bool press_after(double seconds, const Press&... key)
    {
        clock.steady_seconds_more += seconds;
        bool swallowed = false;
        user([&] { swallowed = form1.window.press(key...); });
        return swallowed;
    }
};

TEST_F(PauseOfTheKeys, keeps_escape_from_ending_the_program_for_a_second)
{
    leave_with_escape();
    for (const double seconds : {0.17, 0.4, 0.42}) {
        EXPECT_TRUE(press_after(seconds, Key::escape));
        EXPECT_FALSE(ended);
        expect_left("Norway?", "Oslo");
    }
    press_after(0.02, Key::escape);
    EXPECT_TRUE(ended);
}

TEST_F(PauseOfTheKeys, holds_no_other_key_after_escape)
{
    leave_with_escape();
    EXPECT_TRUE(press_after(0.1, "i"));
    EXPECT_TRUE(logic->edit_flags.new_mode);
}

TEST_F(PauseOfTheKeys, is_none_where_nothing_was_typed)
{
    toolbar(8);
    press(Key::escape);
    press_after(0.5, Key::escape);
    EXPECT_TRUE(ended);
}

TEST_F(PauseOfTheKeys, keeps_all_keys_from_running_commands_after_a_rejection)
{
    leave_by_rejection();
    for (const char* key : {"q", "e", "i", "d", "s", " ", "+"})
        EXPECT_TRUE(press_after(0.1, key)) << key;
    EXPECT_TRUE(press_after(0.1, Key::enter));
    EXPECT_TRUE(press_after(0.1, Key::escape));
    EXPECT_FALSE(ended);
    EXPECT_FALSE(logic->editor.editing());
    EXPECT_EQ(answer(), "Oslo");
    press_after(0.12, "q");
    EXPECT_EQ(question(), "France?");
}

TEST_F(PauseOfTheKeys, ends_with_a_new_text)
{
    leave_by_rejection();
    toolbar(9);
    EXPECT_FALSE(press_after(0.1, "q"));
    press_after(0.1, Key::escape);
    EXPECT_FALSE(logic->editor.editing());
}

TEST_F(PauseOfTheKeys, is_none_after_a_rejection_that_keeps_the_editor)
{
    toolbar(9);
    form1.type(form1.Text_q, "Norway?");
    desktop.expect_box("The answer is empty. No saving performed.");
    toolbar(10);
    press_after(0.2, Key::escape);
    EXPECT_FALSE(logic->editor.editing());
}

/// "Insert" empties the boxes, but unsaved texts in them can be restored by undo.
class UndoOfInsert : public PauseOfTheKeys {};

TEST_F(UndoOfInsert, brings_back_what_was_left)
{
    leave_with_escape();
    toolbar(9);
    EXPECT_EQ(question(), "");
    EXPECT_EQ(answer(), "");
    form1.Text_q.undo();
    form1.Text_a.undo();
    EXPECT_EQ(question(), "Norway?");
    EXPECT_EQ(answer(), "Oslo");
    toolbar(10);
    EXPECT_EQ(stored(4).q, "Norway?");
}

TEST_F(UndoOfInsert, brings_back_no_question_that_was_on_display)
{
    toolbar(9);
    form1.Text_q.undo();
    form1.Text_a.undo();
    EXPECT_EQ(question(), "");
    EXPECT_EQ(answer(), "");
}

class LinesOfOtherPrograms : public DrillFixture {};

TEST_F(LinesOfOtherPrograms, are_no_changes_when_the_box_gives_them_back_as_its_own)
{
    builder.question("Rivers?", "Po\nArno").level(0).attempts(1).fails(1).tested_ago(1h);
    start();
    yes();
    toolbar(8);
    form1.Text_a.text_value = "Po\r\nArno";
    press(Key::escape);
    EXPECT_FALSE(logic->editor.editing());
    EXPECT_EQ(status(), "");
}

} // namespace
} // namespace cuedrill::drill
