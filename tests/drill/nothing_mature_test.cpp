#include "drill/drill_fixture.h"
#include "drill/drill_state.h"
#include "drill/question_dialog.h"
#include "store/course.h"

namespace cuedrill::drill {
namespace {

/// A course with one question that was tested this second.
class NothingMature : public DrillFixture {
protected:
    void SetUp() override
    {
        builder.question("France?", "Paris").level(1).attempts(1).fails(0).tested_ago(0s);
        start();
        desktop.expect_box(nothing_mature);
        yes();
        desktop.check_all_shown();
    }

    static constexpr const char* due_at_0553 =
        "The next question is due at 05:53. 1 question is due by the end of the day.";

    void expect_no_question()
    {
        EXPECT_EQ(logic->state.shown.current_cnt(), 0);
        EXPECT_EQ(question(), "");
        EXPECT_EQ(answer(), "");
        for (const platform::Line* figure : {&form1.screen.PANEL_Q_LEVEL, &form1.screen.PANEL_Q_ATTEMPTS,
                                             &form1.screen.PANEL_FAILS, &form1.screen.PANEL_ELAPSED})
            EXPECT_EQ(figure->text, "") << figure->description;
    }
};

TEST_F(NothingMature, leaves_the_display_empty)
{
    expect_no_question();
    EXPECT_EQ(logic->state.dialog, DialogState::OfferAnswer);
}

TEST_F(NothingMature, tells_when_the_next_question_is_due)
{
    EXPECT_EQ(status(), due_at_0553);
    EXPECT_FALSE(form1.screen.P_status.bold);
    clock.advance_seconds(60);
    form1.timer_250_ms.on_tick();
    EXPECT_EQ(status(), due_at_0553) << "it stays";
}

TEST_F(NothingMature, tells_it_no_more_once_a_question_is_on_display)
{
    clock.advance_seconds(5 * 60 + 1);
    no();
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(status(), "");
}

TEST_F(NothingMature, tells_it_anew_after_a_reset)
{
    desktop.expect_box("This will set all question at level 0; do you really want to do this?",
                       platform::BoxAnswer::yes);
    choose("m_reset_all");
    EXPECT_EQ(status(), "The next question is due now. 1 question is due by the end of the day.");
    choose("m_display_next_question");
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(status(), "");
}

TEST_F(NothingMature, tells_it_as_it_is_where_the_reset_is_not_confirmed)
{
    clock.advance_seconds(4 * 60);
    desktop.expect_box("This will set all question at level 0; do you really want to do this?",
                       platform::BoxAnswer::no);
    choose("m_reset_all");
    EXPECT_EQ(status(), due_at_0553);
}

TEST_F(NothingMature, tells_it_no_more_after_a_change_that_is_stored_and_fails_then)
{
    for (const char* command : {"m_reset_all", "m_change_target_level"}) {
        SCOPED_TRACE(command);
        if (status().empty()) {
            desktop.expect_box(nothing_mature);
            no();
        }
        ASSERT_EQ(status(), due_at_0553);
        const bool reset = command == std::string_view("m_reset_all");
        if (!reset)
            desktop.expect_input("New target level (1 to 10)?", "1");
        else
            desktop.expect_box("This will set all question at level 0; do you really want to do this?",
                               platform::BoxAnswer::yes);
        database.fail_at(fakes::Operation::open_recordset);
        desktop.expect_box("The course " + path + " could not be read or written.\r\n\r\nThe disk is full.");
        choose(command);
        EXPECT_EQ(status(), "");
        database.execute("Update qa set q_successes=1, q_date_last_test=?1", {clock.time.day_number()});
    }
}

TEST_F(NothingMature, tells_that_a_question_is_due_which_has_rested_while_the_box_was_open)
{
    desktop.on_box = [this] { clock.advance_seconds(6 * 60); };
    desktop.expect_box(nothing_mature);
    no();
    desktop.on_box = nullptr;
    EXPECT_EQ(status(), "The next question is due now. 1 question is due by the end of the day.");
    choose("m_display_next_question");
    EXPECT_EQ(question(), "France?");
}

TEST_F(NothingMature, tells_nothing_once_the_target_is_reached)
{
    desktop.expect_input("New target level (1 to 10)?", "1");
    choose("m_change_target_level");
    EXPECT_EQ(status(), "");
}

TEST_F(NothingMature, tells_nothing_anew_where_another_text_stands)
{
    choose("m_show_all");
    const std::string about_list = status();
    desktop.expect_box("This will set all question at level 0; do you really want to do this?",
                       platform::BoxAnswer::yes);
    choose("m_reset_all");
    EXPECT_EQ(status(), about_list);
}

TEST_F(NothingMature, disables_what_reveals_or_judges)
{
    EXPECT_FALSE(form1.bot_yes.usable());
    for (const char* name : {"m_show_answer", "m_set_success", "m_set_failure", "m_display_q_nr"})
        EXPECT_FALSE(entry(name).is_enabled) << name;
    const fakes::QaRow before = stored(1);
    user([this] {
        logic->dialog.OnYes();
        logic->dialog.ShowAnswerCommand();
        logic->dialog.SucceedAndNext();
        logic->dialog.FailAndNext();
    });
    EXPECT_EQ(stored(1), before);
    EXPECT_EQ(logic->state.dialog, DialogState::OfferAnswer);
    EXPECT_EQ(status(), due_at_0553);
}

TEST_F(NothingMature, keys_reveal_and_judge_nothing)
{
    EXPECT_FALSE(press(platform::Key::enter));
    EXPECT_FALSE(press("+"));
    EXPECT_FALSE(press("-"));
    expect_no_question();
}

TEST_F(NothingMature, asking_again_tells_so_again)
{
    EXPECT_TRUE(form1.bot_no.usable());
    desktop.expect_box(nothing_mature);
    no();
    expect_no_question();
}

TEST_F(NothingMature, asking_again_works_once_the_question_has_rested)
{
    clock.advance_seconds(5 * 60 + 1);
    no();
    EXPECT_EQ(question(), "France?");
    EXPECT_TRUE(form1.bot_yes.usable());
    EXPECT_TRUE(entry("m_show_answer").is_enabled);
}

TEST_F(NothingMature, the_only_question_may_come_again_after_it_was_passed_over)
{
    clock.advance_seconds(5 * 60 + 1);
    no();
    ASSERT_EQ(question(), "France?");
    desktop.expect_box(nothing_mature);
    no();
    expect_no_question();
    clock.advance_seconds(9);
    no();
    EXPECT_EQ(question(), "France?");
}

TEST_F(NothingMature, after_a_verdict_empties_the_display_too)
{
    clock.advance_seconds(5 * 60 + 1);
    no();
    yes();
    desktop.expect_box(nothing_mature);
    yes();
    expect_no_question();
    EXPECT_EQ(logic->state.dialog, DialogState::OfferAnswer);
    EXPECT_EQ(stored(1).q_side.attempts, 2);
}

TEST_F(NothingMature, after_the_command_leaves_ignore_as_the_way_on)
{
    clock.advance_seconds(5 * 60 + 1);
    no();
    yes();
    ASSERT_EQ(logic->state.dialog, DialogState::AskKnown);
    desktop.expect_box(nothing_mature);
    choose("m_display_next_question");
    EXPECT_FALSE(form1.bot_yes.usable());
    EXPECT_FALSE(form1.bot_no.usable());
    clock.advance_seconds(9);
    ignore();
    EXPECT_EQ(logic->state.dialog, DialogState::OfferAnswer);
    EXPECT_EQ(question(), "France?");
}

TEST_F(NothingMature, display_is_empty_while_the_box_is_shown)
{
    clock.advance_seconds(5 * 60 + 1);
    no();
    yes();
    desktop.on_box = [this] {
        expect_no_question();
        EXPECT_EQ(database.transaction_depth(), 0);
        EXPECT_EQ(database.open_recordsets(), 0);
        EXPECT_EQ(desktop.pointer_depth, 0);
    };
    desktop.expect_box(nothing_mature);
    yes();
}

class EmptyCourse : public DrillFixture {
protected:
    void SetUp() override
    {
        desktop.expect_box("You have passed level 5 for all questions.");
        start();
    }
};

TEST_F(EmptyCourse, says_that_there_are_no_questions)
{
    desktop.expect_box("There are no questions in the database.");
    yes();
    EXPECT_EQ(logic->state.dialog, DialogState::OfferAnswer);
    EXPECT_FALSE(form1.bot_yes.usable());
    EXPECT_TRUE(form1.bot_no.usable());
    desktop.expect_box("There are no questions in the database.");
    no();
}

} // namespace
} // namespace cuedrill::drill
