#include "drill/status_line.h"
#include "fakes/course_builder.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_form1.h"

#include <cstdint>
#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

class StatusLineTest : public testing::Test {
protected:
    /// Sets the monotonic time to this many seconds after the test began.
    void at(double seconds)
    {
        clock.steady_seconds_more = seconds;
        line.expire();
    }

    /// Sets the system clock to another date; no time passes.
    void put_clock_by_days(int days)
    {
        constexpr int day_seconds = 86400;
        clock.advance_seconds(std::int64_t{days} * day_seconds);
        clock.steady_seconds_more -= static_cast<double>(days) * day_seconds;
        line.expire();
    }

    fakes::FakeClock clock;
    fakes::FakeForm1 form1;
    fakes::RealEngine engine;
    store::Course course{engine.database};
    EditFlags flags;
    DrillState state;
    MainScreen screen{form1.screen_view, course, flags, state};
    StatusLine line{screen, clock};
    const platform::Line& shown = form1.screen.P_status;
};

TEST_F(StatusLineTest, keeps_a_text_for_its_time_and_no_longer)
{
    line.ShowStatus("text", 5);
    at(4.9);
    EXPECT_EQ(shown.text, "text");
    at(5);
    EXPECT_EQ(shown.text, "");
}

TEST_F(StatusLineTest, keeps_a_text_without_a_time_for_ever)
{
    line.ShowStatus("text", 0);
    at(86399);
    at(90000);
    put_clock_by_days(3);
    EXPECT_EQ(shown.text, "text");
}

TEST_F(StatusLineTest, does_not_let_the_time_of_an_earlier_text_end_a_later_one)
{
    line.ShowStatus("first", 5);
    at(3);
    line.ShowStatus("second", 5);
    at(6);
    EXPECT_EQ(shown.text, "second");
    line.ShowStatus("third", 0);
    at(1000);
    EXPECT_EQ(shown.text, "third");
}

TEST_F(StatusLineTest, keeps_a_text_for_its_time_whatever_is_done_to_the_clock)
{
    for (const int days : {1, 2, -1, -30, 365}) {
        clock = {};
        line.ShowStatus("text", 5);
        at(3);
        put_clock_by_days(days);
        EXPECT_EQ(shown.text, "text") << days;
        clock.steady_seconds_more += 2;
        line.expire();
        EXPECT_EQ(shown.text, "") << days;
    }
}

TEST_F(StatusLineTest, lets_a_text_expire_behind_midnight)
{
    clock.time =
        common::DateTime::from_fields({.year = 2026, .month = 11, .day = 15, .hour = 23, .minute = 59, .second = 58});
    line.ShowStatus("text", 5);
    at(1.9);
    EXPECT_EQ(shown.text, "text");
    at(5.1);
    EXPECT_EQ(shown.text, "");
}

TEST_F(StatusLineTest, takes_the_emphasis_away_with_the_next_text)
{
    line.ask_for_verdict();
    line.ShowStatus("text", 0);
    EXPECT_FALSE(shown.bold);
    EXPECT_EQ(shown.background, std::nullopt);
    EXPECT_EQ(shown.alignment, platform::Alignment::left);
    EXPECT_EQ(shown.text, "text");
}

TEST_F(StatusLineTest, withdraws_the_request_and_nothing_else)
{
    line.ask_for_verdict();
    line.withdraw_request();
    EXPECT_EQ(shown.text, "");
    EXPECT_EQ(shown.background, std::nullopt);
    line.ShowStatus("other", 5);
    line.withdraw_request();
    EXPECT_EQ(shown.text, "other");
}

TEST_F(StatusLineTest, shows_a_text_that_waits_when_the_line_is_empty)
{
    line.ShowStatus("text", 5);
    line.show_when_free("kept", StatusLine::Waiting::gives_way);
    at(4.9);
    EXPECT_EQ(shown.text, "text");
    at(5);
    EXPECT_EQ(shown.text, "kept");
    at(9.9);
    EXPECT_EQ(shown.text, "kept");
    at(10);
    EXPECT_EQ(shown.text, "");
    at(20);
    EXPECT_EQ(shown.text, "") << "it is shown once";
}

TEST_F(StatusLineTest, takes_a_colour_without_words_for_a_text)
{
    line.show_wrong();
    line.show_when_free("kept", StatusLine::Waiting::gives_way);
    at(1);
    EXPECT_EQ(shown.text, "");
    line.reset_status();
    at(2);
    EXPECT_EQ(shown.text, "kept");
}

TEST_F(StatusLineTest, drops_a_text_that_gives_way_to_a_later_one)
{
    line.show_when_free("kept", StatusLine::Waiting::gives_way);
    line.reset_status();
    line.ShowStatus("text", 5);
    at(5);
    EXPECT_EQ(shown.text, "");
}

TEST_F(StatusLineTest, keeps_a_text_that_stays_until_it_was_shown)
{
    line.show_when_free("kept", StatusLine::Waiting::gives_way);
    line.show_when_free("failure", StatusLine::Waiting::stays);
    line.show_when_free("kept", StatusLine::Waiting::gives_way);
    line.ShowStatus("text", 5);
    at(4);
    EXPECT_EQ(shown.text, "text");
    at(5);
    EXPECT_EQ(shown.text, "failure");
    at(10);
    EXPECT_EQ(shown.text, "");
}

} // namespace
} // namespace cuedrill::drill
