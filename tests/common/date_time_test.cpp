#include "common/date_time.h"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::common {
namespace {

constexpr std::int64_t lowest_day = -657434;  // 0100-01-01
constexpr std::int64_t highest_day = 2958465; // 9999-12-31
constexpr std::int64_t day_seconds = 86400;

const DateTime morning =
    DateTime::from_fields({.year = 2026, .month = 11, .day = 15, .hour = 5, .minute = 47, .second = 17});

/// Instants spread over the whole range, with all times of day.
std::vector<DateTime> many_instants()
{
    std::vector<DateTime> instants;
    for (std::int64_t s = lowest_day * day_seconds; s < (highest_day + 1) * day_seconds; s += 2'718'281)
        instants.push_back(DateTime::from_seconds(s));
    return instants;
}

TEST(DayNumber, CountsDaysSinceTheEndOf1899)
{
    EXPECT_EQ(DateTime().day_number(), 0.0);
    EXPECT_EQ(DateTime::from_fields({.year = 1900, .month = 1, .day = 1}).day_number(), 2.0);
    EXPECT_EQ(DateTime::from_fields({.year = 1899, .month = 12, .day = 29}).day_number(), -1.0);
    EXPECT_EQ(morning.day_number(), 46341 + 20837 / 86400.0);
    EXPECT_EQ(DateTime::from_fields({.year = 100, .month = 1, .day = 1}).seconds(), lowest_day * day_seconds);
    EXPECT_EQ(DateTime::from_fields({.year = 9999, .month = 12, .day = 31}).seconds(), highest_day * day_seconds);
}

TEST(DayNumber, TheSameSecondHasTheSameNumberHoweverItWasReached)
{
    // Every second of a day, computed in four ways whose floating-point sums differ in the last bits.
    const std::int64_t midnight = 46341 * day_seconds;
    for (std::int64_t s = 0; s < day_seconds; ++s) {
        const DateTime direct = DateTime::from_seconds(midnight + s);
        const double step = 1 / 86400.0;
        ASSERT_EQ(DateTime::from_fields(direct.fields()).day_number(), direct.day_number());
        ASSERT_EQ(DateTime::from_day_number(46341 + static_cast<double>(s) * step).day_number(), direct.day_number());
        ASSERT_EQ(DateTime::from_seconds(midnight).plus_days(static_cast<double>(s) * step).day_number(),
                  direct.day_number());
        ASSERT_EQ(DateTime::from_seconds(midnight + s + 300).plus_days(-5 / 1440.0).day_number(), direct.day_number());
    }
}

TEST(DayNumber, ReadsBackAsTheSameSecond)
{
    for (const DateTime instant : many_instants())
        ASSERT_EQ(DateTime::from_day_number(instant.day_number()), instant) << format_date_literal(instant);
}

TEST(DayNumber, KeepsTheNearestSecond)
{
    EXPECT_EQ(DateTime::from_day_number((1000 + 0.49) / 86400).seconds(), 1000);
    EXPECT_EQ(DateTime::from_day_number((1000 + 0.51) / 86400).seconds(), 1001);
    EXPECT_EQ(DateTime::from_day_number((-1000 - 0.51) / 86400).seconds(), -1001);
}

TEST(ForeignNumbers, AreHeldInsideTheYears100To9999)
{
    const DateTime first = DateTime::from_fields({.year = 100, .month = 1, .day = 1});
    const DateTime last =
        DateTime::from_fields({.year = 9999, .month = 12, .day = 31, .hour = 23, .minute = 59, .second = 59});
    for (const double days : {-1e300, -1e9, -657435.0, -std::numeric_limits<double>::infinity()})
        EXPECT_EQ(DateTime::from_day_number(days), first) << days;
    for (const double days : {1e300, 1e9, 2958466.0, std::numeric_limits<double>::infinity()})
        EXPECT_EQ(DateTime::from_day_number(days), last) << days;
    EXPECT_EQ(DateTime::from_day_number(std::numeric_limits<double>::quiet_NaN()), first);
    EXPECT_EQ(DateTime::from_seconds(std::numeric_limits<std::int64_t>::min()), first);
    EXPECT_EQ(DateTime::from_seconds(std::numeric_limits<std::int64_t>::max()), last);
    EXPECT_EQ(last.plus_days(1), last);
    EXPECT_EQ(first.plus_days(-1), first);
}

TEST(ForeignNumbers, LeaveTheEndsOfTheRangeAsTheyAre)
{
    EXPECT_EQ(format_date_literal(DateTime::from_day_number(-657434.0)), "01/Jan/0100 00:00:00");
    EXPECT_EQ(format_date_literal(DateTime::from_day_number(2958465.0)), "31/Dec/9999 00:00:00");
    EXPECT_EQ(format_date_literal(DateTime::from_day_number(2958465 + 86399 / 86400.0)), "31/Dec/9999 23:59:59");
}

TEST(Fields, AreTheOnesAnInstantWasMadeOf)
{
    for (const DateTime instant : many_instants())
        ASSERT_EQ(DateTime::from_fields(instant.fields()), instant);
    const CalendarFields expected{.year = 2026, .month = 11, .day = 15, .hour = 5, .minute = 47, .second = 17};
    EXPECT_EQ(morning.fields(), expected);
}

TEST(Fields, CountTheTimeOfDayForwardsBeforeDayZeroToo)
{
    const CalendarFields expected{.year = 1899, .month = 12, .day = 29, .hour = 23, .minute = 59, .second = 59};
    EXPECT_EQ(DateTime::from_seconds(-1).fields(), expected);
    EXPECT_EQ(DateTime::from_seconds(-1).date_only(), DateTime::from_seconds(-day_seconds));
}

TEST(DateOnly, IsMidnightOfTheSameDate)
{
    EXPECT_EQ(morning.date_only(), DateTime::from_fields({.year = 2026, .month = 11, .day = 15}));
    EXPECT_EQ(morning.date_only().date_only(), morning.date_only());
    EXPECT_EQ(DateTime::from_seconds(day_seconds - 1).date_only(), DateTime());
    EXPECT_EQ(DateTime::from_seconds(day_seconds).date_only().day_number(), 1.0);
}

TEST(Day, CountsWholeDaysBeforeDayZeroToo)
{
    EXPECT_EQ(DateTime().day(), 0);
    EXPECT_EQ(DateTime::from_seconds(day_seconds - 1).day(), 0);
    EXPECT_EQ(DateTime::from_seconds(day_seconds).day(), 1);
    EXPECT_EQ(DateTime::from_seconds(-1).day(), -1);
    EXPECT_EQ(DateTime::from_seconds(-day_seconds).day(), -1);
    EXPECT_EQ(DateTime::from_seconds(-day_seconds - 1).day(), -2);
}

TEST(EndOfDay, IsTheLastSecondOfThatDateOrALaterOne)
{
    const CalendarFields today{.year = 2026, .month = 11, .day = 15, .hour = 23, .minute = 59, .second = 59};
    EXPECT_EQ(morning.end_of_day().fields(), today);
    EXPECT_EQ(morning.end_of_day().end_of_day(), morning.end_of_day());
    const CalendarFields next_month{.year = 2026, .month = 12, .day = 1, .hour = 23, .minute = 59, .second = 59};
    EXPECT_EQ(morning.end_of_day(16).fields(), next_month);
    EXPECT_EQ(DateTime::from_seconds(-1).end_of_day(), DateTime::from_seconds(-1));
    const DateTime last = DateTime::from_seconds((highest_day + 1) * day_seconds - 1);
    EXPECT_EQ(last.end_of_day(7), last) << "there is no later one";
}

TEST(DaysBetween, EqualsTheFractionOfADayToTheLastBit)
{
    for (const DateTime instant : many_instants()) {
        const std::int64_t s = instant.seconds();
        ASSERT_EQ(days_between(DateTime::from_seconds(s - 300), instant),
                  s > lowest_day * day_seconds ? 5 / 1440.0 : 0);
        ASSERT_EQ(days_between(DateTime::from_seconds(s - 86400), instant), s > lowest_day * day_seconds ? 1.0 : 0);
    }
    EXPECT_LT(days_between(morning, morning.plus_days(299 / 86400.0)), 5 / 1440.0);
}

TEST(DaysBetween, IsNegativeBackwards)
{
    EXPECT_EQ(days_between(morning, morning.plus_days(-2)), -2.0);
    EXPECT_EQ(days_between(morning, morning), 0.0);
}

TEST(SecondsBetween, CountsWholeSecondsAcrossDays)
{
    EXPECT_EQ(seconds_between(morning, morning), 0);
    EXPECT_EQ(seconds_between(morning, DateTime::from_seconds(morning.seconds() + 1)), 1);
    EXPECT_EQ(seconds_between(morning, morning.plus_days(3)), 3 * day_seconds);
    EXPECT_EQ(seconds_between(morning, morning.date_only()), -(5 * 3600 + 47 * 60 + 17));
    EXPECT_EQ(seconds_between(DateTime::from_seconds(lowest_day * day_seconds),
                              DateTime::from_seconds(highest_day * day_seconds)),
              (highest_day - lowest_day) * day_seconds);
}

TEST(Ordering, GoesByTheSecond)
{
    EXPECT_LT(morning, DateTime::from_seconds(morning.seconds() + 1));
    EXPECT_EQ(morning, DateTime::from_day_number(std::nextafter(morning.day_number(), 1e9)));
}

TEST(DateLiteral, NamesTheMonthInEnglish)
{
    constexpr std::string_view months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                           "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    for (int month = 1; month <= 12; ++month) {
        const DateTime instant = DateTime::from_fields({.year = 2026, .month = month, .day = 3});
        EXPECT_EQ(format_date_literal(instant),
                  "03/" + std::string(months[static_cast<std::size_t>(month - 1)]) + "/2026 00:00:00");
        EXPECT_EQ(parse_date_literal(format_date_literal(instant)), instant);
    }
    EXPECT_EQ(format_date_literal(morning), "15/Nov/2026 05:47:17");
}

TEST(DateLiteral, RoundTripsOverTheWholeRange)
{
    for (const DateTime instant : many_instants())
        ASSERT_EQ(parse_date_literal(format_date_literal(instant)), instant) << format_date_literal(instant);
}

TEST(DateLiteral, RoundTripsForStoredNumbersOfEverySecondOfADay)
{
    for (std::int64_t s = 0; s < day_seconds; ++s) {
        const DateTime instant = DateTime::from_seconds(46341 * day_seconds + s);
        const DateTime stored = DateTime::from_day_number(instant.day_number());
        ASSERT_EQ(parse_date_literal(format_date_literal(stored)), instant);
    }
}

TEST(DateLiteral, IsReadWithMonthNamesInAnyCase)
{
    EXPECT_EQ(parse_date_literal("15/nov/2026 05:47:17"), morning);
    EXPECT_EQ(parse_date_literal("15/NOV/2026 05:47:17"), morning);
}

TEST(DateLiteral, RefusesEveryOtherText)
{
    for (const std::string_view text :
         {"", "15/Nov/2026", "15/Nov/2026 05:47", "15/11/2026 05:47:17", "15-Nov-2026 05:47:17", "15/Nov/2026 05.47.17",
          "15/Nov/2026T05:47:17", "15/Nox/2026 05:47:17", "5/Nov/2026 05:47:17", " 5/Nov/2026 05:47:17",
          "-5/Nov/2026 05:47:17", "+5/Nov/2026 05:47:17", "15/Nov/2026 05:47:17 ", "15/Nov/2026 05:47:1x",
          "15/Nov/-026 05:47:17", "1x/Nov/2026 05:47:17", "15/Nov/2026 0x:47:17"})
        EXPECT_EQ(parse_date_literal(text), std::nullopt) << text;
}

TEST(DateLiteral, RefusesDatesThatDoNotExist)
{
    for (const std::string_view text :
         {"00/Nov/2026 00:00:00", "31/Nov/2026 00:00:00", "32/Jan/2026 00:00:00", "29/Feb/2026 00:00:00",
          "29/Feb/1900 00:00:00", "30/Feb/2024 00:00:00", "01/Jan/0099 00:00:00", "01/Jan/2026 24:00:00",
          "01/Jan/2026 00:60:00", "01/Jan/2026 00:00:60"})
        EXPECT_EQ(parse_date_literal(text), std::nullopt) << text;
    EXPECT_NE(parse_date_literal("29/Feb/2024 00:00:00"), std::nullopt);
    EXPECT_NE(parse_date_literal("29/Feb/2000 00:00:00"), std::nullopt);
}

TEST(DateTexts, HaveTheirFixedForms)
{
    EXPECT_EQ(format_date_time(morning), "15/11/2026 05:47:17");
    EXPECT_EQ(format_clock(morning), "05:47.17");
    EXPECT_EQ(format_date_time(DateTime::from_fields({.year = 100, .month = 1, .day = 2})), "02/01/0100 00:00:00");
    EXPECT_EQ(format_clock(DateTime()), "00:00.00");
}

TEST(HoursAndMinutes, GoOnBeyondADay)
{
    EXPECT_EQ(format_hours_minutes(0), "00:00");
    EXPECT_EQ(format_hours_minutes(3600), "01:00");
    EXPECT_EQ(format_hours_minutes(86400), "24:00");
    EXPECT_EQ(format_hours_minutes(100 * 3600 + 59 * 60), "100:59");
}

TEST(HoursAndMinutes, AreNotRoundedUp)
{
    EXPECT_EQ(format_hours_minutes(59.999), "00:00");
    EXPECT_EQ(format_hours_minutes(60), "00:01");
    EXPECT_EQ(format_hours_minutes(3599.999), "00:59");
}

TEST(HoursAndMinutes, HoldForeignNumbersInsideTheRange)
{
    EXPECT_EQ(format_hours_minutes(-1), "00:00");
    EXPECT_EQ(format_hours_minutes(std::numeric_limits<double>::quiet_NaN()), "00:00");
    EXPECT_EQ(format_hours_minutes(-std::numeric_limits<double>::infinity()), "00:00");
    EXPECT_EQ(format_hours_minutes(1e300), format_hours_minutes(std::numeric_limits<double>::infinity()));
}

} // namespace
} // namespace cuedrill::common
