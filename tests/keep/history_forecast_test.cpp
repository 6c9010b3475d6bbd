#include "keep/history_forecast.h"

#include <gtest/gtest.h>
#include <vector>

namespace cuedrill::keep {
namespace {

class HistoryForecast : public testing::Test {
protected:
    HistoryForecast() { dead_times.init_dead_time_array(); }

    static common::DateTime at(int day, int hour = 12)
    {
        return common::DateTime::from_fields(
            {.year = 2026, .month = 11, .day = day, .hour = hour, .minute = 0, .second = 0});
    }

    void judge(common::DateTime time, common::Int16 record, common::Int16 level, bool inverted = false)
    {
        events.push_back(
            {.time = time, .kind = HistoryKind::verdict, .record = record, .inverted = inverted, .level_after = level});
    }

    void note(common::DateTime time, HistoryKind kind, common::Int16 record = 0)
    {
        events.push_back({.time = time, .kind = kind, .record = record});
    }

    [[nodiscard]] std::vector<ForecastOfDay> made(int today = 22, int days = 60) const
    {
        return forecast_by_day(events, dead_times, 5, at(today), days);
    }

    scheduler::DeadTimes dead_times;
    std::vector<HistoryEvent> events;
};

TEST_F(HistoryForecast, of_nothing_is_nothing)
{
    EXPECT_TRUE(made().empty());
}

TEST_F(HistoryForecast, begins_with_the_first_day)
{
    judge(at(20), 1, 0);
    EXPECT_EQ(made(), (std::vector<ForecastOfDay>{{at(20, 0), 0, 0}, {at(21, 0), 1, 0}, {at(22, 0), 1, 0}}));
    EXPECT_EQ(made(22, 2).size(), 2U);
    EXPECT_EQ(made(22, 2).front().day, at(21, 0));
}

TEST_F(HistoryForecast, knows_when_a_level_is_due_and_what_was_asked)
{
    judge(at(18), 1, 4); // rests two days
    judge(at(18), 2, 4);
    judge(at(20), 1, 5); // the target
    const std::vector<ForecastOfDay> found = made();
    ASSERT_EQ(found.size(), 5U);
    EXPECT_EQ(found[1].expected, 0);
    EXPECT_EQ(found[2], (ForecastOfDay{at(20, 0), 2, 1}));
    EXPECT_EQ(found[3], (ForecastOfDay{at(21, 0), 1, 0})) << "one has passed, the other waits";
}

TEST_F(HistoryForecast, tells_the_directions_of_a_record_apart)
{
    judge(at(20), 1, 0);
    judge(at(20), 1, 0, true);
    judge(at(21), 1, 0, true);
    EXPECT_EQ(made()[1], (ForecastOfDay{at(21, 0), 2, 1}));
}

TEST_F(HistoryForecast, forgets_records_that_left_and_levels_that_were_reset)
{
    for (const HistoryKind kind : {HistoryKind::deleted, HistoryKind::changed, HistoryKind::reset}) {
        events.clear();
        judge(at(20), 1, 0);
        judge(at(20), 1, 0, true);
        note(at(20, 13), kind, 1);
        EXPECT_EQ(made()[1].expected, 0);
    }
}

TEST_F(HistoryForecast, takes_an_undo_as_the_level_before)
{
    judge(at(20), 1, 4);
    events.push_back({.time = at(20, 13), .kind = HistoryKind::undone, .record = 1, .level_after = 0});
    EXPECT_EQ(made()[1].expected, 1);
}

TEST_F(HistoryForecast, leaves_the_days_before_alone_but_not_what_they_tell)
{
    judge(at(10), 1, 0);
    const std::vector<ForecastOfDay> found = made(22, 3);
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0], (ForecastOfDay{at(20, 0), 1, 0}));
}

TEST_F(HistoryForecast, takes_lines_in_any_order_of_days)
{
    judge(at(21), 1, 5);
    judge(at(20), 1, 0);
    EXPECT_EQ(made()[1], (ForecastOfDay{at(21, 0), 1, 1}));
    EXPECT_EQ(made()[2].expected, 0);
}

} // namespace
} // namespace cuedrill::keep
