#include "platform/system/system_clock.h"

#include "common/errors.h"

#include <algorithm>
#include <chrono>
#include <ctime>

namespace cuedrill::platform::system {
namespace {

struct LocalTime {
    std::tm fields{};
    double fraction = 0; ///< of the current second
};

/// The first second of the year 100 and the last one of the year 9999, in UTC, as Unix time. In the local time zone
/// they may be hours beyond what a date can hold, and DateTime clamps them; years beyond are more than a calendar can
/// hold.
constexpr std::time_t first_second = -59'011'459'200;
constexpr std::time_t last_second = 253'402'300'799;

LocalTime local_time()
{
    timespec instant{};
    LocalTime local;
    // localtime_r alone keeps the time zone the program started with.
    tzset();
    if (clock_gettime(CLOCK_REALTIME, &instant) != 0)
        throw common::Error("The local time is not available.");
    const std::time_t seconds = std::clamp(instant.tv_sec, first_second, last_second);
    if (localtime_r(&seconds, &local.fields) == nullptr)
        throw common::Error("The local time is not available.");
    // A leap second counts as the second before it; a day has 86400 seconds here.
    local.fields.tm_sec = std::min(local.fields.tm_sec, 59);
    local.fraction = static_cast<double>(instant.tv_nsec) * 1e-9;
    return local;
}

} // namespace

common::DateTime SystemClock::now() const
{
    const std::tm fields = local_time().fields;
    return common::DateTime::from_fields({.year = fields.tm_year + 1900,
                                          .month = fields.tm_mon + 1,
                                          .day = fields.tm_mday,
                                          .hour = fields.tm_hour,
                                          .minute = fields.tm_min,
                                          .second = fields.tm_sec});
}

double SystemClock::seconds_since_midnight() const
{
    const LocalTime local = local_time();
    return local.fields.tm_hour * 3600 + local.fields.tm_min * 60 + local.fields.tm_sec + local.fraction;
}

double SystemClock::steady_seconds() const
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

} // namespace cuedrill::platform::system
