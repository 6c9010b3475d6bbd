#include "common/number_format.h"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <string_view>

namespace cuedrill::common {
namespace {

TEST(FixedFormat, WritesExactlyTheDecimals)
{
    EXPECT_EQ(format_fixed(25923.41, 2), "25923.41");
    EXPECT_EQ(format_fixed(7, 2), "7.00");
    EXPECT_EQ(format_fixed(0.5, 1), "0.5");
    EXPECT_EQ(format_fixed(12.34, 0), "12");
}

TEST(FixedFormat, RoundsHalvesUp)
{
    EXPECT_EQ(format_fixed(0.125, 2), "0.13");
    EXPECT_EQ(format_fixed(0.375, 2), "0.38");
    EXPECT_EQ(format_fixed(0.25, 1), "0.3");
    EXPECT_EQ(format_fixed(0.5, 0), "1");
    EXPECT_EQ(format_fixed(59.996, 2), "60.00");
    EXPECT_EQ(format_fixed(0.124999, 2), "0.12");
}

/// The decimal value is rounded, not the double nearest to it: no double represents any of these values exactly.
TEST(FixedFormat, RoundsTheDecimalValue)
{
    EXPECT_EQ(format_fixed(0.015, 2), "0.02");
    EXPECT_EQ(format_fixed(0.045, 2), "0.05");
    EXPECT_EQ(format_fixed(1.005, 2), "1.01");
    EXPECT_EQ(format_fixed(0.35, 1), "0.4");
    EXPECT_EQ(format_fixed(1296 / 86400.0, 2), "0.02") << "a length of time in days";
}

/// All whole seconds whose length in days has a 5 as its third and last decimal.
TEST(FixedFormat, RoundsUpEachLengthOfTimeThatIsAHalf)
{
    for (int half = 1; half < 20000; half += 2) {
        const std::string digits = std::to_string(100 + (half + 1) / 2);
        const std::string expected =
            std::to_string(std::stoi(digits) / 100 - 1) + "." + digits.substr(digits.size() - 2);
        ASSERT_EQ(format_fixed(half * 432 / 86400.0, 2), expected) << half;
    }
}

TEST(FixedFormat, CarriesThroughNines)
{
    EXPECT_EQ(format_fixed(0.995, 2), "1.00");
    EXPECT_EQ(format_fixed(9.995, 2), "10.00");
    EXPECT_EQ(format_fixed(99999.95, 1), "100000.0");
    EXPECT_EQ(format_fixed(9.5, 0), "10");
}

TEST(FixedFormat, RoundsNegativeNumbersAwayFromZero)
{
    EXPECT_EQ(format_fixed(-1.5, 0), "-2");
    EXPECT_EQ(format_fixed(-0.015, 2), "-0.02");
    EXPECT_EQ(format_fixed(-9.995, 2), "-10.00");
    EXPECT_EQ(format_fixed(-0.001, 2), "0.00") << "there is no negative zero";
}

TEST(FixedFormat, TakesVerySmallNumbersForZero)
{
    EXPECT_EQ(format_fixed(std::numeric_limits<double>::denorm_min(), 2), "0.00");
    EXPECT_EQ(format_fixed(0.0049999999, 2), "0.00");
}

TEST(FixedFormat, HoldsTheLargestNumber)
{
    const std::string text = format_fixed(std::numeric_limits<double>::max(), 6);
    EXPECT_EQ(text.size(), 309U + 1 + 6);
    EXPECT_TRUE(text.starts_with("17976931348623157"));
}

TEST(GeneralFormat, WritesPlainNumbersWithoutAnExponent)
{
    EXPECT_EQ(format_general(0), "0");
    EXPECT_EQ(format_general(100000), "100000");
    EXPECT_EQ(format_general(-2000000), "-2000000");
    EXPECT_EQ(format_general(123456789012345), "123456789012345");
    EXPECT_EQ(format_general(0.1), "0.1");
    EXPECT_EQ(format_general(0.0001), "0.0001");
    EXPECT_EQ(format_general(46341.5), "46341.5");
}

TEST(GeneralFormat, WritesVeryLargeAndVerySmallNumbersWithAnExponent)
{
    EXPECT_EQ(format_general(1e15), "1e+15");
    EXPECT_EQ(format_general(-1.5e300), "-1.5e+300");
    EXPECT_EQ(format_general(1e-6), "1e-06");
}

TEST(GeneralFormat, ReadsBackAsTheSameNumber)
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> mantissa(-10, 10);
    std::uniform_int_distribution<int> exponent(-20, 20);
    for (int i = 0; i < 20000; ++i) {
        const double value = mantissa(random) * std::pow(10.0, exponent(random));
        ASSERT_EQ(parse_number(format_general(value)), value) << format_general(value);
    }
    for (const double value : {std::numeric_limits<double>::max(), std::numeric_limits<double>::min(), 0.1 + 0.2})
        EXPECT_EQ(parse_number(format_general(value)), value);
}

TEST(PaddedFormat, FillsWithZerosBehindTheSign)
{
    EXPECT_EQ(format_padded(0, 2), "00");
    EXPECT_EQ(format_padded(7, 2), "07");
    EXPECT_EQ(format_padded(-7, 2), "-07");
    EXPECT_EQ(format_padded(7, 5), "00007");
}

TEST(PaddedFormat, NeverShortensANumber)
{
    EXPECT_EQ(format_padded(1234, 2), "1234");
    EXPECT_EQ(format_padded(-1234, 2), "-1234");
    EXPECT_EQ(format_padded(5, 0), "5");
    EXPECT_EQ(format_padded(5, -3), "5");
    EXPECT_EQ(format_padded(std::numeric_limits<std::int64_t>::min(), 2), "-9223372036854775808");
}

TEST(NumberParser, AcceptsPointCommaSignAndExponent)
{
    EXPECT_EQ(parse_number("12"), 12);
    EXPECT_EQ(parse_number("12.5"), 12.5);
    EXPECT_EQ(parse_number("12,5"), 12.5);
    EXPECT_EQ(parse_number("+12,5"), 12.5);
    EXPECT_EQ(parse_number("-0.25"), -0.25);
    EXPECT_EQ(parse_number("1e3"), 1000);
    EXPECT_EQ(parse_number("1.5E-2"), 0.015);
    EXPECT_EQ(parse_number("007"), 7);
}

TEST(NumberParser, RefusesEverythingElse)
{
    for (const std::string_view text :
         {"",    " ",   " 12", "12 ", "12x", "x12", "1.2.3", "1,2,3", "1,000.5", "+",      "-",
          "+-1", "-+1", "--1", "++1", ".",   ",",   "e5",    "1e",    "0x10",    "twelve", "1 2"})
        EXPECT_EQ(parse_number(text), std::nullopt) << '"' << text << '"';
}

TEST(NumberParser, RefusesWhatIsNotFinite)
{
    for (const std::string_view text : {"inf", "-inf", "infinity", "nan", "NaN", "1e400", "-1e400"})
        EXPECT_EQ(parse_number(text), std::nullopt) << text;
}

TEST(NumberParser, SeesAZeroByteAsGarbage)
{
    EXPECT_EQ(parse_number(std::string_view("12\0", 3)), std::nullopt);
}

} // namespace
} // namespace cuedrill::common
