#include "drill/scoring.h"
#include "drill/scoring_fixture.h"

#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

using fakes::CourseBuilder;
using fakes::Operation;
using fakes::SideRow;
using platform::BoxAnswer;

class ResetAll : public ScoringFixture {
protected:
    ResetAll()
    {
        CourseBuilder builder;
        builder.question("a").level(3).attempts(4).fails(2).tested_ago(2h).inverted().level(1).attempts(9).tested_ago(
            1h);
        builder.question("b");
        builder.date_param("last_date", clock.time)
            .number_param("time_ever", 5000)
            .number_param("time_TODAY", 50)
            .number_param("score_TODAY", 9);
        open_with_current(builder);
        statistics.show_score();
    }

    void expect_question(BoxAnswer answer)
    {
        desktop.expect_box_like({.text = "This will set all question at level 0; do you really want to do this?",
                                 .buttons = platform::BoxButtons::yes_no,
                                 .icon = platform::BoxIcon::exclamation,
                                 .default_button = BoxAnswer::no},
                                answer);
    }

    void expect_unchanged_counters() const
    {
        EXPECT_EQ(course.params.time_ever, 5000);
        EXPECT_EQ(course.params.time_today, 50);
        EXPECT_EQ(course.params.score_today, 9);
        EXPECT_EQ(panels().score, 9);
    }
};

TEST_F(ResetAll, sends_every_record_back_to_level_0_in_both_directions)
{
    expect_question(BoxAnswer::yes);
    scoring.m_reset_all();
    const SideRow reset{.attempts = 0, .fails = 0, .successes = 0, .date_last_test = {}, .date_last_show = {}};
    for (const auto& row : file().qa) {
        EXPECT_EQ(row.q_side, reset);
        EXPECT_EQ(row.a_side, reset);
    }
    EXPECT_EQ(file().qa.at(0).q, "a");
}

/// A crash after the reset does not restore the old score and times.
TEST_F(ResetAll, stores_the_counters_at_once)
{
    clock.advance_seconds(20);
    expect_question(BoxAnswer::yes);
    scoring.m_reset_all();
    EXPECT_EQ(file().number("score_TODAY"), 0);
    EXPECT_EQ(file().number("time_TODAY"), 20);
    EXPECT_EQ(file().number("time_ever"), 20);
}

TEST_F(ResetAll, is_one_statement_for_all_records)
{
    expect_question(BoxAnswer::yes);
    scoring.m_reset_all();
    EXPECT_EQ(database.count(Operation::execute), 5) << "it and four counters";
    EXPECT_EQ(database.statements().at(0),
              "Update qa set q_attempts=0, a_attempts=0, q_fails=0, a_fails=0, q_successes=0, a_successes=0,"
              "q_date_last_test=null, a_date_last_test=null,q_date_last_show=null, a_date_last_show=null");
}

TEST_F(ResetAll, sets_the_figures_to_zero_and_refreshes_the_counts)
{
    expect_question(BoxAnswer::yes);
    scoring.m_reset_all();
    EXPECT_EQ(course.params.time_ever, 0);
    EXPECT_EQ(course.params.time_today, 0);
    EXPECT_EQ(course.params.score_today, 0);
    EXPECT_EQ(panels().score, 0);
    EXPECT_EQ(panels().counts, (std::vector<std::int64_t>{2, 0, 0, 0, 0, 0}));
    EXPECT_EQ(panels().today, "00:00");
    EXPECT_EQ(panels().ever, "00:00");
}

TEST_F(ResetAll, leaves_no_verdict_to_undo)
{
    scoring.set_failure();
    expect_question(BoxAnswer::yes);
    scoring.m_reset_all();
    scoring.m_undo();
    EXPECT_EQ(stored().successes, 0);
    EXPECT_EQ(shows(), 0);
}

TEST_F(ResetAll, does_nothing_after_a_no)
{
    const auto before = file();
    expect_question(BoxAnswer::no);
    scoring.m_reset_all();
    EXPECT_EQ(file(), before);
    expect_unchanged_counters();
}

/// Records, figures and the verdict to undo are unchanged if the statement fails.
TEST_F(ResetAll, changes_nothing_when_the_engine_refuses_it)
{
    scoring.set_failure();
    course.params.score_today = 9;
    statistics.show_score();
    const auto before = file();
    expect_question(BoxAnswer::yes);
    database.fail_at(Operation::execute);
    EXPECT_THROW(scoring.m_reset_all(), platform::DatabaseError);
    EXPECT_EQ(file(), before);
    expect_unchanged_counters();
    EXPECT_EQ(desktop.pointer_depth, 0);
    scoring.m_undo();
    EXPECT_EQ(stored().successes, 3);
}

TEST_F(ResetAll, refreshes_the_figures_of_the_question_on_display)
{
    expect_question(BoxAnswer::yes);
    scoring.m_reset_all();
    EXPECT_EQ(form1.screen.PANEL_Q_LEVEL.text, "0");
    EXPECT_EQ(form1.screen.PANEL_Q_ATTEMPTS.text, "0");
    EXPECT_TRUE(state.shown.is_question());
    EXPECT_EQ(current_cnt(), 1);
}

/// A question must not be judged next to outdated counts.
TEST_F(ResetAll, takes_the_question_away_when_the_counts_cannot_be_refreshed)
{
    expect_question(BoxAnswer::yes);
    database.fail_at(Operation::open_recordset);
    EXPECT_THROW(scoring.m_reset_all(), platform::DatabaseError);
    EXPECT_EQ(current_cnt(), 0);
    EXPECT_FALSE(state.shown.is_question());
    EXPECT_EQ(stored().attempts, 0);
    EXPECT_EQ(course.params.score_today, 0);
    EXPECT_EQ(panels().score, 0);
}

/// Records and counters are reset together or not at all.
TEST_F(ResetAll, changes_nothing_when_the_counters_cannot_be_stored)
{
    const auto before = file();
    expect_question(BoxAnswer::yes);
    database.fail_at(Operation::execute, 2);
    EXPECT_THROW(scoring.m_reset_all(), platform::DatabaseError);
    EXPECT_EQ(file(), before);
    expect_unchanged_counters();
}

} // namespace
} // namespace cuedrill::drill
