#include "drill/answer_aids.h"
#include "drill/drill_fixture.h"
#include "drill/drill_state.h"
#include "drill/question_dialog.h"

namespace cuedrill::drill {
namespace {

/// The dialog asks for a verdict, but commands have already shown the next question: "Italy?".
class UnseenAnswer : public DrillFixture {
protected:
    void SetUp() override
    {
        start_with_three_questions();
        yes();
        yes();
        toolbar(6);
        ASSERT_EQ(question(), "Italy?");
        ASSERT_EQ(logic->state.dialog, DialogState::AskKnown);
        before = fakes::read_course(path);
    }

    void expect_enabled(bool yes_button, bool no_button, bool other_button) const
    {
        EXPECT_EQ(form1.bot_yes.usable(), yes_button);
        EXPECT_EQ(form1.bot_no.usable(), no_button);
        EXPECT_EQ(form1.bot_other.usable(), other_button);
    }

    fakes::CourseContents before;
};

TEST_F(UnseenAnswer, can_only_be_ignored)
{
    expect_enabled(false, false, true);
    ignore();
    EXPECT_EQ(question(), "Spain?");
    EXPECT_EQ(logic->state.dialog, DialogState::OfferAnswer);
    EXPECT_EQ(stored(2).q_side.attempts, 3);
}

TEST_F(UnseenAnswer, gets_no_verdict_whatever_reaches_the_dialog)
{
    user([this] { logic->dialog.OnYes(); });
    user([this] { logic->dialog.OnNo(); });
    user([this] { logic->dialog.OnYesMouseDown(platform::MouseButton::right); });
    EXPECT_EQ(question(), "Italy?");
    EXPECT_EQ(logic->state.dialog, DialogState::AskKnown);
    EXPECT_EQ(fakes::read_course(path), before);
}

TEST_F(UnseenAnswer, can_be_judged_once_the_command_shows_it)
{
    toolbar(2);
    expect_enabled(true, true, true);
    yes();
    EXPECT_EQ(stored(2).q_side.attempts, 4);
    EXPECT_EQ(question(), "Spain?");
    EXPECT_EQ(logic->state.dialog, DialogState::OfferAnswer);
}

TEST_F(UnseenAnswer, can_be_judged_with_the_right_button_once_a_sign_shows_it)
{
    press_in_answer("-");
    expect_enabled(true, true, true);
    user([this] { form1.bot_yes.right_click(); });
    EXPECT_EQ(stored(2).q_side.fails, 4);
    EXPECT_EQ(question(), "Spain?");
}

TEST_F(UnseenAnswer, is_still_unseen_behind_a_hint)
{
    toolbar(4);
    expect_enabled(false, false, true);
}

TEST_F(UnseenAnswer, of_a_record_from_a_list_can_only_be_ignored)
{
    toolbar(2);
    choose("m_show_all");
    expect_enabled(true, true, true);
    user([this] { form1.listav.click(2); });
    ASSERT_EQ(question(), "Spain?");
    expect_enabled(false, false, true);
}

TEST_F(UnseenAnswer, gives_the_focus_to_ignore_and_back_to_yes_once_it_is_shown)
{
    toolbar(2);
    form1.bot_yes.take_focus();
    choose("m_set_success");
    EXPECT_TRUE(form1.bot_other.has_focus());
    choose("m_show_answer");
    EXPECT_TRUE(form1.bot_yes.has_focus());
}

class StateOfTheStart : public DrillFixture {
protected:
    void SetUp() override { start_with_three_questions(); }
};

TEST_F(StateOfTheStart, does_not_end_the_program_beside_a_question)
{
    EXPECT_TRUE(form1.bot_no.usable());
    toolbar(1);
    ASSERT_EQ(question(), "France?");
    ASSERT_EQ(logic->state.dialog, DialogState::AskToStart);
    EXPECT_FALSE(form1.bot_no.usable());
    EXPECT_TRUE(form1.bot_yes.usable());
    user([this] { logic->dialog.OnNo(); });
    user([this] { form1.bot_yes.right_click(); });
    toolbar(2);
    user([this] { form1.bot_yes.right_click(); });
    EXPECT_FALSE(ended);
    EXPECT_EQ(question(), "France?");
    yes();
    EXPECT_EQ(question(), "Italy?");
    EXPECT_EQ(logic->state.dialog, DialogState::OfferAnswer);
}

TEST_F(StateOfTheStart, ends_the_program_again_when_the_question_is_gone)
{
    toolbar(1);
    toolbar(9);
    press(platform::Key::escape);
    ASSERT_EQ(question(), "");
    EXPECT_TRUE(form1.bot_no.usable());
    no();
    EXPECT_TRUE(ended);
}

/// A button that is disabled and enabled again within one step would flicker and lose the focus.
class SteadyButtons : public StateOfTheStart {
protected:
    template <class Press>
    void expect_steady(Press press)
    {
        form1.journal.clear();
        press();
        for (const fakes::FakeButton* button : {&form1.bot_yes, &form1.bot_no, &form1.bot_other}) {
            EXPECT_EQ(times_noted(button->name + ".enabled=false"), 0) << button->name;
            EXPECT_EQ(times_noted(button->name + ".focus"), 0) << button->name;
        }
    }
};

TEST_F(SteadyButtons, are_not_disabled_while_the_next_question_comes)
{
    expect_steady([this] { yes(); });
    expect_steady([this] { no(); });
    expect_steady([this] { yes(); });
    expect_steady([this] { yes(); });
    expect_steady([this] { yes(); });
}

TEST_F(SteadyButtons, are_not_disabled_by_a_failure_or_by_ignoring)
{
    yes();
    yes();
    expect_steady([this] { no(); });
    yes();
    expect_steady([this] { ignore(); });
}

TEST_F(SteadyButtons, follow_what_can_be_done_after_an_error)
{
    yes();
    yes();
    database.at_each_call([this](fakes::Operation operation) {
        if (operation == fakes::Operation::open_recordset &&
            database.statements().back().find("q_date_last_test") != std::string::npos)
            throw platform::DatabaseError(platform::DatabaseErrorKind::full, 0, "The disk is full.");
    });
    desktop.expect_box("The course " + path + " could not be read or written.\r\n\r\nThe disk is full.");
    yes();
    EXPECT_EQ(logic->state.dialog, DialogState::AskKnown);
    ASSERT_EQ(question(), "");
    EXPECT_FALSE(form1.bot_yes.usable());
    EXPECT_FALSE(form1.bot_no.usable());
    EXPECT_TRUE(form1.bot_other.usable());
    database.at_each_call({});
    ignore();
    EXPECT_EQ(logic->state.dialog, DialogState::OfferAnswer);
    EXPECT_TRUE(form1.bot_yes.usable());
}

/// The heading above the answer box says whether a typed answer will count.
class HeadingOfTheAnswer : public DrillFixture {
protected:
    void SetUp() override
    {
        start_with_three_questions();
        yes();
    }

    static constexpr const char* costs = "Typed answers count as not known now";
    static constexpr const char* costs_beside_words = "Typed answers count as not known now; clicked words count";
};

TEST_F(HeadingOfTheAnswer, tells_what_a_hint_costs_until_the_next_question)
{
    toolbar(4);
    EXPECT_EQ(form1.screen.panel_a.text, costs_beside_words);
    toolbar(3);
    EXPECT_EQ(form1.screen.panel_a.text, costs) << "the hint was seen";
    toolbar(5);
    EXPECT_EQ(form1.screen.panel_a.text, costs) << "typing, too";
    toolbar(1);
    EXPECT_EQ(form1.screen.panel_a.text, "Answer");
}

TEST_F(HeadingOfTheAnswer, tells_what_a_masked_hint_costs)
{
    toolbar(5);
    ASSERT_EQ(form1.screen.panel_a.text, "Type the answer, then press Enter");
    toolbar(4);
    EXPECT_EQ(form1.screen.panel_a.text, costs) << "the masked answer has no words to click";
}

TEST_F(HeadingOfTheAnswer, tells_nothing_of_it_once_the_answer_is_shown)
{
    toolbar(4);
    yes();
    EXPECT_EQ(form1.screen.panel_a.text, "Answer");
    toolbar(8);
    EXPECT_EQ(form1.screen.panel_a.text, "Answer");
}

TEST_F(HeadingOfTheAnswer, tells_nothing_of_it_when_the_option_forgives_the_hint)
{
    choose("m_list_mode");
    EXPECT_EQ(form1.screen.panel_a.text, costs_beside_words);
    choose("m_list_mode");
    EXPECT_EQ(form1.screen.panel_a.text, "Answer");
}

/// The command for hints is enabled from the start.
class HintWithoutQuestion : public DrillFixture {
protected:
    void expect_told(const char* entry_name)
    {
        ASSERT_TRUE(entry(entry_name).is_enabled);
        choose(entry_name);
        EXPECT_EQ(status(), "No question is on display.");
        EXPECT_FALSE(form1.panel_lista.is_visible);
        EXPECT_FALSE(logic->state.AnswerShown);
        EXPECT_TRUE(form1.toolbar(4).is_enabled);
        clock.advance_seconds(5);
        form1.timer_250_ms.tick();
        EXPECT_EQ(status(), "");
    }
};

TEST_F(HintWithoutQuestion, is_only_told)
{
    start_with_three_questions();
    expect_told("m_view_hints");
    toolbar(4);
    EXPECT_EQ(status(), "No question is on display.");
    press("h");
    EXPECT_EQ(status(), "No question is on display.");
}

TEST_F(HintWithoutQuestion, is_told_no_more_once_there_is_one)
{
    start_with_three_questions();
    toolbar(4);
    toolbar(1);
    ASSERT_EQ(question(), "France?");
    EXPECT_EQ(status(), "");
}

TEST_F(HintWithoutQuestion, is_only_told_in_an_empty_course)
{
    desktop.expect_box("You have passed level 5 for all questions.");
    start();
    expect_told("m_view_hints");
}

TEST_F(HintWithoutQuestion, leaves_what_the_status_line_tells_the_editor)
{
    start_with_three_questions();
    toolbar(9);
    const std::string told = status();
    user([this] { logic->aids.m_view_hints(); });
    EXPECT_EQ(status(), told);
}

} // namespace
} // namespace cuedrill::drill
