#include "common/errors.h"
#include "scheduler/maturity.h"

#include <gtest/gtest.h>

namespace cuedrill::scheduler {
namespace {

class MaturityText : public testing::Test {
protected:
    DeadTimes dead_times;
    common::DateTime now =
        common::DateTime::from_fields({.year = 2026, .month = 11, .day = 15, .hour = 6, .minute = 47, .second = 17});
    store::SideFields asked = store::set_side_fields(false).Q_FIELD;

    MaturityText() { dead_times.init_dead_time_array(); }
};

TEST_F(MaturityText, of_a_level_above_0)
{
    EXPECT_EQ(mature_query(asked, dead_times, 2, false, now),
              "Select cnt, q_successes, q_date_last_test from qa where (q_successes=2) and (q_date_last_test < "
              "cvdate('15/Nov/2026 05:47:17')) and (q_date_last_show < cvdate('15/Nov/2026 06:47:09') or "
              "q_date_last_show is null) union all "
              "Select cnt, q_successes, q_date_last_test from qa where (q_successes=2) and (q_date_last_test is null) "
              "and (q_date_last_show < cvdate('15/Nov/2026 06:47:09') or q_date_last_show is null) "
              "order by q_successes desc, q_date_last_test asc, cnt asc");
}

TEST_F(MaturityText, of_level_0_with_those_never_tested)
{
    EXPECT_EQ(mature_query(asked, dead_times, 0, false, now),
              "Select cnt, q_successes, q_date_last_test from qa where (q_successes=0) and (q_date_last_test < "
              "cvdate('15/Nov/2026 06:47:09')) and (q_date_last_show < cvdate('15/Nov/2026 06:47:09') or "
              "q_date_last_show is null) union all "
              "Select cnt, q_successes, q_date_last_test from qa where (q_successes=0) and (q_date_last_test is null) "
              "and (q_date_last_show < cvdate('15/Nov/2026 06:47:09') or q_date_last_show is null) union all "
              "Select cnt, q_successes, q_date_last_test from qa where (q_successes is null) and (q_date_last_test < "
              "cvdate('15/Nov/2026 06:47:09')) and (q_date_last_show < cvdate('15/Nov/2026 06:47:09') or "
              "q_date_last_show is null) union all "
              "Select cnt, q_successes, q_date_last_test from qa where (q_successes is null) and (q_date_last_test is "
              "null) and (q_date_last_show < cvdate('15/Nov/2026 06:47:09') or q_date_last_show is null) "
              "order by q_successes desc, q_date_last_test asc, cnt asc");
}

TEST_F(MaturityText, of_level_0_tested_only)
{
    EXPECT_EQ(mature_query(asked, dead_times, 0, true, now),
              "Select cnt, q_successes, q_date_last_test from qa where (q_successes=0) and (q_date_last_test < "
              "cvdate('15/Nov/2026 06:47:09')) and (q_date_last_show < cvdate('15/Nov/2026 06:47:09') or "
              "q_date_last_show is null) order by q_successes desc, q_date_last_test asc, cnt asc");
}

TEST_F(MaturityText, of_an_inverted_course_is_about_the_other_side)
{
    const std::string text = mature_query(store::set_side_fields(true).Q_FIELD, dead_times, 4, false, now);
    EXPECT_EQ(text, "Select cnt, a_successes, a_date_last_test from qa where (a_successes=4) and (a_date_last_test < "
                    "cvdate('13/Nov/2026 06:47:17')) and (a_date_last_show < cvdate('15/Nov/2026 06:47:09') or "
                    "a_date_last_show is null) union all "
                    "Select cnt, a_successes, a_date_last_test from qa where (a_successes=4) and (a_date_last_test is "
                    "null) and (a_date_last_show < cvdate('15/Nov/2026 06:47:09') or a_date_last_show is null) "
                    "order by a_successes desc, a_date_last_test asc, cnt asc");
}

TEST_F(MaturityText, holds_the_instant_of_each_level_s_dead_time)
{
    const char* const instants[] = {"15/Nov/2026 06:47:09", "15/Nov/2026 06:42:17", "15/Nov/2026 05:47:17",
                                    "14/Nov/2026 18:47:17", "13/Nov/2026 06:47:17", "08/Nov/2026 06:47:17",
                                    "26/Oct/2026 06:47:17", "16/Sep/2026 06:47:17", "18/Jul/2026 06:47:17",
                                    "15/Nov/2025 06:47:17"};
    for (int level = 0; level < DeadTimes::count; ++level)
        EXPECT_NE(mature_query(asked, dead_times, level, false, now)
                      .find(std::string("q_date_last_test < cvdate('") + instants[level] + "')"),
                  std::string::npos)
            << level;
}

TEST_F(MaturityText, of_no_level_beyond_the_table)
{
    EXPECT_THROW((void)mature_query(asked, dead_times, 10, false, now), common::OutOfRangeError);
}

TEST_F(MaturityText, of_the_count_over_all_levels_below_the_target)
{
    EXPECT_EQ(all_mature_query(asked, dead_times, 3, MatureResult::count, now),
              "Select (Select count(0) from qa where (q_successes = 2 and q_date_last_test < cvdate('15/Nov/2026 "
              "05:47:17')) and (q_date_last_show < cvdate('15/Nov/2026 06:47:09') or q_date_last_show is null)) + "
              "(Select count(0) from qa where (q_successes = 1 and q_date_last_test < cvdate('15/Nov/2026 06:42:17')) "
              "and (q_date_last_show < cvdate('15/Nov/2026 06:47:09') or q_date_last_show is null)) + "
              "(Select count(0) from qa where (q_successes = 0 and q_date_last_test < cvdate('15/Nov/2026 06:47:09')) "
              "and (q_date_last_show < cvdate('15/Nov/2026 06:47:09') or q_date_last_show is null))");
}

TEST_F(MaturityText, of_the_rows_over_all_levels_is_ordered)
{
    EXPECT_EQ(all_mature_query(asked, dead_times, 2, MatureResult::rows, now),
              "Select * from qa where (q_successes = 1 and q_date_last_test < cvdate('15/Nov/2026 06:42:17')) and "
              "(q_date_last_show < cvdate('15/Nov/2026 06:47:09') or q_date_last_show is null) union all "
              "Select * from qa where (q_successes = 0 and q_date_last_test < cvdate('15/Nov/2026 06:47:09')) and "
              "(q_date_last_show < cvdate('15/Nov/2026 06:47:09') or q_date_last_show is null) order by q_successes "
              "desc,q_date_last_test asc");
}

} // namespace
} // namespace cuedrill::scheduler
