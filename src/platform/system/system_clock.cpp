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

LocalTime local_time()
{
    timespec instant{};
    LocalTime local;
    // localtime_r alone keeps the time zone the program started with.
    tzset();
    if (clock_gettime(CLOCK_REALTIME, &instant) != 0 || localtime_r(&instant.tv_sec, &local.fields) == nullptr)
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
