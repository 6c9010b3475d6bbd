#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace cuedrill::common {

inline constexpr double seconds_per_day = 86400.0;

/// A local calendar date with the time of day.
struct CalendarFields {
    int year = 1899; ///< 100 to 9999
    int month = 12;  ///< 1 to 12
    int day = 30;    ///< 1 to the length of the month
    int hour = 0;    ///< 0 to 23
    int minute = 0;  ///< 0 to 59
    int second = 0;  ///< 0 to 59

    friend bool operator==(const CalendarFields&, const CalendarFields&) = default;
};

/// A local date and time, represented as days since 1899-12-30 with the time of day as the fraction.
///
/// The same second always has the same day number, because every instant is made by the one function `from_seconds`.
/// Comparisons and texts use whole seconds (rounded), never the raw fraction, because sums of days and fractions differ
/// in their last bits.
class DateTime {
public:
    /// 1899-12-30 00:00:00.
    DateTime() = default;

    /// The instant of a stored day number, rounded to the nearest second and clamped to the years 100 to 9999.
    static DateTime from_day_number(double days);

    /// The instant `seconds` whole seconds after 1899-12-30 00:00:00, clamped to the years 100 to 9999.
    static DateTime from_seconds(std::int64_t seconds);

    /// The instant of a calendar date. All fields must be in their ranges.
    static DateTime from_fields(const CalendarFields& fields);

    /// Days since 1899-12-30, as stored in a course.
    [[nodiscard]] double day_number() const;

    /// Whole seconds since 1899-12-30 00:00:00.
    [[nodiscard]] std::int64_t seconds() const { return seconds_; }

    [[nodiscard]] CalendarFields fields() const;

    /// Whole days from 1899-12-30 to this date; negative before it.
    [[nodiscard]] std::int64_t day() const;

    /// The same date at 00:00:00.
    [[nodiscard]] DateTime date_only() const;

    /// 23:59:59 of the date `days_later` days after this one.
    [[nodiscard]] DateTime end_of_day(std::int64_t days_later = 0) const;

    /// This instant plus `days` (may be negative), rounded to the nearest second.
    [[nodiscard]] DateTime plus_days(double days) const;

    friend auto operator<=>(const DateTime&, const DateTime&) = default;

private:
    std::int64_t seconds_ = 0;
};

/// Days from `from` to `to`: whole seconds divided by 86400, so that exactly five minutes equal 5/1440 to the last bit.
double days_between(DateTime from, DateTime to);

/// Whole seconds from `from` to `to`.
std::int64_t seconds_between(DateTime from, DateTime to);

/// "dd/mmm/yyyy hh:nn:ss" with English month names: 15/Nov/2026 05:47:17.
std::string format_date_literal(DateTime instant);

/// Parses the output of `format_date_literal` (month names in any case); std::nullopt for any other text.
std::optional<DateTime> parse_date_literal(std::string_view text);

/// "dd/mm/yyyy hh:nn:ss": 15/11/2026 05:47:17.
std::string format_date_time(DateTime instant);

/// "hh:mm.ss" of the time of day: 05:47.17.
std::string format_clock(DateTime instant);

/// "hh:nn" of a duration in seconds. Hours may exceed 24; minutes are rounded down; negative durations count as 0.
std::string format_hours_minutes(double seconds);

} // namespace cuedrill::common
