#include "drill/drill_fixture.h"
#include "drill/drill_state.h"
#include "drill/status_line.h"

namespace cuedrill::drill {
namespace {

using platform::Key;
using platform::KeyPress;

KeyPress character(const char* text, bool auto_repeat = false)
{
    return {.key = Key::character, .character = text, .auto_repeat = auto_repeat};
}

/// A key pressed twice: quickly, as by a trembling finger, or slowly, as on purpose.
class TwoPresses : public DrillFixture {
protected:
    void SetUp() override { start_with_three_questions(); }

    /// Presses a key 0.1 s after the last one.
    void at_once(const KeyPress& key)
    {
        clock.steady_seconds_more += 0.1;
        user([&] { form1.press_in(form1.Text_a, key); });
    }

    void expect_nothing_scored() const
    {
        EXPECT_EQ(stored(1).q_side.attempts, 4);
        EXPECT_EQ(stored(2).q_side.attempts, 3);
    }
};

TEST_F(TwoPresses, of_enter_do_not_reveal_the_next_answer)
{
    yes();
    type_answer("Paris");
    enter_in_answer();
    ASSERT_EQ(question(), "Italy?");
    at_once({.key = Key::enter});
    EXPECT_EQ(answer(), "");
    EXPECT_FALSE(logic->state.AwaitingVerdict);
    enter_in_answer();
    EXPECT_EQ(answer(), "Rome");
}

TEST_F(TwoPresses, of_enter_in_an_empty_box_do_not_even_beep)
{
    yes();
    enter_in_answer();
    at_once({.key = Key::enter});
    EXPECT_EQ(desktop.beeps, 0);
    enter_in_answer();
    EXPECT_EQ(desktop.beeps, 1);
}

TEST_F(TwoPresses, of_a_sign_in_an_empty_box_never_score)
{
    for (const char* sign : {"+", "-"}) {
        choose("m_display_next_question");
        press_in_answer(sign);
        const std::string revealed = answer();
        ASSERT_NE(revealed, "");
        at_once(character(sign));
        EXPECT_EQ(answer(), revealed);
    }
    expect_nothing_scored();
    press_in_answer("-");
    EXPECT_EQ(stored(2).q_side.attempts, 4) << "a slow one does";
}

TEST_F(TwoPresses, of_enter_are_two_when_a_box_was_closed_in_between)
{
    yes();
    type_answer("Rome");
    desktop.expect_box("Your answer is: \r\n\r\n   Rome\r\n\r\nThe correct answer is: \r\n\r\n   Paris");
    enter_in_answer();
    ASSERT_EQ(question(), "Italy?");
    at_once({.key = Key::enter, .auto_repeat = true});
    EXPECT_EQ(answer(), "") << "the key is still held";
    at_once({.key = Key::enter});
    EXPECT_EQ(answer(), "Rome");
}

TEST_F(TwoPresses, of_a_sign_do_not_reveal_the_next_answer)
{
    yes();
    choose("m_show_answer");
    press_in_answer("+");
    ASSERT_EQ(question(), "Italy?");
    at_once(character("+"));
    EXPECT_EQ(answer(), "");
    EXPECT_EQ(logic->state.SelfJudgement, "");
}

TEST_F(TwoPresses, of_the_star_are_one)
{
    yes();
    press_in_answer("*");
    ASSERT_TRUE(logic->state.AwaitingVerdict);
    logic->status.ShowStatus("unchanged", 0);
    at_once(character("*"));
    EXPECT_EQ(status(), "unchanged");
    press_in_answer("*");
    EXPECT_NE(status(), "unchanged");
}

TEST_F(TwoPresses, of_escape_in_a_box_do_not_end_the_program)
{
    yes();
    press_in_answer({.key = Key::escape});
    ASSERT_FALSE(form1.Text_a.has_focus());
    clock.steady_seconds_more += 0.1;
    EXPECT_TRUE(form1.window.press(Key::escape));
    EXPECT_FALSE(ended);
    press(Key::escape);
    EXPECT_TRUE(ended);
}

TEST_F(TwoPresses, of_escape_in_front_of_a_hint_do_not_end_the_program)
{
    yes();
    toolbar(4);
    press(Key::escape);
    ASSERT_FALSE(form1.panel_lista.is_visible);
    clock.steady_seconds_more += 0.1;
    EXPECT_TRUE(form1.window.press(Key::escape));
    EXPECT_FALSE(ended);
}

TEST_F(TwoPresses, of_a_letter_type_the_second_one_into_the_box_that_the_first_one_opened)
{
    press("i");
    ASSERT_TRUE(form1.Text_q.has_focus());
    user([this] { form1.press_in(form1.Text_q, character("i", true)); });
    EXPECT_EQ(question(), "") << "the key is still held";
    user([this] { form1.press_in(form1.Text_q, character("i")); });
    EXPECT_EQ(question(), "i");
}

TEST_F(TwoPresses, of_a_sign_that_is_still_held_leave_the_next_answer_empty)
{
    choose("m_always_let_me_type");
    yes();
    choose("m_show_answer");
    press_in_answer("+");
    ASSERT_EQ(question(), "Italy?");
    ASSERT_TRUE(logic->state.TypingMode);
    press_in_answer(character("+", true));
    EXPECT_EQ(answer(), "");
    press_in_answer("+");
    EXPECT_EQ(answer(), "+");
}

} // namespace
} // namespace cuedrill::drill
