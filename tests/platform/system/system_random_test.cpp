#include "platform/system/system_random.h"

#include <array>
#include <cstddef>
#include <gtest/gtest.h>

namespace cuedrill::platform::system {
namespace {

TEST(SystemRandom, FillsTheRangeEvenlyAndNeverReachesOne)
{
    SystemRandom random;
    constexpr int draws = 200000;
    std::array<int, 10> tenths{};
    for (int i = 0; i < draws; ++i) {
        const double number = random.uniform();
        ASSERT_GE(number, 0.0);
        ASSERT_LT(number, 1.0);
        ++tenths.at(static_cast<std::size_t>(number * 10));
    }
    // With a true probability of a tenth, a deviation this large (more than ten standard deviations) happens less than
    // once in 10^20 runs.
    for (const int count : tenths)
        EXPECT_NEAR(count, draws / 10, 1400);
}

TEST(SystemRandom, DiffersFromStartToStart)
{
    SystemRandom first;
    SystemRandom second;
    int same = 0;
    for (int i = 0; i < 10; ++i)
        same += first.uniform() == second.uniform();
    EXPECT_EQ(same, 0);
}

} // namespace
} // namespace cuedrill::platform::system
