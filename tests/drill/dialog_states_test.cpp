#include "drill/display.h"
#include "drill/drill_fixture.h"
#include "drill/drill_state.h"
#include "drill/question_dialog.h"
#include "store/course.h"

namespace cuedrill::drill {
namespace {

constexpr const char* ask_to_start = "Shall I ask you a question?";
constexpr const char* offer_answer = "Do you want to see the answer?";
constexpr const char* ask_known = "Did you know the answer?";

class DialogStates : public DrillFixture {
protected:
    void SetUp() override { start_with_three_questions(); }

    [[nodiscard]] DialogState state() const { return logic->state.dialog; }

    void expect_strip(const char* expected_prompt, const char* yes_caption, const char* no_caption, bool with_other)
    {
        EXPECT_EQ(prompt(), expected_prompt);
        EXPECT_EQ(form1.bot_yes.caption_value, yes_caption);
        EXPECT_EQ(form1.bot_no.caption_value, no_caption);
        EXPECT_EQ(form1.bot_other.is_visible, with_other);
    }
};

TEST_F(DialogStates, after_loading_it_asks_whether_to_start)
{
    EXPECT_EQ(state(), DialogState::AskToStart);
    expect_strip(ask_to_start, "Yes", "No", false);
    EXPECT_EQ(question(), "");
    EXPECT_EQ(form1.bot_yes.focused, 1);
}

TEST_F(DialogStates, yes_at_the_start_puts_the_first_question_on_display)
{
    yes();
    EXPECT_EQ(state(), DialogState::OfferAnswer);
    expect_strip(offer_answer, "Yes", "No, ask another question", false);
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(answer(), "");
}

TEST_F(DialogStates, yes_to_the_offer_reveals_the_answer)
{
    yes();
    yes();
    EXPECT_EQ(state(), DialogState::AskKnown);
    expect_strip(ask_known, "Yes", "No", true);
    EXPECT_EQ(form1.bot_other.caption_value, "Ignore");
    EXPECT_EQ(answer(), "Paris");
    EXPECT_EQ(form1.Text_a.background, common::light_green);
}

TEST_F(DialogStates, known_scores_a_success_and_asks_the_next_question)
{
    yes();
    yes();
    yes();
    EXPECT_EQ(state(), DialogState::OfferAnswer);
    expect_strip(offer_answer, "Yes", "No, ask another question", false);
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 1, 4, clock.time, clock.time}));
    EXPECT_EQ(question(), "Italy?");
    EXPECT_EQ(answer(), "");
    EXPECT_EQ(form1.Text_a.background, std::nullopt);
}

TEST_F(DialogStates, not_known_scores_a_failure_and_asks_the_next_question)
{
    yes();
    yes();
    no();
    EXPECT_EQ(state(), DialogState::OfferAnswer);
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 2, 0, clock.time, clock.time}));
    EXPECT_EQ(question(), "Italy?");
}

TEST_F(DialogStates, another_question_stamps_the_skipped_one_and_scores_nothing)
{
    yes();
    const fakes::QaRow before = stored(1);
    no();
    EXPECT_EQ(state(), DialogState::OfferAnswer);
    fakes::QaRow expected = before;
    expected.q_side.date_last_show = clock.time;
    EXPECT_EQ(stored(1), expected);
    EXPECT_EQ(question(), "Italy?");
}

TEST_F(DialogStates, ignore_stamps_the_question_and_scores_nothing)
{
    yes();
    yes();
    const fakes::QaRow before = stored(1);
    ignore();
    EXPECT_EQ(state(), DialogState::OfferAnswer);
    fakes::QaRow expected = before;
    expected.q_side.date_last_show = clock.time;
    EXPECT_EQ(stored(1), expected);
    EXPECT_EQ(question(), "Italy?");
}

TEST_F(DialogStates, no_at_the_start_ends_the_program_without_a_prompt)
{
    no();
    EXPECT_TRUE(ended);
    EXPECT_FALSE(logic->course.is_open());
}

TEST_F(DialogStates, after_the_first_question_never_come_back_to_the_start)
{
    for (int round = 0; round < 6; ++round) {
        yes();
        EXPECT_NE(state(), DialogState::AskToStart);
        clock.advance_seconds(60);
    }
}

TEST_F(DialogStates, commands_of_the_menu_leave_the_state_as_it_is)
{
    choose("m_display_next_question");
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(state(), DialogState::AskToStart);
    yes();
    ASSERT_EQ(question(), "Italy?");
    choose("m_show_answer");
    EXPECT_EQ(state(), DialogState::OfferAnswer);
    yes();
    ASSERT_EQ(state(), DialogState::AskKnown);
    choose("m_set_success");
    EXPECT_EQ(state(), DialogState::AskKnown);
    EXPECT_EQ(prompt(), ask_known);
    EXPECT_EQ(question(), "Spain?");
}

TEST_F(DialogStates, ignore_is_inert_before_an_answer_is_revealed)
{
    user([this] { logic->dialog.OnOther(); });
    EXPECT_EQ(state(), DialogState::AskToStart);
    EXPECT_EQ(question(), "");
    yes();
    const fakes::QaRow before = stored(1);
    user([this] { logic->dialog.OnOther(); });
    EXPECT_EQ(state(), DialogState::OfferAnswer);
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(stored(1), before);
}

TEST_F(DialogStates, prompt_is_blanked_and_painted_before_it_is_written)
{
    desktop.on_pump = [this] {
        form1.journal.emplace_back("pump");
        EXPECT_EQ(prompt(), "");
        EXPECT_EQ(state(), DialogState::OfferAnswer) << "what happens meanwhile must find the new state";
    };
    form1.journal.clear();
    yes();
    EXPECT_LT(place_of("panel_dialog.caption="), place_of("pump"));
    EXPECT_LT(place_of("pump"), place_of(std::string("panel_dialog.caption=") + offer_answer));
}

TEST_F(DialogStates, prompt_flashes_although_the_state_does_not_change)
{
    yes();
    form1.journal.clear();
    const int pumps = desktop.pumps;
    no();
    EXPECT_EQ(desktop.pumps, pumps + 1);
    EXPECT_EQ(times_noted("panel_dialog.caption="), 1);
    EXPECT_EQ(times_noted(std::string("panel_dialog.caption=") + offer_answer), 1);
}

TEST_F(DialogStates, yes_clears_the_mark_that_the_user_gave_the_answer)
{
    yes();
    logic->state.SelfJudgement = "-";
    yes();
    EXPECT_EQ(form1.Text_a.background, common::light_green);
    EXPECT_EQ(logic->state.SelfJudgement, "");
}

struct Mark {
    const char* text;
    common::Colour colour;
};

TEST_F(DialogStates, answer_marked_as_not_known_is_revealed_on_red)
{
    yes();
    for (const Mark& mark :
         {Mark{"-", common::light_red}, Mark{"+", common::light_green}, Mark{"", common::light_green}}) {
        logic->state.SelfJudgement = mark.text;
        logic->display.RevealAnswer();
        EXPECT_EQ(form1.Text_a.background, mark.colour) << "marked \"" << mark.text << '"';
    }
}

TEST_F(DialogStates, end_of_the_program_during_the_flash_leaves_the_verdict_stored)
{
    yes();
    yes();
    desktop.on_pump = [this] { form1.window.close(); };
    yes();
    EXPECT_TRUE(ended);
    EXPECT_EQ(stored(1).q_side.successes, 4);
}

} // namespace
} // namespace cuedrill::drill
