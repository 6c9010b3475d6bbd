#include "drill/status_line.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_controls.h"

#include <cstdint>
#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

class StatusLineTest : public testing::Test {
protected:
    /// So many seconds after the test began.
    void at(double seconds)
    {
        clock.steady_seconds_more = seconds;
        line.expire();
    }

    /// Puts the clock of the machine elsewhere, without any time passing.
    void put_clock_by_days(int days)
    {
        constexpr int day_seconds = 86400;
        clock.advance_seconds(std::int64_t{days} * day_seconds);
        clock.steady_seconds_more -= static_cast<double>(days) * day_seconds;
        line.expire();
    }

    fakes::FakeClock clock;
    fakes::FakeLabel label{"P_status"};
    StatusLine line{label, clock};
};

TEST_F(StatusLineTest, keeps_a_text_for_its_time_and_no_longer)
{
    line.ShowStatus("text", 5);
    at(4.9);
    EXPECT_EQ(label.caption_value, "text");
    at(5);
    EXPECT_EQ(label.caption_value, "");
}

TEST_F(StatusLineTest, keeps_a_text_without_a_time_for_ever)
{
    line.ShowStatus("text", 0);
    at(86399);
    at(90000);
    put_clock_by_days(3);
    EXPECT_EQ(label.caption_value, "text");
}

TEST_F(StatusLineTest, does_not_let_the_time_of_an_earlier_text_end_a_later_one)
{
    line.ShowStatus("first", 5);
    at(3);
    line.ShowStatus("second", 5);
    at(6);
    EXPECT_EQ(label.caption_value, "second");
    line.ShowStatus("third", 0);
    at(1000);
    EXPECT_EQ(label.caption_value, "third");
}

TEST_F(StatusLineTest, keeps_a_text_for_its_time_whatever_is_done_to_the_clock)
{
    for (const int days : {1, 2, -1, -30, 365}) {
        clock = {};
        line.ShowStatus("text", 5);
        at(3);
        put_clock_by_days(days);
        EXPECT_EQ(label.caption_value, "text") << days;
        clock.steady_seconds_more += 2;
        line.expire();
        EXPECT_EQ(label.caption_value, "") << days;
    }
}

TEST_F(StatusLineTest, lets_a_text_expire_behind_midnight)
{
    clock.time =
        common::DateTime::from_fields({.year = 2026, .month = 11, .day = 15, .hour = 23, .minute = 59, .second = 58});
    line.ShowStatus("text", 5);
    at(1.9);
    EXPECT_EQ(label.caption_value, "text");
    at(5.1);
    EXPECT_EQ(label.caption_value, "");
}

TEST_F(StatusLineTest, takes_the_emphasis_away_with_the_next_text)
{
    line.ask_for_verdict();
    line.ShowStatus("text", 0);
    EXPECT_FALSE(label.bold);
    EXPECT_EQ(label.background, std::nullopt);
    EXPECT_EQ(label.alignment, platform::Alignment::left);
    EXPECT_EQ(label.caption_value, "text");
}

TEST_F(StatusLineTest, withdraws_the_request_and_nothing_else)
{
    line.ask_for_verdict();
    line.withdraw_request();
    EXPECT_EQ(label.caption_value, "");
    EXPECT_EQ(label.background, std::nullopt);
    line.ShowStatus("other", 5);
    line.withdraw_request();
    EXPECT_EQ(label.caption_value, "other");
}

} // namespace
} // namespace cuedrill::drill
