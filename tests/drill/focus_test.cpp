#include "drill/drill_fixture.h"
#include "drill/drill_state.h"

namespace cuedrill::drill {
namespace {

/// The keyboard focus stays on a usable button while buttons appear, disappear and are disabled.
class KeyboardDrill : public DrillFixture {
protected:
    /// Presses the focused button with the space bar.
    void press_with_keyboard(fakes::FakeButton& button)
    {
        ASSERT_TRUE(button.usable()) << button.name;
        button.take_focus();
        user([&] { button.activate(); });
    }
};

class Focus : public KeyboardDrill {
protected:
    void SetUp() override { start_with_three_questions(); }

    void reveal()
    {
        yes();
        yes();
        ASSERT_EQ(logic->state.dialog, DialogState::AskKnown);
    }
};

TEST_F(Focus, is_on_yes_after_loading)
{
    EXPECT_TRUE(form1.bot_yes.has_focus());
}

TEST_F(Focus, goes_from_ignore_to_yes_when_ignore_disappears)
{
    reveal();
    press_with_keyboard(form1.bot_other);
    ASSERT_FALSE(form1.bot_other.is_visible);
    EXPECT_TRUE(form1.bot_yes.has_focus());
    // It stays there when the next answer brings "Ignore" back.
    press_with_keyboard(form1.bot_yes);
    ASSERT_TRUE(form1.bot_other.usable());
    EXPECT_TRUE(form1.bot_yes.has_focus());
}

TEST_F(Focus, stays_on_a_button_that_stays_usable)
{
    yes();
    press_with_keyboard(form1.bot_no);
    EXPECT_TRUE(form1.bot_no.has_focus());
    press_with_keyboard(form1.bot_yes);
    EXPECT_TRUE(form1.bot_yes.has_focus());
}

TEST_F(Focus, outside_of_the_buttons_is_left_there)
{
    reveal();
    form1.bot_focus.set_focus();
    form1.journal.clear();
    ignore();
    for (const fakes::FakeButton* button : {&form1.bot_yes, &form1.bot_no, &form1.bot_other})
        EXPECT_EQ(times_noted(button->name + ".focus"), 0) << button->name;
}

/// A course with one question that was tested this second.
class FocusWithoutQuestion : public KeyboardDrill {
protected:
    void SetUp() override
    {
        builder.question("France?", "Paris").level(1).attempts(1).fails(0).tested_ago(0s);
        start();
    }
};

TEST_F(FocusWithoutQuestion, goes_from_yes_to_no_and_back_when_there_is_a_question_again)
{
    desktop.expect_box(nothing_mature);
    press_with_keyboard(form1.bot_yes);
    ASSERT_FALSE(form1.bot_yes.usable());
    EXPECT_TRUE(form1.bot_no.has_focus());
    clock.advance_seconds(5 * 60 + 1);
    press_with_keyboard(form1.bot_no);
    EXPECT_EQ(question(), "France?");
    EXPECT_TRUE(form1.bot_yes.has_focus());
}

TEST_F(FocusWithoutQuestion, goes_to_ignore_when_it_alone_is_left)
{
    clock.advance_seconds(5 * 60 + 1);
    press_with_keyboard(form1.bot_yes);
    press_with_keyboard(form1.bot_yes);
    desktop.expect_box(nothing_mature);
    choose("m_display_next_question");
    ASSERT_FALSE(form1.bot_yes.usable());
    EXPECT_TRUE(form1.bot_other.has_focus());
}

} // namespace
} // namespace cuedrill::drill
