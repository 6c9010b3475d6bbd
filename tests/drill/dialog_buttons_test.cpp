#include "drill/drill_fixture.h"
#include "drill/drill_state.h"

namespace cuedrill::drill {
namespace {

using platform::MouseButton;

class ButtonGeometry : public DrillFixture {
protected:
    void SetUp() override { start_with_three_questions(); }

    static void expect_place(const fakes::FakeButton& button, common::Twips left, common::Twips width)
    {
        EXPECT_EQ(button.left, left) << button.name;
        EXPECT_EQ(button.width_value, width) << button.name;
    }
};

TEST_F(ButtonGeometry, two_buttons_share_the_strip)
{
    form1.dialog_strip.resize(3300);
    expect_place(form1.bot_yes, 100, 1550);
    expect_place(form1.bot_no, 1750, 1550);
}

TEST_F(ButtonGeometry, three_buttons_share_the_strip)
{
    yes();
    form1.dialog_strip.resize(3300);
    yes();
    expect_place(form1.bot_yes, 100, 1000);
    expect_place(form1.bot_no, 1200, 1000);
    expect_place(form1.bot_other, 2300, 1000);
}

TEST_F(ButtonGeometry, widths_are_cut_to_whole_twips)
{
    form1.dialog_strip.resize(3301);
    expect_place(form1.bot_yes, 100, 1550);
    expect_place(form1.bot_no, 1750, 1550);
    yes();
    yes();
    form1.dialog_strip.resize(3302);
    expect_place(form1.bot_yes, 100, 1000);
    expect_place(form1.bot_other, 2300, 1000);
}

TEST_F(ButtonGeometry, buttons_follow_the_window)
{
    yes();
    yes();
    form1.dialog_strip.resize(6300);
    expect_place(form1.bot_yes, 100, 2000);
    expect_place(form1.bot_no, 2200, 2000);
    expect_place(form1.bot_other, 4300, 2000);
}

TEST_F(ButtonGeometry, two_buttons_come_back_after_the_verdict)
{
    yes();
    form1.dialog_strip.resize(3300);
    yes();
    yes();
    expect_place(form1.bot_yes, 100, 1550);
    expect_place(form1.bot_no, 1750, 1550);
}

class RightClickOnYes : public DrillFixture {
protected:
    void SetUp() override { start_with_three_questions(); }

    void right_click()
    {
        user([this] { form1.bot_yes.right_click(); });
    }
    /// As on a system where the right button also makes a click.
    void right_click_with_a_click()
    {
        user([this] {
            form1.bot_yes.press(MouseButton::right);
            form1.bot_yes.activate();
            form1.bot_yes.release(MouseButton::right);
        });
    }
};

TEST_F(RightClickOnYes, ends_the_program_at_the_start)
{
    right_click();
    EXPECT_TRUE(ended);
}

TEST_F(RightClickOnYes, asks_another_question_instead_of_revealing)
{
    yes();
    right_click();
    EXPECT_EQ(logic->state.dialog, DialogState::OfferAnswer);
    EXPECT_EQ(question(), "Italy?");
    EXPECT_EQ(stored(1).q_side.date_last_show, clock.time);
}

TEST_F(RightClickOnYes, scores_a_failure_once)
{
    yes();
    yes();
    right_click_with_a_click();
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 2, 0, clock.time, clock.time}));
    EXPECT_EQ(logic->state.dialog, DialogState::OfferAnswer);
    EXPECT_EQ(question(), "Italy?");
    EXPECT_EQ(answer(), "") << "the click that follows must not answer the next prompt";
}

TEST_F(RightClickOnYes, does_not_swallow_the_next_real_click)
{
    yes();
    right_click();
    ASSERT_EQ(question(), "Italy?");
    yes();
    EXPECT_EQ(answer(), "Rome");
}

TEST_F(RightClickOnYes, does_not_swallow_the_next_press_by_keyboard)
{
    yes();
    right_click();
    user([this] { form1.bot_yes.activate(); });
    EXPECT_EQ(answer(), "Rome");
}

TEST_F(RightClickOnYes, consumed_click_gives_way_to_the_next_one)
{
    yes();
    user([this] { form1.bot_yes.press(MouseButton::right); });
    ASSERT_TRUE(logic->state.RightClickConsumed);
    user([this] { form1.bot_yes.activate(); });
    EXPECT_FALSE(logic->state.RightClickConsumed);
    EXPECT_EQ(answer(), "");
    user([this] { form1.bot_yes.activate(); });
    EXPECT_EQ(answer(), "Rome");
}

TEST_F(RightClickOnYes, other_buttons_of_the_mouse_do_nothing_by_themselves)
{
    yes();
    logic->state.RightClickConsumed = true;
    user([this] { form1.bot_yes.press(MouseButton::middle); });
    EXPECT_FALSE(logic->state.RightClickConsumed);
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(answer(), "");
}

} // namespace
} // namespace cuedrill::drill
