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

/// Brings a year that a date cannot hold to the nearest second that it can.
void keep_in_range(std::tm& fields)
{
    constexpr int zero = 1900; // the year that is 0 here
    if (fields.tm_year > 9999 - zero)
        fields = {.tm_sec = 59, .tm_min = 59, .tm_hour = 23, .tm_mday = 31, .tm_mon = 11, .tm_year = 9999 - zero};
    else if (fields.tm_year < 100 - zero)
        fields = {.tm_mday = 1, .tm_mon = 0, .tm_year = 100 - zero};
}

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
    keep_in_range(local.fields);
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
