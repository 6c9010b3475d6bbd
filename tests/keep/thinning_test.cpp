#include "keep/thinning.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace cuedrill::keep {
namespace {

using common::DateTime;
using Times = std::vector<DateTime>;

/// Sunday, 15 November 2026, noon.
DateTime now()
{
    return DateTime::from_fields({.year = 2026, .month = 11, .day = 15, .hour = 12});
}

DateTime days_ago(double days)
{
    return now().plus_days(-days);
}

TEST(Thinning, removes_nothing_where_nothing_is)
{
    EXPECT_EQ(to_remove({}, now()), Times{});
}

TEST(Thinning, keeps_all_of_the_last_two_days)
{
    Times times;
    for (int minutes = 0; minutes <= 2 * 24 * 60; minutes += 30)
        times.push_back(days_ago(minutes / 1440.0));
    EXPECT_EQ(to_remove(times, now()), Times{});
}

TEST(Thinning, keeps_the_last_of_each_day_for_two_weeks)
{
    const DateTime early = days_ago(5);
    const DateTime late = early.plus_days(0.1);
    EXPECT_EQ(to_remove({late, days_ago(0), early, days_ago(6)}, now()), Times{early});
}

TEST(Thinning, keeps_the_last_of_each_week_for_two_months)
{
    // 5 to 11 October is a week from Monday to Sunday.
    const auto october = [](int day) { return DateTime::from_fields({.year = 2026, .month = 10, .day = day}); };
    EXPECT_EQ(to_remove({october(4), october(5), october(9), october(11), october(12), days_ago(0)}, now()),
              (Times{october(5), october(9)}));
}

TEST(Thinning, keeps_the_last_of_each_month_for_a_year)
{
    const auto at = [](int month, int day) {
        return DateTime::from_fields({.year = 2026, .month = month, .day = day});
    };
    EXPECT_EQ(to_remove({at(1, 3), at(1, 20), at(1, 31), at(2, 1), at(2, 2), days_ago(0)}, now()),
              (Times{at(1, 3), at(1, 20), at(2, 1)}));
    EXPECT_EQ(to_remove({days_ago(366), days_ago(367), days_ago(500), days_ago(0)}, now()),
              (Times{days_ago(500), days_ago(367)}));
}

TEST(Thinning, keeps_the_newest_one_however_old)
{
    EXPECT_EQ(to_remove({days_ago(900), days_ago(800)}, now()), Times{days_ago(900)});
}

TEST(Thinning, keeps_what_was_made_before_the_clock_was_put_back)
{
    EXPECT_EQ(to_remove({now().plus_days(3), now().plus_days(3.1), now()}, now()), Times{});
}

/// Copies come in at random times and each of them thins out those before it.
class ThinningHistory : public testing::TestWithParam<unsigned> {
protected:
    void run_for(int days)
    {
        // From many a day to one in a month, in turns, as people use a course.
        std::exponential_distribution<double> pause(1);
        std::uniform_int_distribution<int> habit(0, 3);
        constexpr std::array<double, 4> usual_pause{0.05, 0.8, 4, 20};
        const DateTime end = now().plus_days(days);
        double usual = usual_pause.at(static_cast<std::size_t>(habit(random_)));
        for (DateTime at = now(); at < end; at = at.plus_days(pause(random_) * usual + 0.0001)) {
            if (habit(random_) == 0)
                usual = usual_pause.at(static_cast<std::size_t>(habit(random_)));
            all_.push_back(at);
            kept_.push_back(at);
            thin_out(at);
            check(at);
        }
    }

    void thin_out(DateTime at)
    {
        for (const DateTime removed : to_remove(kept_, at)) {
            const auto found = std::find(kept_.begin(), kept_.end(), removed);
            ASSERT_NE(found, kept_.end()) << "it removes what is not there";
            kept_.erase(found);
        }
    }

    [[nodiscard]] bool is_kept_within(DateTime made, double days) const
    {
        return std::any_of(kept_.begin(), kept_.end(),
                           [&](DateTime kept) { return std::abs(common::days_between(made, kept)) <= days; });
    }

    void check(DateTime at) const
    {
        ASSERT_EQ(kept_.back(), at) << "the newest one is gone";
        ASSERT_EQ(to_remove(kept_, at), Times{}) << "a second thinning finds more";
        for (const DateTime made : all_) {
            const double age = common::days_between(made, at);
            if (age > 366)
                continue;
            // A day, a week or a month, and the day or week in which the next smaller period ends.
            const double farthest = age <= 2 ? 0 : age <= 14 ? 1 : age <= 61 ? 8 : 31 + 8;
            ASSERT_TRUE(is_kept_within(made, farthest)) << age << " days old";
        }
        const auto older = [&](double days) {
            return std::count_if(kept_.begin(), kept_.end(),
                                 [&](DateTime kept) { return common::days_between(kept, at) > days; });
        };
        ASSERT_LE(older(2), 13 + 8 + 12) << "too many are kept";
        ASSERT_EQ(older(366), 0);
    }

private:
    std::mt19937 random_{GetParam()};
    Times all_;
    Times kept_;
};

TEST_P(ThinningHistory, leaves_no_gap_and_few_copies)
{
    run_for(500);
}

INSTANTIATE_TEST_SUITE_P(Seeds, ThinningHistory, testing::Range(1U, 41U));

} // namespace
} // namespace cuedrill::keep
