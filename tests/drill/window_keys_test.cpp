#include "drill/drill_fixture.h"
#include "drill/drill_state.h"
#include "store/course.h"

namespace cuedrill::drill {
namespace {

using platform::Key;

class WindowKeysTest : public DrillFixture {
protected:
    void SetUp() override { start_with_three_questions(); }
};

TEST_F(WindowKeysTest, enter_shows_the_answer_of_the_question)
{
    yes();
    EXPECT_TRUE(press(Key::enter));
    EXPECT_EQ(answer(), "Paris");
    EXPECT_TRUE(logic->state.AwaitingVerdict);
    EXPECT_EQ(desktop.beeps, 0);
}

TEST_F(WindowKeysTest, the_policy_judges_the_keys_of_all_windows)
{
    const char box = 0;
    const platform::KeyEvent press{
        .kind = platform::KeyKind::escape, .milliseconds = 10'000, .focus = &box, .in_box = true};
    EXPECT_EQ(form1.window.on_key_event(press), platform::KeyJudgement::meant);
    EXPECT_EQ(form1.window.on_key_event(press), platform::KeyJudgement::stray);
}

platform::KeyPress with_alt(const char* letter, bool auto_repeat = false)
{
    return {.character = letter, .auto_repeat = auto_repeat, .modifier = platform::KeyModifier::alt};
}

TEST_F(WindowKeysTest, letters_with_alt_press_buttons_also_from_a_text_box)
{
    yes();
    form1.Text_a.take_focus();
    EXPECT_TRUE(press(with_alt("q", true)));
    EXPECT_EQ(question(), "France?") << "held down";
    EXPECT_TRUE(press(with_alt("q")));
    EXPECT_EQ(question(), "Italy?");
    form1.Text_a.take_focus();
    EXPECT_TRUE(press(with_alt("h")));
    EXPECT_TRUE(form1.t_hint.is_visible);
    EXPECT_TRUE(press(with_alt("t")));
    EXPECT_TRUE(logic->state.TypingMode);
    EXPECT_TRUE(press(with_alt("e")));
    EXPECT_TRUE(form1.Text_q.has_focus());
    EXPECT_FALSE(press(with_alt("a"))) << "opens a menu";
}

TEST_F(WindowKeysTest, enter_and_s_with_ctrl_save_in_the_editor_only)
{
    yes();
    for (const platform::KeyPress& key :
         {platform::KeyPress{.character = "s", .modifier = platform::KeyModifier::control},
          platform::KeyPress{.key = Key::enter, .modifier = platform::KeyModifier::control}}) {
        EXPECT_FALSE(press(key)) << "not in the editor";
        toolbar(9);
        form1.type(form1.Text_q, "Portugal" + key.character + "?");
        form1.type(form1.Text_a, "Madrid");
        platform::KeyPress held = key;
        held.auto_repeat = true;
        EXPECT_TRUE(press(held));
        EXPECT_NE(status(), "Saved.");
        EXPECT_TRUE(press(key));
        EXPECT_EQ(status(), "Saved.");
    }
}

TEST_F(WindowKeysTest, enter_only_beeps_while_a_verdict_is_awaited)
{
    yes();
    press(Key::enter);
    EXPECT_TRUE(press(Key::enter));
    EXPECT_EQ(desktop.beeps, 1);
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(stored(1).q_side.attempts, 4);
}

TEST_F(WindowKeysTest, enter_goes_to_the_control_without_a_question)
{
    EXPECT_FALSE(press(Key::enter));
    EXPECT_EQ(desktop.beeps, 0);
}

TEST_F(WindowKeysTest, enter_goes_to_the_control_when_the_answer_box_is_not_empty)
{
    yes();
    yes();
    EXPECT_FALSE(press(Key::enter));
    EXPECT_FALSE(logic->state.AwaitingVerdict);
}

TEST_F(WindowKeysTest, blanks_in_the_answer_box_count_as_empty)
{
    yes();
    form1.Text_a.text_value = "  ";
    EXPECT_TRUE(press(Key::enter));
    EXPECT_EQ(answer(), "Paris");
}

TEST_F(WindowKeysTest, plus_judges_the_answer_on_display_as_known)
{
    yes();
    press(Key::enter);
    const int pumps = desktop.pumps;
    EXPECT_TRUE(press("+"));
    EXPECT_EQ(desktop.pumps, pumps + 1);
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 1, 4, clock.time, clock.time}));
    EXPECT_EQ(question(), "Italy?");
}

TEST_F(WindowKeysTest, minus_judges_the_answer_on_display_as_not_known)
{
    yes();
    press(Key::enter);
    EXPECT_TRUE(press("-"));
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 2, 0, clock.time, clock.time}));
    EXPECT_EQ(question(), "Italy?");
}

TEST_F(WindowKeysTest, answer_is_compared_without_regard_to_case)
{
    yes();
    form1.Text_a.text_value = "pARIS";
    EXPECT_TRUE(press("+"));
    EXPECT_EQ(stored(1).q_side.successes, 4);
}

TEST_F(WindowKeysTest, plus_and_minus_are_ordinary_before_the_answer_is_on_display)
{
    EXPECT_FALSE(press("+"));
    yes();
    EXPECT_FALSE(press("+"));
    EXPECT_FALSE(press("-"));
    form1.Text_a.text_value = "Pari";
    EXPECT_FALSE(press("+"));
    EXPECT_EQ(stored(1).q_side.attempts, 4);
    EXPECT_EQ(question(), "France?");
}

TEST_F(WindowKeysTest, other_characters_go_to_the_control)
{
    yes();
    yes();
    for (const char* character : {"b", "X", "*", " ", "é", "="})
        EXPECT_FALSE(press(character)) << character;
    EXPECT_EQ(question(), "France?");
}

TEST_F(WindowKeysTest, letters_of_commands_show_the_answer_and_the_next_question)
{
    yes();
    EXPECT_TRUE(press("a"));
    EXPECT_EQ(answer(), "Paris");
    EXPECT_EQ(status(), "Press '+' or '-' to indicate success or failure");
    EXPECT_TRUE(press("Q"));
    EXPECT_EQ(question(), "Italy?");
    EXPECT_EQ(answer(), "");
}

TEST_F(WindowKeysTest, letters_of_commands_do_nothing_when_they_are_held_down)
{
    yes();
    for (const char* letter : {"a", "q"})
        EXPECT_TRUE(press(letter, true)) << letter;
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(answer(), "");
}

TEST_F(WindowKeysTest, letters_go_to_the_text_box_that_has_the_focus)
{
    yes();
    form1.Text_q.take_focus();
    EXPECT_FALSE(press("a"));
    EXPECT_FALSE(press("q"));
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(answer(), "");
}

TEST_F(WindowKeysTest, second_verdict_does_not_reach_the_next_question)
{
    yes();
    press(Key::enter);
    press("+");
    EXPECT_FALSE(press("+"));
    EXPECT_EQ(stored(2).q_side.attempts, 3);
}

TEST_F(WindowKeysTest, keys_that_are_held_down_do_nothing)
{
    yes();
    EXPECT_TRUE(press(Key::enter, true));
    EXPECT_EQ(answer(), "");
    press(Key::enter);
    EXPECT_TRUE(press(Key::enter, true));
    EXPECT_EQ(desktop.beeps, 0);
    EXPECT_TRUE(press("+", true));
    EXPECT_TRUE(press("-", true));
    EXPECT_EQ(stored(1).q_side.attempts, 4);
    EXPECT_TRUE(press(Key::escape, true));
    EXPECT_FALSE(ended);
}

TEST_F(WindowKeysTest, escape_ends_the_program_without_a_prompt)
{
    press(Key::escape);
    EXPECT_TRUE(ended);
    EXPECT_FALSE(logic->course.is_open());
}

TEST_F(WindowKeysTest, escape_leaves_a_text_box_first)
{
    for (fakes::FakeTextBox* box : {&form1.Text_q, &form1.Text_a}) {
        box->take_focus();
        const int focused = form1.bot_focus.focused;
        EXPECT_TRUE(press(Key::escape)) << box->name;
        EXPECT_EQ(form1.bot_focus.focused, focused + 1) << box->name;
        EXPECT_FALSE(ended);
    }
    press(Key::escape);
    EXPECT_TRUE(ended);
}

class EmptyAnswer : public DrillFixture {
protected:
    void SetUp() override
    {
        builder.question("Silence?", "").level(1).attempts(4).fails(1).tested_ago(24h);
        start();
        yes();
    }
};

TEST_F(EmptyAnswer, is_not_judged_before_it_was_shown)
{
    EXPECT_FALSE(press("+"));
    EXPECT_FALSE(press("-"));
    EXPECT_EQ(stored(1).q_side.attempts, 4);
    EXPECT_EQ(question(), "Silence?");
}

TEST_F(EmptyAnswer, is_judged_once_the_command_has_shown_it)
{
    choose("m_show_answer");
    desktop.expect_box(nothing_mature);
    EXPECT_TRUE(press("-"));
    EXPECT_EQ(stored(1).q_side.fails, 2);
}

TEST_F(EmptyAnswer, is_judged_once_the_dialog_has_shown_it)
{
    yes();
    desktop.expect_box(nothing_mature);
    EXPECT_TRUE(press("+"));
    EXPECT_EQ(stored(1).q_side.attempts, 5);
}

struct Answer {
    const char* name;
    const char* stored;
    const char* given_back; ///< text returned by a text box that normalises line ends
};

class AnswerOfSeveralLines : public DrillFixture, public testing::WithParamInterface<Answer> {};

TEST_P(AnswerOfSeveralLines, is_judged_whatever_line_ends_the_box_gives_back)
{
    builder.question("Rivers?", GetParam().stored).level(0).attempts(0).fails(0).tested_ago(1h);
    start();
    yes();
    press(Key::enter);
    ASSERT_EQ(answer(), GetParam().stored);
    form1.Text_a.text_value = GetParam().given_back;
    desktop.expect_box(nothing_mature);
    EXPECT_TRUE(press("+"));
    EXPECT_EQ(stored(1).q_side.attempts, 1);
}

INSTANTIATE_TEST_SUITE_P(LineEnds, AnswerOfSeveralLines,
                         testing::Values(Answer{"pairs", "Po\r\nArno", "Po\r\nArno"},
                                         Answer{"lone_lf", "Po\nArno", "Po\r\nArno"},
                                         Answer{"lone_cr", "Po\rArno", "Po\r\nArno"},
                                         Answer{"line_separator", "Po\u2028Arno", "Po\r\nArno"},
                                         Answer{"paragraph_separator", "Po\u2029Arno", "Po\r\nArno"}),
                         [](const auto& answer) { return std::string(answer.param.name); });

} // namespace
} // namespace cuedrill::drill
