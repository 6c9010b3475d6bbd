#include "drill/scoring_fixture.h"
#include "drill/statistics.h"

#include <array>
#include <cstdio>
#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

using fakes::CourseBuilder;

class WorkTimeDisplay : public ScoringFixture {
protected:
    void open_used(common::DateTime last_date)
    {
        open(CourseBuilder()
                 .number_param("target_level", 5)
                 .date_param("last_date", last_date)
                 .number_param("time_ever", 100 * 3600)
                 .number_param("time_TODAY", 1800)
                 .number_param("score_TODAY", 4));
    }

    void expect_display(const std::string& open_time, const std::string& today, const std::string& ever) const
    {
        EXPECT_EQ(panels().open_time, open_time);
        EXPECT_EQ(panels().today, today);
        EXPECT_EQ(panels().ever, ever);
    }
};

TEST_F(WorkTimeDisplay, includes_the_running_time_and_goes_beyond_24_hours)
{
    open_used(clock.time);
    clock.advance_seconds(3600 + 59);
    statistics.refresh_work_time();
    expect_display("01:00", "01:30", "101:00");
    clock.advance_seconds(1);
    statistics.refresh_work_time();
    expect_display("01:01", "01:31", "101:01");
}

TEST_F(WorkTimeDisplay, starts_the_day_at_zero_on_the_day_after_the_last_use)
{
    open_used(clock.time.plus_days(-1));
    statistics.refresh_work_time();
    expect_display("00:00", "00:00", "100:00");
    EXPECT_EQ(course.params.score_today, 0);
}

TEST_F(WorkTimeDisplay, measures_the_open_time_from_the_start_of_the_program_in_every_course)
{
    clock.advance_seconds(7200);
    open_used(clock.time);
    clock.advance_seconds(60);
    statistics.refresh_work_time();
    expect_display("02:01", "00:31", "100:01");
}

TEST_F(WorkTimeDisplay, drops_the_time_of_the_day_before_at_midnight)
{
    open_used(clock.time);
    const auto midnight = clock.time.date_only().plus_days(1);
    const std::int64_t until = midnight.seconds() - clock.time.seconds();
    clock.time = midnight;
    statistics.refresh_work_time();
    EXPECT_EQ(panels().today, common::format_hours_minutes(static_cast<double>(until)));
}

TEST_F(WorkTimeDisplay, never_goes_below_zero_when_the_clock_is_put_back)
{
    open_used(clock.time);
    clock.advance_seconds(-3600);
    statistics.refresh_work_time();
    expect_display("00:00", "00:30", "100:00");
}

TEST_F(WorkTimeDisplay, is_part_of_every_refresh_of_the_counts)
{
    open_used(clock.time);
    clock.advance_seconds(60);
    statistics.refresh_counts();
    expect_display("00:01", "00:31", "100:01");
}

/// Converting minutes to fractions of a day and back loses no minute.
TEST_F(WorkTimeDisplay, is_exact_at_every_whole_minute_of_three_days)
{
    open_used(clock.time.plus_days(-1));
    const auto start = clock.time.seconds();
    for (int minute = 0; minute <= 3 * 24 * 60; ++minute) {
        clock.time = common::DateTime::from_seconds(start + minute * 60);
        statistics.refresh_work_time();
        std::array<char, 16> expected{};
        std::snprintf(expected.data(), expected.size(), "%02d:%02d", minute / 60, minute % 60);
        ASSERT_EQ(panels().open_time, expected.data());
    }
}

} // namespace
} // namespace cuedrill::drill
