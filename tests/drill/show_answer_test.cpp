#include "drill/drill_fixture.h"
#include "drill/drill_state.h"

namespace cuedrill::drill {
namespace {

constexpr const char* request = "Press '+' or '-' to indicate success or failure";

class ShowAnswerCommand : public DrillFixture {
protected:
    void SetUp() override
    {
        start_with_three_questions();
        yes();
        choose("m_show_answer");
    }

    void expect_no_request()
    {
        EXPECT_FALSE(logic->state.AwaitingVerdict);
        EXPECT_EQ(form1.screen.P_status.background, std::nullopt);
        EXPECT_FALSE(form1.screen.P_status.bold);
        EXPECT_EQ(form1.screen.P_status.alignment, platform::Alignment::left);
        EXPECT_TRUE(form1.screen.panel_a.visible);
    }
};

TEST_F(ShowAnswerCommand, reveals_the_answer_on_green)
{
    EXPECT_EQ(answer(), "Paris");
    EXPECT_EQ(form1.Text_a.background, common::light_green);
    EXPECT_TRUE(form1.Text_a.is_visible);
    EXPECT_FALSE(form1.screen.panel_a.visible) << "only the heading of the answer goes";
    EXPECT_TRUE(logic->state.AnswerShown);
}

TEST_F(ShowAnswerCommand, asks_for_the_verdict_with_emphasis)
{
    EXPECT_TRUE(logic->state.AwaitingVerdict);
    EXPECT_EQ(status(), request);
    EXPECT_EQ(form1.screen.P_status.background, common::pure_red);
    EXPECT_TRUE(form1.screen.P_status.bold);
    EXPECT_EQ(form1.screen.P_status.alignment, platform::Alignment::emphasised);
}

TEST_F(ShowAnswerCommand, request_does_not_expire)
{
    clock.advance_seconds(3600);
    form1.timer_250_ms.tick();
    EXPECT_EQ(status(), request);
}

TEST_F(ShowAnswerCommand, leaves_the_dialog_in_its_state)
{
    EXPECT_EQ(logic->state.dialog, DialogState::OfferAnswer);
    EXPECT_EQ(prompt(), "Do you want to see the answer?");
}

TEST_F(ShowAnswerCommand, clears_the_mark_of_the_user)
{
    logic->state.SelfJudgement = "-";
    choose("m_show_answer");
    EXPECT_EQ(form1.Text_a.background, common::light_green);
    EXPECT_EQ(logic->state.SelfJudgement, "");
}

TEST_F(ShowAnswerCommand, request_goes_with_a_success)
{
    EXPECT_TRUE(press("+"));
    expect_no_request();
    EXPECT_EQ(status(), "score of previous question increased from 2 to 4 (elapsed 1.00 days)");
    EXPECT_EQ(question(), "Italy?");
}

TEST_F(ShowAnswerCommand, request_goes_with_a_failure)
{
    EXPECT_TRUE(press("-"));
    expect_no_request();
    EXPECT_EQ(status(), "");
    EXPECT_EQ(question(), "Italy?");
}

TEST_F(ShowAnswerCommand, request_goes_when_the_question_is_left)
{
    no();
    expect_no_request();
    EXPECT_EQ(status(), "");
    EXPECT_FALSE(logic->state.AnswerShown);
    EXPECT_EQ(answer(), "");
    EXPECT_EQ(form1.Text_a.background, std::nullopt);
}

TEST_F(ShowAnswerCommand, request_goes_when_nothing_else_is_mature)
{
    no();
    no();
    choose("m_show_answer");
    desktop.expect_box(nothing_mature);
    no();
    expect_no_request();
    EXPECT_TRUE(status().starts_with("The next question is due at "));
    EXPECT_EQ(answer(), "");
}

TEST_F(ShowAnswerCommand, verdict_may_be_given_with_the_buttons)
{
    yes();
    ASSERT_EQ(logic->state.dialog, DialogState::AskKnown);
    no();
    expect_no_request();
    EXPECT_EQ(stored(1).q_side.successes, 0);
}

TEST_F(ShowAnswerCommand, verdict_may_be_given_with_the_menu)
{
    choose("m_set_failure");
    expect_no_request();
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 2, 0, clock.time, clock.time}));
    EXPECT_EQ(question(), "Italy?");
    choose("m_set_success");
    EXPECT_EQ(stored(2).q_side, (fakes::SideRow{4, 3, 3, clock.time, clock.time}));
    EXPECT_EQ(question(), "Spain?");
}

} // namespace
} // namespace cuedrill::drill
