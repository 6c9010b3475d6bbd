#include "common/colour.h"
#include "drill/drill_fixture.h"
#include "drill/drill_state.h"
#include "drill/question_dialog.h"
#include "drill/question_import.h"
#include "store/course.h"

namespace cuedrill::drill {
namespace {

using fakes::Operation;

/// The first question is on display with its answer, and something fails. In each case a verdict is stored once or not
/// at all, and a further verdict can only be about what is on display.
class FailingVerdict : public DrillFixture {
protected:
    void SetUp() override
    {
        start_with_three_questions();
        yes();
        yes();
        before = stored(1);
        desktop.on_box = [this] {
            EXPECT_EQ(database.transaction_depth(), 0);
            EXPECT_EQ(database.open_recordsets(), 0);
            EXPECT_EQ(desktop.pointer_depth, 0);
        };
    }

    void fail_at(Operation operation, int call = 1)
    {
        database.fail_at(operation, call);
        desktop.expect_box("The course " + path + " could not be read or written.\r\n\r\nThe disk is full.");
    }

    void expect_nothing_to_judge()
    {
        EXPECT_EQ(logic->state.shown.current_cnt(), 0);
        EXPECT_EQ(question(), "");
        EXPECT_EQ(answer(), "");
        EXPECT_FALSE(form1.bot_yes.usable());
        EXPECT_FALSE(entry("m_set_success").is_enabled);
        const fakes::CourseContents now = fakes::read_course(path);
        EXPECT_FALSE(press("+"));
        EXPECT_FALSE(press("-"));
        user([this] {
            logic->dialog.SucceedAndNext();
            logic->dialog.FailAndNext();
        });
        EXPECT_EQ(fakes::read_course(path), now);
    }

    fakes::QaRow before;
};

class FailingWrite : public FailingVerdict, public testing::WithParamInterface<Operation> {};

TEST_P(FailingWrite, of_a_success_changes_nothing_and_may_be_repeated)
{
    fail_at(GetParam());
    yes();
    EXPECT_EQ(stored(1), before);
    EXPECT_EQ(logic->state.dialog, DialogState::AskKnown);
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(answer(), "Paris");
    EXPECT_EQ(form1.screen.Panel_score.text, "0");
    EXPECT_EQ(logic->course.params.score_today, 0);
    yes();
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 1, 4, clock.time, clock.time}));
    EXPECT_EQ(logic->course.params.score_today, 1);
    EXPECT_EQ(question(), "Italy?");
}

TEST_P(FailingWrite, of_a_failure_changes_nothing_and_may_be_repeated)
{
    fail_at(GetParam());
    no();
    EXPECT_EQ(stored(1), before);
    EXPECT_EQ(logic->state.dialog, DialogState::AskKnown);
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(logic->course.params.score_today, 0);
    no();
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 2, 0, clock.time, clock.time}));
    EXPECT_EQ(logic->course.params.score_today, -1);
}

TEST_P(FailingWrite, of_the_stamp_keeps_the_question_on_display)
{
    fail_at(GetParam());
    ignore();
    EXPECT_EQ(stored(1), before);
    EXPECT_EQ(logic->state.dialog, DialogState::AskKnown);
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(answer(), "Paris");
    ignore();
    EXPECT_EQ(question(), "Italy?");
}

INSTANTIATE_TEST_SUITE_P(Steps, FailingWrite, testing::Values(Operation::begin, Operation::execute, Operation::commit));

TEST_F(FailingVerdict, counts_after_a_success_leave_one_verdict_and_no_question)
{
    fail_at(Operation::open_recordset);
    yes();
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 1, 4, clock.time, clock.time}));
    EXPECT_EQ(logic->course.params.score_today, 1);
    expect_nothing_to_judge();
    desktop.on_box = nullptr;
    ignore();
    EXPECT_EQ(question(), "Italy?");
    EXPECT_EQ(logic->state.dialog, DialogState::OfferAnswer);
    EXPECT_EQ(form1.screen.panel_level[4].count, 0) << "the counts come with the next refresh";
    choose("m_undo");
    EXPECT_EQ(stored(1).q_side.successes, 2) << "the verdict can still be undone";
    EXPECT_EQ(form1.screen.panel_level[2].count, 1);
}

TEST_F(FailingVerdict, counts_after_a_failure_leave_one_verdict_and_no_question)
{
    fail_at(Operation::open_recordset);
    no();
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 2, 0, clock.time, clock.time}));
    expect_nothing_to_judge();
}

TEST_F(FailingVerdict, selection_after_a_verdict_leaves_one_verdict_and_no_question)
{
    fail_at(Operation::open_recordset, 2); // after the counts
    yes();
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 1, 4, clock.time, clock.time}));
    expect_nothing_to_judge();
    ignore();
    EXPECT_EQ(question(), "Italy?");
}

TEST_F(FailingVerdict, display_of_the_next_question_leaves_no_question_that_nobody_has_seen)
{
    fail_at(Operation::query, 2); // the first query reads the judged record
    yes();
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 1, 4, clock.time, clock.time}));
    expect_nothing_to_judge();
    ignore();
    EXPECT_EQ(question(), "Italy?");
    EXPECT_EQ(stored(2).q_side.attempts, 3);
}

TEST_F(FailingVerdict, selection_after_a_skipped_question_leaves_no_question)
{
    fail_at(Operation::open_recordset);
    ignore();
    fakes::QaRow stamped = before;
    stamped.q_side.date_last_show = clock.time;
    EXPECT_EQ(stored(1), stamped);
    expect_nothing_to_judge();
}

TEST_F(FailingVerdict, awaited_by_key_goes_on_being_awaited)
{
    choose("m_show_answer");
    fail_at(Operation::execute);
    EXPECT_FALSE(press("+"));
    EXPECT_EQ(stored(1), before);
    EXPECT_TRUE(logic->state.AwaitingVerdict);
    EXPECT_EQ(answer(), "Paris");
    EXPECT_TRUE(press("+"));
    EXPECT_EQ(stored(1).q_side.attempts, 5);
}

TEST_F(FailingVerdict, awaited_by_key_leaves_the_request_for_it)
{
    choose("m_show_answer");
    fail_at(Operation::execute);
    EXPECT_FALSE(press("-"));
    EXPECT_EQ(stored(1), before);
    EXPECT_TRUE(logic->state.AwaitingVerdict);
    EXPECT_EQ(status(), "Press '+' or '-' to indicate success or failure");
    EXPECT_EQ(form1.screen.P_status.background, common::pure_red);
    EXPECT_TRUE(form1.screen.P_status.bold);
    EXPECT_TRUE(press("-"));
    EXPECT_EQ(stored(1).q_side.fails, 2);
    EXPECT_EQ(status(), "");
}

TEST_F(FailingVerdict, awaited_by_key_empties_the_status_line_while_a_failure_is_stored)
{
    choose("m_show_answer");
    database.at_each_call([this](Operation operation) {
        if (operation == Operation::execute) {
            EXPECT_EQ(status(), "");
        }
    });
    EXPECT_TRUE(press("-"));
    EXPECT_EQ(stored(1).q_side.fails, 2);
}

TEST_F(FailingVerdict, that_nobody_was_asked_for_by_key_leaves_no_request)
{
    fail_at(Operation::execute);
    no();
    EXPECT_EQ(status(), "");
}

TEST_F(FailingVerdict, too_many_attempts_are_refused_before_anything_is_written)
{
    database.execute("Update qa set q_attempts = 32767 where cnt = 1");
    before = stored(1);
    desktop.expect_box("Overflow: the number of attempts 32768 is outside -32768 to 32767.");
    yes();
    EXPECT_EQ(stored(1), before);
    EXPECT_EQ(logic->course.params.score_today, 0);
    EXPECT_EQ(logic->state.dialog, DialogState::AskKnown);
}

TEST_F(FailingVerdict, counts_after_an_import_leave_no_question_that_could_be_judged_as_the_new_record)
{
    database.fail_at(Operation::open_recordset);
    desktop.expect_box("The import has stopped.\r\n\r\nThe disk is full.\r\n\r\n1 questions and answers are stored.");
    user([this] { logic->question_import.import_file(folder.write("questions.txt", "@Q@ Norway? @A@ Oslo")); });
    EXPECT_EQ(stored(4).q, "Norway?");
    EXPECT_EQ(stored(1), before);
    expect_nothing_to_judge();
}

TEST_F(FailingVerdict, of_an_import_that_stores_nothing_leaves_the_question_on_display)
{
    desktop.expect_box("1 questions and answers insterted.");
    desktop.expect_box("Refused, and not stored: 1");
    user([this] {
        logic->question_import.import_file(folder.write("questions.txt", "@Q@ " + std::string(201, 'q') + " @A@ Oslo"));
    });
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(answer(), "Paris");
    EXPECT_EQ(logic->state.dialog, DialogState::AskKnown);
    yes();
    EXPECT_EQ(stored(1).q_side.attempts, 5);
}

TEST_F(FailingVerdict, no_on_a_record_that_another_program_has_deleted_says_so)
{
    database.execute("Delete from qa where cnt = 1");
    desktop.expect_box("The question is no longer in the course; another program has deleted it.");
    no();
    expect_nothing_to_judge();
    EXPECT_EQ(form1.screen.panel_total.text, "2");
    ignore();
    EXPECT_EQ(question(), "Italy?");
}

TEST_F(FailingVerdict, of_unknown_outcome_leaves_nothing_to_judge_and_shows_what_is_found_out)
{
    database.fail_commit(true);
    database.fail_at(Operation::query, 2); // the first query reads the record
    desktop.expect_box("The course " + path +
                       " could not be read or written.\r\n\r\nThe commit failed. It is not known whether the change is "
                       "stored, because the course cannot be read again.");
    yes();
    expect_nothing_to_judge();
    EXPECT_EQ(form1.screen.Panel_score.text, "0");
    ignore();
    EXPECT_EQ(question(), "Italy?");
    yes();
    no();
    EXPECT_EQ(form1.screen.Panel_score.text, "1");
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 1, 4, clock.time, clock.time}));
}

TEST_F(FailingVerdict, commit_that_stores_is_a_verdict_like_any_other)
{
    database.fail_commit(true);
    yes();
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 1, 4, clock.time, clock.time}));
    EXPECT_EQ(question(), "Italy?");
    EXPECT_EQ(form1.screen.Panel_score.text, "1");
}

class ForeignCourse : public DrillFixture {};

TEST_F(ForeignCourse, with_a_record_number_beyond_16_bits_is_not_drilled_at_that_record)
{
    builder.question("far", "away").number(32768).level(1).attempts(1).fails(0).tested_ago(1h);
    start();
    const fakes::CourseContents before = fakes::read_course(path);
    desktop.on_box = [this] {
        EXPECT_EQ(logic->state.shown.current_cnt(), 0);
        EXPECT_EQ(question(), "");
    };
    desktop.expect_box("Overflow: the record number 32768 is outside -32768 to 32767.");
    yes();
    EXPECT_EQ(logic->state.dialog, DialogState::AskToStart);
    EXPECT_EQ(fakes::read_course(path), before);
}

TEST_F(ForeignCourse, with_counters_beyond_16_bits_is_shown_and_can_be_skipped_but_not_judged)
{
    start_with_three_questions();
    database.execute("PRAGMA ignore_check_constraints = 1");
    database.execute("Update qa set q_attempts = 40000, q_fails = 39999 where cnt = 1");
    yes();
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(form1.screen.PANEL_Q_ATTEMPTS.text, "40000");
    EXPECT_EQ(form1.screen.PANEL_FAILS.text, "39999");
    yes();
    desktop.expect_box("Overflow: the number of failures 39999 is outside -32768 to 32767.");
    no();
    EXPECT_EQ(question(), "France?");
    ignore();
    EXPECT_EQ(question(), "Italy?");
}

} // namespace
} // namespace cuedrill::drill
