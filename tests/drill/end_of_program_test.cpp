#include "app/start/start.h"
#include "drill/drill_fixture.h"
#include "drill/drill_state.h"
#include "store/course.h"

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

/// No end of the program shows a box; an unexpected box fails the test.
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

TEST_F(VanishedRecord, that_is_judged_as_not_known_is_told_and_goes_from_display)
{
    start_with_three_questions();
    yes();
    yes();
    database.execute("Delete from qa where cnt = 1");
    desktop.expect_box("The question is no longer in the course; another program has deleted it.");
    no();
    EXPECT_FALSE(ended);
    EXPECT_EQ(question(), "");
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

/// The program ends while a box about the full trace is open, after a course was opened and before its parameters are
/// read.
class EndWhileOpening : public DrillFixture {
protected:
    void SetUp() override
    {
        static_cast<void>(folder.write("trace.flg", ""));
        builder.number_param("time_ever", 1000).number_param("time_today", 500).date_param("last_date", clock.time);
        start_with_three_questions();
    }

    /// Fills the trace so that the next opening, which writes the same lines as the one traced from `begin` on, reaches
    /// the size limit at this message.
    void fill_trace_for_the_same_opening(std::size_t begin)
    {
        const std::string text = folder.read("trace.txt");
        const std::size_t message = text.find("apertura_db - return from apri_db", begin);
        ASSERT_NE(message, std::string::npos);
        const std::size_t line = text.rfind('\n', message) + 1;
        static_cast<void>(folder.write("trace.txt", std::string(100000 - (line - begin), 'x')));
        clock.advance_seconds(75);
    }

    void end_in_the_box()
    {
        desktop.boxes.clear();
        desktop.on_box = [this] {
            if (desktop.boxes.empty()) // the file dialog
                return;
            EXPECT_TRUE(logic->course.is_open());
            EXPECT_FALSE(logic->course.is_in_use());
            form1.window.close();
        };
    }

    void expect_ended()
    {
        ASSERT_EQ(desktop.boxes.size(), 1U);
        EXPECT_TRUE(desktop.boxes[0].text.starts_with("Trace file too large.")) << desktop.boxes[0].text;
        EXPECT_TRUE(ended);
        EXPECT_FALSE(logic->course.is_open());
        EXPECT_FALSE(database.is_open());
    }
};

TEST_F(EndWhileOpening, the_first_course_stores_nothing_into_it)
{
    user([this] { form1.window.close(); });
    ended = false;
    const fakes::CourseContents before = fakes::read_course(path);
    fill_trace_for_the_same_opening(0);
    make_program();
    end_in_the_box();
    user([this] { static_cast<void>(logic->start.run(path)); });
    expect_ended();
    EXPECT_EQ(fakes::read_course(path), before);
}

TEST_F(EndWhileOpening, another_course_stores_nothing_into_it)
{
    fakes::CourseBuilder builder_of_other;
    builder_of_other.question("Oslo?", "Norway").level(1).tested_ago(std::chrono::hours(1));
    const std::string other = builder_of_other.number_param("time_ever", 7).write(folder, "other.crs");
    const std::size_t begin = folder.read("trace.txt").size();
    for (const std::string& next : {other, path}) {
        desktop.expect_file({.path = next, .title = next.substr(next.rfind('/') + 1)});
        choose("m_open");
    }
    const fakes::CourseContents before = fakes::read_course(other);
    fill_trace_for_the_same_opening(begin);
    end_in_the_box();
    desktop.expect_file({.path = other, .title = "other.crs"});
    choose("m_open");
    expect_ended();
    EXPECT_EQ(fakes::read_course(other), before);
    EXPECT_EQ(fakes::read_course(path).number("time_ever"), 1075) << "the course that was left is stored";
}

} // namespace
} // namespace cuedrill::drill
