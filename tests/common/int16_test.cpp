#include "common/errors.h"
#include "common/int16.h"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace cuedrill::common {
namespace {

std::string overflow_words(std::int64_t value)
{
    try {
        static_cast<void>(to_int16(value, "record number"));
    } catch (const OverflowError& error) {
        return error.what();
    }
    return "no error";
}

TEST(Int16FromInteger, KeepsEveryNumberThatFits)
{
    for (std::int64_t value = -32768; value <= 32767; ++value)
        ASSERT_EQ(to_int16(value, "level"), value);
}

TEST(Int16FromInteger, RefusesTheFirstNumbersOutside)
{
    EXPECT_THROW(to_int16(std::int64_t{32768}, "level"), OverflowError);
    EXPECT_THROW(to_int16(std::int64_t{-32769}, "level"), OverflowError);
}

TEST(Int16FromInteger, RefusesNumbersThatWouldWrapIntoTheRange)
{
    EXPECT_THROW(to_int16(std::int64_t{65536}, "level"), OverflowError);
    EXPECT_THROW(to_int16(std::numeric_limits<std::int64_t>::max(), "level"), OverflowError);
    EXPECT_THROW(to_int16(std::numeric_limits<std::int64_t>::min(), "level"), OverflowError);
}

TEST(Int16FromInteger, NamesTheValueInItsError)
{
    EXPECT_EQ(overflow_words(32768), "Overflow: the record number 32768 is outside -32768 to 32767.");
}

TEST(Int16FromDouble, RoundsToTheNearestWithTiesToEven)
{
    EXPECT_EQ(to_int16(2.4, "score"), 2);
    EXPECT_EQ(to_int16(2.5, "score"), 2);
    EXPECT_EQ(to_int16(3.5, "score"), 4);
    EXPECT_EQ(to_int16(-2.5, "score"), -2);
    EXPECT_EQ(to_int16(-2.6, "score"), -3);
}

TEST(Int16FromDouble, JudgesTheRoundedNumber)
{
    EXPECT_EQ(to_int16(32767.4, "score"), 32767);
    EXPECT_EQ(to_int16(-32768.5, "score"), -32768);
    EXPECT_THROW(to_int16(32767.5, "score"), OverflowError);
    EXPECT_THROW(to_int16(-32768.6, "score"), OverflowError);
}

TEST(Int16FromDouble, RefusesWhatIsNoNumber)
{
    EXPECT_THROW(to_int16(std::numeric_limits<double>::quiet_NaN(), "score"), OverflowError);
    EXPECT_THROW(to_int16(std::numeric_limits<double>::infinity(), "score"), OverflowError);
    EXPECT_THROW(to_int16(-std::numeric_limits<double>::infinity(), "score"), OverflowError);
    EXPECT_THROW(to_int16(1e300, "score"), OverflowError);
}

} // namespace
} // namespace cuedrill::common
