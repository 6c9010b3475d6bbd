#include "drill/status_line.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_controls.h"

#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

class StatusLineTest : public testing::Test {
protected:
    void at(double seconds_since_midnight)
    {
        clock.set_seconds_since_midnight = seconds_since_midnight;
        line.expire();
    }

    fakes::FakeClock clock;
    fakes::FakeLabel label{"P_status"};
    StatusLine line{label, clock};
};

TEST_F(StatusLineTest, keeps_a_text_for_its_time_and_no_longer)
{
    clock.set_seconds_since_midnight = 1000;
    line.ShowStatus("text", 5);
    at(1004.9);
    EXPECT_EQ(label.caption_value, "text");
    at(1005);
    EXPECT_EQ(label.caption_value, "");
}

TEST_F(StatusLineTest, keeps_a_text_without_a_time_for_ever)
{
    clock.set_seconds_since_midnight = 1000;
    line.ShowStatus("text", 0);
    at(86399);
    at(1);
    EXPECT_EQ(label.caption_value, "text");
}

TEST_F(StatusLineTest, does_not_let_the_time_of_an_earlier_text_end_a_later_one)
{
    clock.set_seconds_since_midnight = 1000;
    line.ShowStatus("first", 5);
    clock.set_seconds_since_midnight = 1003;
    line.ShowStatus("second", 5);
    at(1006);
    EXPECT_EQ(label.caption_value, "second");
    line.ShowStatus("third", 0);
    at(2000);
    EXPECT_EQ(label.caption_value, "third");
}

TEST_F(StatusLineTest, lets_a_text_expire_behind_midnight)
{
    clock.set_seconds_since_midnight = 86398;
    line.ShowStatus("text", 5);
    at(86399.9);
    EXPECT_EQ(label.caption_value, "text");
    at(0.1);
    EXPECT_EQ(label.caption_value, "");
}

TEST_F(StatusLineTest, shows_a_text_at_midnight_for_its_time)
{
    clock.set_seconds_since_midnight = 0;
    line.ShowStatus("text", 5);
    at(4);
    EXPECT_EQ(label.caption_value, "text");
    at(5);
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
