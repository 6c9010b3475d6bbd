#include "common/errors.h"
#include "drill/scoring.h"
#include "drill/scoring_fixture.h"

#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

using fakes::CourseBuilder;
using fakes::Operation;
using fakes::SideRow;

class Undo : public ScoringFixture {
protected:
    Undo()
    {
        CourseBuilder builder;
        builder.question("first").level(3).attempts(4).fails(2).tested_ago(2h).inverted().level(1);
        builder.question("second").level(1).tested_ago(1h);
        open_with_current(builder);
    }

    static platform::MessageBox told(const std::string& what)
    {
        return {.text = what + "\r\n\r\n" + fakes::RecordingDatabase::failure_words,
                .icon = platform::BoxIcon::exclamation};
    }
};

TEST_F(Undo, after_a_failure_restores_the_level_alone)
{
    scoring.set_failure();
    const auto at_verdict = clock.time;
    clock.advance_seconds(5);
    scoring.m_undo();
    EXPECT_EQ(
        stored(),
        (SideRow{
            .attempts = 5, .fails = 3, .successes = 3, .date_last_test = at_verdict, .date_last_show = at_verdict}));
    EXPECT_EQ(course.params.score_today, -1);
}

TEST_F(Undo, after_a_success_restores_the_level)
{
    clock.advance_days(3);
    scoring.set_success();
    EXPECT_EQ(stored().successes, 5);
    scoring.m_undo();
    EXPECT_EQ(stored().successes, 3);
}

TEST_F(Undo, takes_back_what_the_status_line_says_of_the_verdict)
{
    clock.advance_days(3);
    scoring.set_success();
    ASSERT_NE(form1.screen.P_status.text, "");
    scoring.m_undo();
    EXPECT_EQ(form1.screen.P_status.text, "");
}

TEST_F(Undo, shows_the_question_and_the_counts_again)
{
    scoring.set_failure();
    EXPECT_EQ(panels().counts, (std::vector<std::int64_t>{1, 1, 0, 0, 0, 0}));
    display.take_for_record(2);
    scoring.m_undo();
    EXPECT_EQ(current_cnt(), 1);
    EXPECT_EQ(shows(), 1);
    EXPECT_EQ(panels().counts, (std::vector<std::int64_t>{0, 1, 0, 1, 0, 0}));
}

TEST_F(Undo, acts_on_the_record_judged_last_wherever_the_drill_has_gone)
{
    scoring.set_failure();
    display.leave_question(2);
    display.take_for_record(0);
    scoring.m_undo();
    EXPECT_EQ(stored().successes, 3);
    EXPECT_EQ(file().qa.at(1).q_side.successes, 1);
}

TEST_F(Undo, of_the_second_verdict_leaves_the_first)
{
    scoring.set_failure();
    display.take_for_record(2);
    scoring.set_failure();
    scoring.m_undo();
    EXPECT_EQ(stored().successes, 0);
    EXPECT_EQ(file().qa.at(1).q_side.successes, 1);
}

TEST_F(Undo, a_second_time_writes_the_same_level)
{
    scoring.set_failure();
    scoring.m_undo();
    const auto once = file();
    scoring.m_undo();
    EXPECT_EQ(file(), once);
    EXPECT_EQ(shows(), 2);
}

TEST_F(Undo, restores_null_as_level_0)
{
    database.execute("Update qa set q_successes=null, q_date_last_test=null where cnt=1");
    scoring.set_success();
    EXPECT_EQ(stored().successes, 3);
    scoring.m_undo();
    EXPECT_EQ(stored().successes, 0);
}

TEST_F(Undo, without_a_verdict_does_nothing)
{
    const auto before = file();
    display.leave_question(2);
    scoring.m_undo();
    EXPECT_EQ(file(), before);
    EXPECT_EQ(shows(), 0);
    EXPECT_EQ(current_cnt(), 1);
    EXPECT_EQ(database.count(Operation::begin), 0);
}

TEST_F(Undo, does_nothing_once_the_verdict_is_forgotten)
{
    scoring.set_failure();
    course.last_verdict.reset();
    scoring.m_undo();
    EXPECT_EQ(stored().successes, 0);
    EXPECT_EQ(shows(), 0);
}

TEST_F(Undo, forgets_the_verdict_on_a_record_that_was_changed_and_no_other)
{
    scoring.set_failure();
    course.forget_last_verdict_on(2);
    scoring.m_undo();
    EXPECT_EQ(stored().successes, 3);

    scoring.set_failure();
    course.forget_last_verdict_on(1);
    scoring.m_undo();
    EXPECT_EQ(stored().successes, 0);
}

/// If an undo cannot be stored, a box reports it and nothing changes.
class FailingUndo : public Undo, public testing::WithParamInterface<Operation> {};

TEST_P(FailingUndo, is_told_and_changes_nothing)
{
    scoring.set_failure();
    display.take_for_record(2);
    const auto before = file();
    database.fail_at(GetParam());
    desktop.expect_box_like(told("The last result cannot be undone."), platform::BoxAnswer::ok);
    scoring.m_undo();
    EXPECT_EQ(file(), before);
    EXPECT_EQ(current_cnt(), 2);
    EXPECT_EQ(shows(), 0);
    EXPECT_EQ(database.transaction_depth(), 0);

    scoring.m_undo();
    EXPECT_EQ(stored().successes, 3) << "it can be tried again";
}

INSTANTIATE_TEST_SUITE_P(AtEveryStep, FailingUndo,
                         testing::Values(Operation::begin, Operation::execute, Operation::commit));

TEST_F(Undo, of_a_record_that_has_vanished_is_told)
{
    scoring.set_failure();
    database.execute("Delete from qa where cnt=1");
    desktop.on_box = [&] { desktop.expect_box(desktop.boxes.back().text); };
    scoring.m_undo();
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_TRUE(desktop.boxes[0].text.starts_with("The last result cannot be undone.\r\n\r\n"));
    EXPECT_EQ(current_cnt(), 1);
}

/// The verdict is undone, but the window cannot show the question. It must not be judged unseen.
TEST_F(Undo, that_cannot_refresh_the_counts_takes_the_question_away)
{
    scoring.set_failure();
    display.take_for_record(2);
    database.fail_at(Operation::open_recordset);
    desktop.expect_box_like(told("The last result is undone, but the question cannot be shown."),
                            platform::BoxAnswer::ok);
    scoring.m_undo();
    EXPECT_EQ(stored().successes, 3);
    EXPECT_EQ(current_cnt(), 0);
    EXPECT_FALSE(state.shown.is_question());
}

TEST_F(Undo, that_cannot_show_the_question_is_told)
{
    scoring.set_failure();
    database.fail_at(fakes::Operation::query);
    desktop.expect_box_like(told("The last result is undone, but the question cannot be shown."),
                            platform::BoxAnswer::ok);
    scoring.m_undo();
    EXPECT_EQ(stored().successes, 3);
}

} // namespace
} // namespace cuedrill::drill
