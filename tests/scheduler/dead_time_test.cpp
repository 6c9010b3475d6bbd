#include "common/date_time.h"
#include "common/errors.h"
#include "scheduler/dead_time.h"

#include <gtest/gtest.h>

namespace cuedrill::scheduler {
namespace {

class DeadTime : public testing::Test {
protected:
    DeadTimes dead_times;
    DeadTime() { dead_times.init_dead_time_array(); }
};

TEST_F(DeadTime, is_that_of_the_table)
{
    const double table[] = {8 / 86400.0, 5 / 1440.0, 1 / 24.0, 12 / 24.0, 2, 7, 20, 60, 120, 365};
    for (int level = 0; level < DeadTimes::count; ++level)
        EXPECT_DOUBLE_EQ(dead_times.dead_time(level), table[level]) << level;
    EXPECT_DOUBLE_EQ(dead_times.unanswered_dead_time(), 8 / 86400.0);
}

TEST_F(DeadTime, has_no_entry_outside_levels_0_to_9)
{
    EXPECT_THROW((void)dead_times.dead_time(-1), common::OutOfRangeError);
    EXPECT_THROW((void)dead_times.dead_time(10), common::OutOfRangeError);
}

TEST(Duration, adds_its_parts_in_days)
{
    EXPECT_DOUBLE_EQ(duration(1, 6, 72, 864), 1 + 0.25 + 0.05 + 0.01);
}

// A level is proven after exactly its dead time, and not one second earlier.
TEST_F(DeadTime, proves_a_level_from_its_last_second_on)
{
    const std::int64_t seconds[] = {8, 300, 3600, 43200, 172800, 604800, 1728000, 5184000, 10368000, 31536000};
    const auto now = common::DateTime::from_fields({.year = 2026, .month = 11, .day = 15, .hour = 5, .second = 17});
    for (int level = 0; level < DeadTimes::count; ++level) {
        const auto elapsed = [&](std::int64_t ago) {
            return common::days_between(common::DateTime::from_seconds(now.seconds() - ago), now);
        };
        EXPECT_EQ(dead_times.proven_level(elapsed(seconds[level])), level + 1);
        EXPECT_EQ(dead_times.proven_level(elapsed(seconds[level] - 1)), level);
        EXPECT_EQ(dead_times.proven_level(elapsed(seconds[level] + 1)), level + 1);
    }
}

TEST_F(DeadTime, proves_nothing_at_once_and_level_10_at_most)
{
    EXPECT_EQ(dead_times.proven_level(0), 0);
    EXPECT_EQ(dead_times.proven_level(36500), 10);
}

} // namespace
} // namespace cuedrill::scheduler
