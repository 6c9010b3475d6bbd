#include "common/date_time.h"

#include "common/number_format.h"
#include "common/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <system_error>

namespace cuedrill::common {
namespace {

constexpr std::array<std::string_view, 12> month_names{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                       "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

constexpr std::int64_t day_seconds = 86400;

std::int64_t day_of(int year, int month, int day)
{
    using namespace std::chrono;
    const sys_days date{std::chrono::year{year} / month / day};
    constexpr sys_days zero{std::chrono::year{1899} / 12 / 30};
    return (date - zero).count();
}

std::int64_t lowest_seconds()
{
    static const std::int64_t value = day_of(100, 1, 1) * day_seconds;
    return value;
}

std::int64_t highest_seconds()
{
    static const std::int64_t value = (day_of(9999, 12, 31) + 1) * day_seconds - 1;
    return value;
}

std::int64_t floor_div(std::int64_t value, std::int64_t divisor)
{
    return value / divisor - (value % divisor < 0 ? 1 : 0);
}

std::string two_digits(int value)
{
    return format_padded(value, 2);
}

std::string time_text(const CalendarFields& f)
{
    return two_digits(f.hour) + ":" + two_digits(f.minute) + ":" + two_digits(f.second);
}

/// The number that `text` spells; std::nullopt unless it consists of digits only.
std::optional<int> digits(std::string_view text)
{
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || text.front() == '-')
        return std::nullopt;
    return value;
}

} // namespace

DateTime DateTime::from_day_number(double days)
{
    const double seconds = days * seconds_per_day;
    if (!(seconds > static_cast<double>(lowest_seconds())))
        return from_seconds(lowest_seconds());
    if (seconds >= static_cast<double>(highest_seconds()))
        return from_seconds(highest_seconds());
    return from_seconds(static_cast<std::int64_t>(std::llround(seconds)));
}

DateTime DateTime::from_seconds(std::int64_t seconds)
{
    DateTime instant;
    instant.seconds_ = std::clamp(seconds, lowest_seconds(), highest_seconds());
    return instant;
}

DateTime DateTime::from_fields(const CalendarFields& f)
{
    return from_seconds(day_of(f.year, f.month, f.day) * day_seconds + f.hour * 3600LL + f.minute * 60LL + f.second);
}

double DateTime::day_number() const
{
    return static_cast<double>(day()) + static_cast<double>(seconds_ - day() * day_seconds) / seconds_per_day;
}

std::int64_t DateTime::day() const
{
    return floor_div(seconds_, day_seconds);
}

CalendarFields DateTime::fields() const
{
    using namespace std::chrono;
    const auto rest = static_cast<int>(seconds_ - day() * day_seconds);
    constexpr sys_days zero{std::chrono::year{1899} / 12 / 30};
    const year_month_day date{zero + days{day()}};
    return {.year = static_cast<int>(date.year()),
            .month = static_cast<int>(static_cast<unsigned>(date.month())),
            .day = static_cast<int>(static_cast<unsigned>(date.day())),
            .hour = rest / 3600,
            .minute = rest / 60 % 60,
            .second = rest % 60};
}

DateTime DateTime::date_only() const
{
    return from_seconds(day() * day_seconds);
}

DateTime DateTime::end_of_day(std::int64_t days_later) const
{
    return from_seconds((day() + days_later + 1) * day_seconds - 1);
}

DateTime DateTime::plus_days(double days) const
{
    return from_day_number(day_number() + days);
}

double days_between(DateTime from, DateTime to)
{
    return static_cast<double>(seconds_between(from, to)) / seconds_per_day;
}

std::int64_t seconds_between(DateTime from, DateTime to)
{
    return to.seconds() - from.seconds();
}

std::string format_date_literal(DateTime instant)
{
    const CalendarFields f = instant.fields();
    return two_digits(f.day) + "/" + std::string(month_names.at(static_cast<std::size_t>(f.month) - 1)) + "/" +
           format_padded(f.year, 4) + " " + time_text(f);
}

std::optional<DateTime> parse_date_literal(std::string_view text)
{
    constexpr std::string_view shape = "dd/mmm/yyyy hh:nn:ss";
    if (text.size() != shape.size())
        return std::nullopt;
    for (const std::size_t separator : {2U, 6U, 11U, 14U, 17U}) {
        if (text[separator] != shape[separator])
            return std::nullopt;
    }
    const auto* const month = std::find_if(month_names.begin(), month_names.end(),
                                           [&](std::string_view name) { return equal_ascii(name, text.substr(3, 3)); });
    const auto day = digits(text.substr(0, 2));
    const auto year = digits(text.substr(7, 4));
    const auto hour = digits(text.substr(12, 2));
    const auto minute = digits(text.substr(15, 2));
    const auto second = digits(text.substr(18, 2));
    if (month == month_names.end() || !day || !year || !hour || !minute || !second)
        return std::nullopt;

    const CalendarFields f{.year = *year,
                           .month = static_cast<int>(month - month_names.begin()) + 1,
                           .day = *day,
                           .hour = *hour,
                           .minute = *minute,
                           .second = *second};
    const std::chrono::year_month_day date{std::chrono::year{f.year} / f.month / f.day};
    if (f.year < 100 || !date.ok() || f.hour > 23 || f.minute > 59 || f.second > 59)
        return std::nullopt;
    return DateTime::from_fields(f);
}

std::string format_date_time(DateTime instant)
{
    const CalendarFields f = instant.fields();
    return two_digits(f.day) + "/" + two_digits(f.month) + "/" + format_padded(f.year, 4) + " " + time_text(f);
}

std::string format_clock(DateTime instant)
{
    const CalendarFields f = instant.fields();
    return two_digits(f.hour) + ":" + two_digits(f.minute) + "." + two_digits(f.second);
}

std::string format_hours_minutes(double seconds)
{
    // Caps a duration beyond any real use at the largest integer that a double represents exactly.
    constexpr double longest = 9007199254740992.0;
    const double held = seconds > 0 ? std::min(seconds, longest) : 0;
    const auto minutes = static_cast<std::int64_t>(held) / 60;
    return format_padded(minutes / 60, 2) + ":" + format_padded(minutes % 60, 2);
}

} // namespace cuedrill::common
