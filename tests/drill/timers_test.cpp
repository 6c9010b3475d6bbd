#include "common/colour.h"
#include "drill/drill_fixture.h"

namespace cuedrill::drill {
namespace {

class Timers : public DrillFixture {
protected:
    void SetUp() override { static_cast<void>(folder.write("trace.flg", "")); }
};

TEST_F(Timers, tick_at_their_periods_once_the_window_is_loaded)
{
    start_with_three_questions();
    EXPECT_TRUE(form1.timer_250_ms.running);
    EXPECT_EQ(form1.timer_250_ms.period, 250ms);
    EXPECT_TRUE(form1.timer_1_sec.running);
    EXPECT_EQ(form1.timer_1_sec.period, 1s);
    EXPECT_TRUE(form1.timer_1_min.running);
    EXPECT_EQ(form1.timer_1_min.period, 1min);
}

TEST_F(Timers, second_shows_the_time)
{
    start_with_three_questions();
    EXPECT_EQ(form1.screen.Panel_time_now.text, "05:47.17");
    clock.advance_seconds(44);
    form1.timer_1_sec.tick();
    EXPECT_EQ(form1.screen.Panel_time_now.text, "05:48.01");
}

TEST_F(Timers, quarter_of_a_second_lets_a_verdict_message_expire)
{
    start_with_three_questions();
    yes();
    yes();
    yes();
    ASSERT_NE(status(), "");
    clock.advance_seconds(4);
    form1.timer_250_ms.tick();
    EXPECT_NE(status(), "");
    clock.advance_seconds(1);
    form1.timer_250_ms.tick();
    EXPECT_EQ(status(), "");
}

TEST_F(Timers, minute_shows_and_stores_the_work_time)
{
    builder.number_param("time_ever", 36000).number_param("time_today", 600).date_param("last_date", clock.time);
    start_with_three_questions();
    EXPECT_EQ(form1.screen.panel_open_time.text, "00:00");
    EXPECT_EQ(form1.screen.panel_time_today.text, "00:10");
    EXPECT_EQ(form1.screen.panel_time_ever.text, "10:00");
    clock.advance_seconds(60);
    form1.timer_1_min.tick();
    EXPECT_EQ(form1.screen.panel_open_time.text, "00:01");
    EXPECT_EQ(form1.screen.panel_time_today.text, "00:11");
    EXPECT_EQ(form1.screen.panel_time_ever.text, "10:01");
    const fakes::CourseContents stored_now = fakes::read_course(path);
    EXPECT_EQ(stored_now.number("time_ever"), 36060);
    EXPECT_EQ(stored_now.number("time_today"), 660);
    EXPECT_EQ(stored_now.param("last_date")->date_value, clock.time);
}

TEST_F(Timers, second_minute_counts_nothing_twice)
{
    start_with_three_questions();
    for (int minute = 0; minute < 2; ++minute) {
        clock.advance_seconds(60);
        form1.timer_1_min.tick();
    }
    EXPECT_EQ(fakes::read_course(path).number("time_ever"), 120);
}

TEST_F(Timers, minute_whose_work_time_cannot_be_stored_shows_no_box)
{
    start_with_three_questions();
    clock.advance_seconds(60);
    database.fail_at(fakes::Operation::execute);
    form1.timer_1_min.tick();
    EXPECT_EQ(status(), "The work time could not be stored. The disk is full.");
    EXPECT_NE(folder.read("trace.txt").find(" - timer_1_min - work time not stored - The disk is full.\r\n"),
              std::string::npos);
    EXPECT_EQ(database.transaction_depth(), 0);
    EXPECT_EQ(fakes::read_course(path).number("time_ever"), std::nullopt);
    clock.advance_seconds(60);
    form1.timer_1_min.tick();
    EXPECT_EQ(fakes::read_course(path).number("time_ever"), 120);
    form1.timer_250_ms.tick();
    EXPECT_EQ(status(), "") << "the notice has had its time";
}

TEST_F(Timers, minute_whose_work_time_may_be_stored_says_that_nobody_can_tell)
{
    for (const bool stored : {true, false}) {
        SCOPED_TRACE(stored);
        if (!started)
            start_with_three_questions();
        const double before = fakes::read_course(path).number("time_ever").value_or(0);
        clock.advance_seconds(60);
        database.fail_commit(stored);
        database.fail_at(fakes::Operation::query);
        form1.timer_1_min.tick();
        EXPECT_EQ(status(), "It is not known whether the work time is stored.");
        EXPECT_NE(folder.read("trace.txt")
                      .find(" - timer_1_min - not known whether the work time is stored - The "
                            "commit failed. It is not known whether the change is stored, because "
                            "the course cannot be read again.\r\n"),
                  std::string::npos);
        EXPECT_EQ(folder.read("trace.txt").find("not stored"), std::string::npos);
        EXPECT_EQ(database.transaction_depth(), 0);
        EXPECT_EQ(fakes::read_course(path).number("time_ever").value_or(0), before + (stored ? 60 : 0));
        clock.advance_seconds(60);
        form1.timer_1_min.tick();
        EXPECT_EQ(fakes::read_course(path).number("time_ever"), stored ? 120 : 240) << "the next minute stores all";
        form1.timer_250_ms.tick();
        EXPECT_EQ(status(), "");
    }
}

TEST_F(Timers, minute_whose_work_time_may_be_stored_leaves_the_request_for_a_verdict)
{
    start_with_three_questions();
    yes();
    choose("m_show_answer");
    database.fail_commit(true);
    database.fail_at(fakes::Operation::query);
    form1.timer_1_min.tick();
    EXPECT_EQ(status(), "Press '+' or '-' to indicate success or failure");
}

TEST_F(Timers, minute_whose_work_time_cannot_be_stored_leaves_the_request_for_a_verdict)
{
    start_with_three_questions();
    yes();
    choose("m_show_answer");
    database.fail_at(fakes::Operation::execute);
    form1.timer_1_min.tick();
    EXPECT_EQ(status(), "Press '+' or '-' to indicate success or failure");
    EXPECT_EQ(form1.screen.P_status.background, common::pure_red);
    EXPECT_NE(folder.read("trace.txt").find("work time not stored - The disk is full."), std::string::npos);
}

TEST_F(Timers, stand_still_while_no_window_is_loaded)
{
    start_with_three_questions();
    desktop.on_box = [this] {
        EXPECT_FALSE(form1.window.shown);
        for (const fakes::FakeTimer* timer : {&form1.timer_250_ms, &form1.timer_1_sec, &form1.timer_1_min})
            EXPECT_FALSE(timer->running) << timer->name;
    };
    desktop.expect_file({});
    choose("m_open");
    EXPECT_TRUE(ended);
}

} // namespace
} // namespace cuedrill::drill
