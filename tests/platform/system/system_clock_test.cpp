#include "platform/system/system_clock.h"
#include "scoped_variable.h"

#include <chrono>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>

namespace cuedrill::platform::system {
namespace {

constexpr std::int64_t day_seconds = 86400;
constexpr std::int64_t unix_epoch = 25569 * day_seconds; // 1970-01-01 as seconds since 1899-12-30

std::int64_t universal_seconds()
{
    const auto since_epoch = std::chrono::system_clock::now().time_since_epoch();
    return unix_epoch + std::chrono::floor<std::chrono::seconds>(since_epoch).count();
}

/// Expects the clock to show UTC plus `offset` seconds.
void expect_offset(const SystemClock& clock, std::int64_t offset)
{
    const std::int64_t before = universal_seconds();
    const std::int64_t now = clock.now().seconds() - offset;
    const std::int64_t after = universal_seconds();
    EXPECT_LE(before, now);
    EXPECT_LE(now, after);
}

TEST(SystemClock, TellsTheTimeOfTheLocalZone)
{
    const ScopedVariable zone("TZ", "UTC0");
    expect_offset(SystemClock(), 0);
    zone.assign("EAST-05:30");
    expect_offset(SystemClock(), 19800);
    zone.assign("WEST+11");
    expect_offset(SystemClock(), -39600);
}

TEST(SystemClock, FollowsAChangeOfTheZoneWhileTheProgramRuns)
{
    const ScopedVariable zone("TZ", "UTC0");
    const SystemClock clock;
    expect_offset(clock, 0);
    zone.assign("EAST-05:30");
    expect_offset(clock, 19800);
}

TEST(SystemClock, CountsTheSecondsOfTheLocalDay)
{
    const ScopedVariable zone("TZ", "EAST-05:30");
    const SystemClock clock;
    const std::int64_t before = clock.now().seconds();
    const double since_midnight = clock.seconds_since_midnight();
    const std::int64_t after = clock.now().seconds();
    ASSERT_GE(since_midnight, 0);
    ASSERT_LT(since_midnight, 86400);
    // Midnight may pass between the readings, so compare with each second that passed.
    const auto second = static_cast<std::int64_t>(since_midnight);
    bool passed = false;
    for (std::int64_t s = before; s <= after; ++s)
        passed = passed || s % day_seconds == second;
    EXPECT_TRUE(passed) << since_midnight;
}

TEST(SystemClock, CountsFractionsOfASecond)
{
    const SystemClock clock;
    int whole = 0;
    for (int i = 0; i < 100; ++i) {
        const double seconds = clock.seconds_since_midnight();
        whole += seconds == std::floor(seconds);
    }
    EXPECT_LT(whole, 100);
}

} // namespace
} // namespace cuedrill::platform::system
