#include "course_fixture.h"
#include "store/course_params.h"

#include <gtest/gtest.h>

namespace cuedrill::store {
namespace {

using fakes::CourseBuilder;
using fakes::CourseContents;
using fakes::Operation;
using fakes::ParamRow;
using platform::DatabaseError;

class WorkTime : public CourseFixture {
protected:
    /// Opens a course that was last used an hour ago, with 100 s of work today, 1000 s ever, and a score of 7.
    void open_used_today()
    {
        open(CourseBuilder()
                 .number_param("target_level", 5)
                 .date_param("last_date", common::DateTime::from_seconds(clock.time.seconds() - 3600))
                 .number_param("time_ever", 1000)
                 .number_param("time_TODAY", 100)
                 .number_param("score_TODAY", 7));
        params.read_params();
    }
};

TEST_F(WorkTime, is_inserted_in_order_with_the_keys_of_the_day_in_capitals)
{
    open(CourseBuilder().number_param("target_level", 5));
    params.read_params();
    course.params.score_today = -2;
    clock.advance_seconds(75);
    params.save_work_time(clock.time);
    EXPECT_EQ(file().params, (std::vector<ParamRow>{{.param = "target_level", .number_value = 5},
                                                    {.param = "time_ever", .number_value = 75},
                                                    {.param = "time_TODAY", .number_value = 75},
                                                    {.param = "score_TODAY", .number_value = -2},
                                                    {.param = "last_date", .date_value = clock.time}}));
}

TEST_F(WorkTime, adds_the_time_since_opening_to_what_was_read)
{
    open_used_today();
    clock.advance_seconds(60);
    params.save_work_time(clock.time);
    EXPECT_EQ(file().number("time_ever"), 1060);
    EXPECT_EQ(file().number("time_TODAY"), 160);
    EXPECT_EQ(file().number("score_TODAY"), 7);
    EXPECT_EQ(file().param("last_date")->date_value, clock.time);
}

TEST_F(WorkTime, counts_nothing_twice_when_it_is_stored_again)
{
    open_used_today();
    for (int minute = 1; minute <= 3; ++minute) {
        clock.advance_seconds(60);
        params.save_work_time(clock.time);
        EXPECT_EQ(file().number("time_ever"), 1000 + 60 * minute);
        EXPECT_EQ(file().number("time_TODAY"), 100 + 60 * minute);
    }
    EXPECT_EQ(file().params.size(), 5U);
}

TEST_F(WorkTime, is_found_whatever_the_case_of_its_keys)
{
    open(CourseBuilder()
             .number_param("target_level", 5)
             .number_param("time_today", 1)
             .number_param("Score_Today", 1)
             .number_param("TIME_EVER", 1));
    params.read_params();
    params.save_work_time(clock.time);
    EXPECT_EQ(file().param_names(),
              (std::vector<std::string>{"target_level", "time_today", "Score_Today", "TIME_EVER", "last_date"}));
}

TEST_F(WorkTime, starts_the_day_from_the_elapsed_time_alone_when_the_last_was_another_day)
{
    open(CourseBuilder()
             .number_param("target_level", 5)
             .date_param("last_date", clock.time.plus_days(-1))
             .number_param("time_ever", 1000)
             .number_param("time_TODAY", 100));
    params.read_params();
    clock.advance_seconds(30);
    EXPECT_EQ(params.time_today(clock.time), 30);
    EXPECT_EQ(params.time_ever(clock.time), 1030);
}

TEST_F(WorkTime, counts_the_elapsed_time_alone_for_the_day_once_midnight_has_passed)
{
    open_used_today();
    const auto midnight = clock.time.date_only().plus_days(1);
    const auto last_second = common::DateTime::from_seconds(midnight.seconds() - 1);
    const double until_midnight = static_cast<double>(midnight.seconds() - clock.time.seconds());
    EXPECT_EQ(params.time_today(last_second), 100 + until_midnight - 1);
    EXPECT_EQ(params.time_today(midnight), until_midnight);
    EXPECT_EQ(params.time_ever(midnight), 1000 + until_midnight);
}

TEST_F(WorkTime, is_never_taken_away_by_a_clock_that_is_put_back)
{
    open_used_today();
    clock.advance_seconds(-600);
    params.save_work_time(clock.time);
    EXPECT_EQ(file().number("time_ever"), 1000);
    EXPECT_EQ(file().number("time_TODAY"), 100);
    EXPECT_EQ(file().param("last_date")->date_value, clock.time);
}

TEST_F(WorkTime, is_continued_by_the_next_opening)
{
    open_used_today();
    clock.advance_seconds(60);
    params.save_work_time(clock.time);
    course.close();
    clock.advance_seconds(600);
    course.apri_db();
    params.read_params();
    course.start_counting(clock.time);
    clock.advance_seconds(5);
    EXPECT_EQ(params.time_ever(clock.time), 1065);
    EXPECT_EQ(params.time_today(clock.time), 165);
    EXPECT_EQ(course.params.score_today, 7);
}

/// Proves that the counters in the file and in memory are as before when storing them fails at any step.
class FailingWorkTime : public WorkTime, public testing::WithParamInterface<std::pair<Operation, int>> {};

TEST_P(FailingWorkTime, changes_neither_memory_nor_file)
{
    open_used_today();
    const CourseContents before = file();
    clock.advance_seconds(60);
    database.fail_at(GetParam().first, GetParam().second);
    EXPECT_THROW(params.save_work_time(clock.time), DatabaseError);
    EXPECT_EQ(file(), before);
    EXPECT_EQ(course.params.time_ever, 1000);
    EXPECT_EQ(course.params.time_today, 100);
    params.save_work_time(clock.time);
    EXPECT_EQ(file().number("time_ever"), 1060) << "the next attempt stores all";
}

INSTANTIATE_TEST_SUITE_P(AtEveryStep, FailingWorkTime,
                         testing::Values(std::pair(Operation::begin, 1), std::pair(Operation::execute, 1),
                                         std::pair(Operation::execute, 4), std::pair(Operation::commit, 1)));

} // namespace
} // namespace cuedrill::store
