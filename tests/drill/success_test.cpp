#include "common/errors.h"
#include "drill/scoring.h"
#include "drill/scoring_fixture.h"

#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

using fakes::CourseBuilder;
using fakes::SideRow;

const std::string precocity = "score of previous question not increased due to precocity of question";

class Success : public ScoringFixture {
protected:
    /// Opens a course with a question of this history, which is current, and another one, not passed.
    void open_with_history(int level, std::chrono::seconds tested_ago)
    {
        CourseBuilder builder;
        builder.question("asked").level(level).attempts(4).fails(2).tested_ago(tested_ago);
        builder.question("other").level(0).tested_ago(1s);
        open_with_current(builder);
    }

    void expect_status(const std::string& text)
    {
        EXPECT_EQ(status_texts(), std::vector<std::string>{text});
        ScoringFixture::expect_status(text, 5);
    }
};

TEST_F(Success, of_a_never_tested_question_leads_to_level_3_and_a_point)
{
    CourseBuilder builder;
    builder.question("asked");
    builder.question("other").level(0).tested_ago(1s);
    open_with_current(builder);
    scoring.set_success();
    EXPECT_EQ(stored(), (SideRow{.attempts = 1,
                                 .fails = std::nullopt,
                                 .successes = 3,
                                 .date_last_test = clock.time,
                                 .date_last_show = clock.time}));
    expect_status("score of previous question increased from 0 to 3 (elapsed 0.40 days)");
    EXPECT_EQ(course.params.score_today, 1);
    EXPECT_EQ(panels().score, 1);
    EXPECT_EQ(panels().marked, 3);
    EXPECT_EQ(file().qa.at(0).a_side, SideRow{}) << "the other direction is untouched";
}

TEST_F(Success, too_early_changes_counters_and_dates_but_not_the_level)
{
    open_with_history(2, 2min);
    scoring.set_success();
    EXPECT_EQ(
        stored(),
        (SideRow{
            .attempts = 5, .fails = 2, .successes = 2, .date_last_test = clock.time, .date_last_show = clock.time}));
    expect_status(precocity);
    EXPECT_EQ(course.params.score_today, 1);
    EXPECT_EQ(panels().marked, 2);
}

TEST_F(Success, after_a_long_time_lifts_over_several_levels)
{
    open_with_history(1, 3 * one_day);
    scoring.set_success();
    EXPECT_EQ(stored().successes, 5);
    expect_status("score of previous question increased from 1 to 5 (elapsed 3.00 days)");
    EXPECT_EQ(panels().marked, 5);
}

TEST_F(Success, after_more_than_a_year_leads_to_level_10_and_marks_the_last_panel)
{
    open_with_history(9, 400 * one_day);
    scoring.set_success();
    EXPECT_EQ(stored().successes, 10);
    expect_status("score of previous question increased from 9 to 10 (elapsed 400.00 days)");
    EXPECT_EQ(panels().marked, 5);
}

TEST_F(Success, never_lowers_a_level)
{
    open_with_history(7, 0s);
    scoring.set_success();
    EXPECT_EQ(stored().successes, 7);
    expect_status(precocity);
    EXPECT_EQ(panels().marked, 5);
}

TEST_F(Success, at_a_level_of_0_or_1_gives_no_point)
{
    open_with_history(0, 7s);
    scoring.set_success();
    EXPECT_EQ(stored().successes, 0);
    EXPECT_EQ(course.params.score_today, 0);
    clock.advance_seconds(8);
    scoring.set_success();
    EXPECT_EQ(stored().successes, 1);
    EXPECT_EQ(course.params.score_today, 0);
    clock.advance_seconds(300);
    scoring.set_success();
    EXPECT_EQ(stored().successes, 2);
    EXPECT_EQ(course.params.score_today, 1);
}

TEST_F(Success, reads_a_missing_level_of_a_tested_question_as_0_and_stores_it)
{
    CourseBuilder builder;
    builder.question("asked").tested_ago(3s);
    open_with_current(builder);
    course.all_passed_announced = true;
    scoring.set_success();
    EXPECT_EQ(stored().successes, 0);
    EXPECT_EQ(stored().attempts, 1);
}

TEST_F(Success, counts_a_last_test_in_the_future_as_just_now)
{
    open_with_history(0, -2h);
    scoring.set_success();
    EXPECT_EQ(stored().successes, 0);
    expect_status(precocity);
}

TEST_F(Success, of_an_inverted_course_is_recorded_for_the_other_direction)
{
    CourseBuilder builder;
    builder.question("asked").level(1).tested_ago(one_day).inverted().level(2).tested_ago(13h);
    builder.number_param("invert", 1);
    open_with_current(builder);
    course.all_passed_announced = true;
    const SideRow before = stored();
    scoring.set_success();
    EXPECT_EQ(file().qa.at(0).a_side.successes, 4);
    EXPECT_EQ(stored(), before);
}

TEST_F(Success, shows_levels_of_courses_made_elsewhere_inside_their_range)
{
    open_with_history(-3, 9s);
    scoring.set_success();
    EXPECT_EQ(stored().successes, 1);
    expect_status("score of previous question increased from 0 to 1 (elapsed 0.00 days)");
}

TEST_F(Success, tells_an_elapsed_time_below_zero_as_zero)
{
    open_with_history(-3, -48h);
    scoring.set_success();
    expect_status("score of previous question increased from 0 to 0 (elapsed 0.00 days)");
}

TEST_F(Success, keeps_a_level_beyond_the_range)
{
    open_with_history(32767, 900 * one_day);
    scoring.set_success();
    EXPECT_EQ(stored().successes, 32767);
    EXPECT_EQ(panels().marked, 5);
}

struct CapCase {
    std::chrono::seconds elapsed;
    int level;
};

class SuccessCap : public Success, public testing::WithParamInterface<CapCase> {};

/// Exactly the dead time is enough for the next level; one second less is not.
TEST_P(SuccessCap, is_what_the_elapsed_time_proves)
{
    open_with_history(0, GetParam().elapsed);
    scoring.set_success();
    EXPECT_EQ(stored().successes, GetParam().level);
}

INSTANTIATE_TEST_SUITE_P(AtEveryBoundary, SuccessCap,
                         testing::Values(CapCase{0s, 0}, CapCase{7s, 0}, CapCase{8s, 1}, CapCase{5min - 1s, 1},
                                         CapCase{5min, 2}, CapCase{1h - 1s, 2}, CapCase{1h, 3}, CapCase{12h - 1s, 3},
                                         CapCase{12h, 4}, CapCase{48h - 1s, 4}, CapCase{48h, 5},
                                         CapCase{7 * one_day - 1s, 5}, CapCase{7 * one_day, 6},
                                         CapCase{20 * one_day - 1s, 6}, CapCase{20 * one_day, 7},
                                         CapCase{60 * one_day - 1s, 7}, CapCase{60 * one_day, 8},
                                         CapCase{120 * one_day - 1s, 8}, CapCase{120 * one_day, 9},
                                         CapCase{365 * one_day - 1s, 9}, CapCase{365 * one_day, 10}));

TEST_F(Success, refreshes_the_counts)
{
    open_with_history(0, 2h);
    scoring.set_success();
    EXPECT_EQ(panels().counts, (std::vector<std::int64_t>{1, 0, 0, 1, 0, 0}));
    EXPECT_EQ(panels().unpassed, 2);
}

TEST_F(Success, of_the_last_question_below_the_target_is_congratulated_once)
{
    CourseBuilder builder;
    builder.question("asked").level(2).tested_ago(13h);
    builder.number_param("target_level", 4);
    open_with_current(builder);
    desktop.expect_box_like({.text = "Congratulations! You have passed level 4 for all questions."},
                            platform::BoxAnswer::ok);
    scoring.set_success();
    EXPECT_TRUE(course.all_passed_announced);
    scoring.set_success();
    EXPECT_EQ(desktop.boxes.size(), 1U);
}

/// A crash after the verdict loses neither the level nor the score.
TEST_F(Success, stores_the_score_of_the_day_with_the_verdict)
{
    open_with_history(2, 2h);
    course.params.score_today = 6;
    clock.advance_seconds(30);
    scoring.set_success();
    EXPECT_EQ(file().number("score_TODAY"), 7);
    EXPECT_EQ(file().number("time_TODAY"), 30);
    EXPECT_EQ(course.params.score_today, 7);
}

TEST_F(Success, is_eight_statements)
{
    open_with_history(2, 2h);
    course.params.score_today = 6;
    scoring.set_success();
    EXPECT_EQ(database.count(fakes::Operation::begin), 1);
    EXPECT_EQ(database.count(fakes::Operation::query), 1) << "the record is read";
    EXPECT_EQ(database.count(fakes::Operation::execute), 5) << "the record and four counters are written";
    EXPECT_EQ(database.count(fakes::Operation::commit), 1);
}

/// If the counters cannot be stored, neither the verdict nor the score is stored or kept in memory.
TEST_F(Success, is_not_stored_when_the_score_cannot_be)
{
    open_with_history(2, 2h);
    const auto before = file();
    database.fail_at(fakes::Operation::execute, 2);
    EXPECT_THROW(scoring.set_success(), platform::DatabaseError);
    EXPECT_EQ(file(), before);
    EXPECT_EQ(course.params.score_today, 0);
}

TEST_F(Success, is_not_congratulated_while_a_question_is_below_the_target)
{
    open_with_history(4, 3 * one_day);
    scoring.set_success();
    EXPECT_FALSE(course.all_passed_announced);
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(Success, on_a_record_that_has_vanished_is_told_and_ends_the_program)
{
    open_with_history(2, 2h);
    clock.advance_seconds(60);
    display.take_for_record(99);
    const auto before = file();
    desktop.expect_box_like({.text = "nomatch in set_success"}, platform::BoxAnswer::ok);
    EXPECT_THROW(scoring.set_success(), common::ProgramEnded);
    EXPECT_FALSE(course.is_open());
    EXPECT_EQ(file().qa, before.qa);
    EXPECT_EQ(file().number("time_ever"), 60) << "the work counters are stored";
    EXPECT_TRUE(status_texts().empty());
}

} // namespace
} // namespace cuedrill::drill
