#include "drill/drill_fixture.h"

namespace cuedrill::drill {
namespace {

struct End {
    const char* name;
    void (*of_program)(fakes::FakeForm1& form1);
};

const End ends[] = {
    {"exit", [](fakes::FakeForm1& form1) { form1.menu_bar.entry("m_exit").click(); }},
    {"closing_the_window", [](fakes::FakeForm1& form1) { form1.window.close(); }},
    {"no_at_the_start", [](fakes::FakeForm1& form1) { form1.bot_no.click(); }},
    {"right_click_on_yes", [](fakes::FakeForm1& form1) { form1.bot_yes.right_click(); }},
    {"escape", [](fakes::FakeForm1& form1) { form1.window.press(platform::Key::escape); }},
};

/// No end of the program asks or says anything: a box would fail the test.
class EndsOfTheProgram : public DrillFixture, public testing::WithParamInterface<End> {
protected:
    void SetUp() override
    {
        static_cast<void>(folder.write("trace.flg", ""));
        builder.number_param("time_ever", 1000).number_param("time_today", 500).date_param("last_date", clock.time);
        start_with_three_questions();
        clock.advance_seconds(75);
    }

    void end()
    {
        user([this] { GetParam().of_program(form1); });
        EXPECT_TRUE(ended);
        EXPECT_FALSE(logic->course.is_open());
        EXPECT_FALSE(database.is_open());
    }
};

TEST_P(EndsOfTheProgram, store_the_work_counters_and_close_the_course)
{
    logic->course.params.score_today = 3;
    end();
    const fakes::CourseContents stored_now = fakes::read_course(path);
    EXPECT_EQ(stored_now.number("time_ever"), 1075);
    EXPECT_EQ(stored_now.number("time_today"), 575);
    EXPECT_EQ(stored_now.number("score_TODAY"), 3);
    EXPECT_EQ(stored_now.param("last_date")->date_value, clock.time);
}

TEST_P(EndsOfTheProgram, go_on_when_the_counters_cannot_be_stored)
{
    database.fail_at(fakes::Operation::commit);
    end();
    EXPECT_EQ(fakes::read_course(path).number("time_ever"), 1000);
    EXPECT_NE(folder.read("trace.txt").find("end_program - work time not stored - The disk is full."),
              std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Ends, EndsOfTheProgram, testing::ValuesIn(ends),
                         [](const auto& end) { return std::string(end.param.name); });

class VanishedRecord : public DrillFixture {};

TEST_F(VanishedRecord, that_is_judged_as_known_ends_the_program)
{
    start_with_three_questions();
    yes();
    yes();
    database.execute("Delete from qa where cnt = 1");
    clock.advance_seconds(30);
    desktop.on_box = [this] { EXPECT_EQ(database.transaction_depth(), 0); };
    desktop.expect_box("nomatch in set_success");
    yes();
    EXPECT_TRUE(ended);
    EXPECT_FALSE(database.is_open());
    EXPECT_EQ(fakes::read_course(path).number("time_ever"), 30);
}

TEST_F(VanishedRecord, that_is_judged_as_not_known_is_an_error_of_the_engine)
{
    start_with_three_questions();
    yes();
    yes();
    database.execute("Delete from qa where cnt = 1");
    desktop.expect_box("The course " + path + " could not be read or written.\r\n\r\nThere is no current row.");
    no();
    EXPECT_FALSE(ended);
    EXPECT_EQ(logic->state.dialog, DialogState::AskKnown);
    EXPECT_EQ(database.transaction_depth(), 0);
}

TEST_F(VanishedRecord, that_is_skipped_is_no_matter)
{
    start_with_three_questions();
    yes();
    database.execute("Delete from qa where cnt = 1");
    no();
    EXPECT_EQ(question(), "Italy?");
    EXPECT_EQ(database.transaction_depth(), 0);
}

} // namespace
} // namespace cuedrill::drill
