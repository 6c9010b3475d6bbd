#include "drill/scoring.h"
#include "drill/scoring_fixture.h"

#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

using fakes::CourseBuilder;
using fakes::SideRow;

class Failure : public ScoringFixture {
protected:
    void open_at_level(int level)
    {
        CourseBuilder builder;
        builder.question("asked").level(level).attempts(4).fails(2).tested_ago(one_day);
        builder.number_param("score_today", 0);
        open_with_current(builder);
    }
};

TEST_F(Failure, sends_the_question_back_to_level_0)
{
    open_at_level(4);
    scoring.set_failure();
    EXPECT_EQ(
        stored(),
        (SideRow{
            .attempts = 5, .fails = 3, .successes = 0, .date_last_test = clock.time, .date_last_show = clock.time}));
    EXPECT_EQ(panels().marked, 0);
    EXPECT_EQ(panels().counts, (std::vector<std::int64_t>{1, 0, 0, 0, 0, 0}));
}

TEST_F(Failure, clears_the_status_line)
{
    open_at_level(4);
    scoring.set_failure();
    expect_status("", 0);
}

TEST_F(Failure, above_level_0_takes_a_point_even_below_zero)
{
    open_at_level(1);
    scoring.set_failure();
    EXPECT_EQ(course.params.score_today, -1);
    EXPECT_EQ(panels().score, -1);
}

TEST_F(Failure, at_level_0_takes_no_point)
{
    open_at_level(0);
    scoring.set_failure();
    EXPECT_EQ(course.params.score_today, 0);
    scoring.set_failure();
    EXPECT_EQ(course.params.score_today, 0);
    EXPECT_EQ(stored().fails, 4);
}

TEST_F(Failure, of_a_never_tested_question_starts_its_history)
{
    CourseBuilder builder;
    builder.question("asked");
    open_with_current(builder);
    scoring.set_failure();
    EXPECT_EQ(
        stored(),
        (SideRow{
            .attempts = 1, .fails = 1, .successes = 0, .date_last_test = clock.time, .date_last_show = clock.time}));
    EXPECT_EQ(course.params.score_today, 0);
}

TEST_F(Failure, of_an_inverted_course_is_recorded_for_the_other_direction)
{
    CourseBuilder builder;
    builder.question("asked").level(4).tested_ago(one_day).inverted().level(3).tested_ago(one_day);
    builder.number_param("invert", 1);
    open_with_current(builder);
    const SideRow before = stored();
    scoring.set_failure();
    EXPECT_EQ(file().qa.at(0).a_side.successes, 0);
    EXPECT_EQ(file().qa.at(0).a_side.fails, 1);
    EXPECT_EQ(stored(), before);
}

TEST_F(Failure, on_a_record_that_has_vanished_says_so_and_takes_the_question_away)
{
    open_at_level(4);
    database.execute("Delete from qa");
    const auto before = file();
    try {
        scoring.set_failure();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const store::RecordGone& error) {
        EXPECT_STREQ(error.what(), "The question is no longer in the course; another program has deleted it.");
    }
    EXPECT_EQ(file(), before);
    EXPECT_EQ(course.params.score_today, 0);
    EXPECT_EQ(course.record_count, 0);
    EXPECT_EQ(panels().total, 0);
    EXPECT_FALSE(state.shown.is_question());
    EXPECT_EQ(panels().marked, std::nullopt);
    EXPECT_EQ(database.transaction_depth(), 0);
}

} // namespace
} // namespace cuedrill::drill
