// A commit that reports an error may or may not have stored the verdict. Messages and memory must agree with the
// course.
#include "drill/scoring.h"
#include "drill/scoring_fixture.h"
#include "store/course_transaction.h"

#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

using fakes::CourseBuilder;
using fakes::Operation;

class FailedCommitOfAVerdict : public ScoringFixture, public testing::WithParamInterface<bool> {
protected:
    void SetUp() override
    {
        CourseBuilder builder;
        builder.question("asked").level(2).attempts(4).fails(2).tested_ago(13h);
        builder.question("other").level(1).tested_ago(1s);
        open_with_current(builder);
        course.params.score_today = 6;
    }

    void give(bool known)
    {
        if (known)
            scoring.set_success();
        else
            scoring.set_failure();
    }

    /// Fails the query that looks for the verdict. The queries for the record and the four counters come before it.
    void make_unreadable() { database.fail_at(Operation::query, 2); }
};

TEST_P(FailedCommitOfAVerdict, of_a_verdict_that_is_stored_counts_it_once)
{
    database.fail_commit(true);
    give(GetParam());
    EXPECT_EQ(stored().attempts, 5);
    EXPECT_EQ(course.params.score_today, GetParam() ? 7 : 5);
    EXPECT_EQ(file().number("score_TODAY"), GetParam() ? 7 : 5);
    EXPECT_EQ(panels().score, course.params.score_today);
    scoring.m_undo();
    EXPECT_EQ(stored().successes, 2);
}

TEST_P(FailedCommitOfAVerdict, of_a_verdict_that_is_not_stored_changes_nothing_and_it_may_be_given_again)
{
    database.fail_commit(false);
    EXPECT_THROW(give(GetParam()), platform::CommitError);
    EXPECT_EQ(stored().attempts, 4);
    EXPECT_EQ(course.params.score_today, 6);
    EXPECT_EQ(current_cnt(), 1);
    give(GetParam());
    EXPECT_EQ(stored().attempts, 5);
    EXPECT_EQ(course.params.score_today, GetParam() ? 7 : 5);
}

TEST_P(FailedCommitOfAVerdict, of_unknown_outcome_takes_the_question_away_and_is_settled_later)
{
    for (const bool is_stored : {true, false}) {
        SCOPED_TRACE(is_stored);
        display.take_for_record(1);
        database.fail_commit(is_stored);
        make_unreadable();
        EXPECT_THROW(give(GetParam()), store::OutcomeUnknown);
        EXPECT_EQ(current_cnt(), 0);
        EXPECT_FALSE(state.shown.is_question());
        EXPECT_EQ(database.transaction_depth(), 0);
        statistics.refresh_counts();
        EXPECT_EQ(course.params.score_today, GetParam() ? 7 : 5);
        EXPECT_EQ(panels().score, GetParam() ? 7 : 5);
        params.save_work_time(clock.time);
        EXPECT_EQ(file().number("score_TODAY"), GetParam() ? 7 : 5) << "no later save takes it back";
        scoring.m_undo();
        EXPECT_EQ(stored().successes, 2) << "the verdict of the first round can be undone";
    }
    EXPECT_EQ(stored().attempts, 5) << "the second round stored nothing";
}

INSTANTIATE_TEST_SUITE_P(Both, FailedCommitOfAVerdict, testing::Values(true, false));

TEST_F(FailedCommitOfAVerdict, of_a_reset_that_is_stored_resets_memory)
{
    desktop.expect_box("This will set all question at level 0; do you really want to do this?",
                       platform::BoxAnswer::yes);
    course.params.time_ever = 100;
    database.fail_commit(true);
    scoring.m_reset_all();
    EXPECT_EQ(stored().attempts, 0);
    EXPECT_EQ(course.params.score_today, 0);
    EXPECT_EQ(course.params.time_ever, 0);
    EXPECT_EQ(panels().score, 0);
}

TEST_F(FailedCommitOfAVerdict, of_a_reset_that_is_not_stored_changes_nothing)
{
    desktop.expect_box("This will set all question at level 0; do you really want to do this?",
                       platform::BoxAnswer::yes);
    database.fail_commit(false);
    EXPECT_THROW(scoring.m_reset_all(), platform::CommitError);
    EXPECT_EQ(stored().attempts, 4);
    EXPECT_EQ(course.params.score_today, 6);
}

TEST_F(FailedCommitOfAVerdict, of_a_reset_of_unknown_outcome_is_settled_later)
{
    desktop.expect_box("This will set all question at level 0; do you really want to do this?",
                       platform::BoxAnswer::yes);
    database.fail_commit(true);
    database.fail_at(Operation::open_recordset);
    EXPECT_THROW(scoring.m_reset_all(), store::OutcomeUnknown);
    EXPECT_EQ(course.params.score_today, 6);
    statistics.refresh_counts();
    EXPECT_EQ(course.params.score_today, 0);
}

TEST_F(FailedCommitOfAVerdict, of_an_undo_is_told_as_it_is)
{
    scoring.set_success();
    database.fail_commit(true);
    scoring.m_undo();
    EXPECT_EQ(stored().successes, 2);
    EXPECT_TRUE(desktop.boxes.empty());

    clock.advance_seconds(13 * 3600);
    scoring.set_success();
    ASSERT_GT(stored().successes, 2);
    database.fail_commit(false);
    desktop.expect_box("The last result cannot be undone.\r\n\r\nThe commit failed.");
    scoring.m_undo();

    database.fail_commit(true);
    database.fail_at(Operation::query);
    desktop.expect_box("The commit failed. It is not known whether the change is stored, because the course cannot be "
                       "read again.");
    scoring.m_undo();
}

TEST_F(FailedCommitOfAVerdict, of_a_verdict_is_settled_before_it_is_known_which_one_an_undo_is_about)
{
    scoring.set_failure();
    display.take_for_record(2);
    database.fail_commit(true);
    make_unreadable();
    EXPECT_THROW(scoring.set_failure(), store::OutcomeUnknown);
    scoring.m_undo();
    EXPECT_EQ(file().qa.at(1).q_side.successes, 1) << "it was the last one";
    EXPECT_EQ(stored().successes, 0);
    EXPECT_EQ(current_cnt(), 2);
}

TEST_F(FailedCommitOfAVerdict, of_the_first_verdict_is_settled_by_an_undo)
{
    database.fail_commit(true);
    make_unreadable();
    EXPECT_THROW(scoring.set_failure(), store::OutcomeUnknown);
    scoring.m_undo();
    EXPECT_EQ(stored().successes, 2);
    EXPECT_EQ(shows(), 1);
}

TEST_F(FailedCommitOfAVerdict, of_a_reset_that_comes_to_light_in_an_undo_leaves_nothing_to_be_undone)
{
    scoring.set_failure();
    desktop.expect_box("This will set all question at level 0; do you really want to do this?",
                       platform::BoxAnswer::yes);
    database.fail_commit(true);
    database.fail_at(Operation::open_recordset);
    EXPECT_THROW(scoring.m_reset_all(), store::OutcomeUnknown);
    scoring.m_undo();
    EXPECT_EQ(stored().successes, 0);
    EXPECT_EQ(stored().attempts, 0);
    EXPECT_EQ(shows(), 0);
    EXPECT_EQ(database.transaction_depth(), 0);
}

TEST_F(FailedCommitOfAVerdict, of_unknown_outcome_keeps_an_undo_from_acting_on_another_verdict)
{
    scoring.set_failure();
    display.take_for_record(2);
    database.fail_commit(true);
    make_unreadable();
    EXPECT_THROW(scoring.set_failure(), store::OutcomeUnknown);
    database.fail_at(Operation::query);
    desktop.expect_box("The last result cannot be undone.\r\n\r\nThe commit failed. It is not known whether the change "
                       "before this one is stored, because the course cannot be read again.");
    scoring.m_undo();
    EXPECT_EQ(stored().successes, 0);
    EXPECT_EQ(shows(), 0);
}

TEST_F(FailedCommitOfAVerdict, of_the_stamp_is_told_only_where_it_is_not_stored)
{
    database.fail_commit(true);
    scoring.StampLastShow();
    EXPECT_EQ(stored().date_last_show, clock.time);
    clock.advance_seconds(1);
    database.fail_commit(false);
    EXPECT_THROW(scoring.StampLastShow(), platform::CommitError);
}

TEST_F(FailedCommitOfAVerdict, of_a_stamp_of_unknown_outcome_is_told_and_leaves_the_question_where_it_is)
{
    for (const bool is_stored : {true, false}) {
        SCOPED_TRACE(is_stored);
        const auto before = stored();
        clock.advance_seconds(1);
        database.fail_commit(is_stored);
        database.fail_at(Operation::query);
        EXPECT_THROW(scoring.StampLastShow(), store::OutcomeUnknown);
        EXPECT_EQ(current_cnt(), 1);
        EXPECT_TRUE(state.shown.is_question());
        EXPECT_EQ(database.transaction_depth(), 0);
        EXPECT_EQ(stored().date_last_show, is_stored ? clock.time : before.date_last_show);
        clock.advance_seconds(1);
        scoring.StampLastShow();
        EXPECT_EQ(stored().date_last_show, clock.time) << "it may be stamped again";
    }
}

} // namespace
} // namespace cuedrill::drill
