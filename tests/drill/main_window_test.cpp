#include "app/start/start.h"
#include "drill/drill_fixture.h"
#include "drill/drill_state.h"
#include "store/course.h"

namespace cuedrill::drill {
namespace {

class MainWindowTest : public DrillFixture {};

TEST_F(MainWindowTest, loads_on_the_course)
{
    builder.text_param("course_title", "Capitals");
    start_with_three_questions();
    EXPECT_TRUE(form1.window.shown);
    EXPECT_EQ(form1.window.caption_value, "Cuedrill: Capitals [course]");
    EXPECT_EQ(logic->state.shown.current_cnt(), 0);
    EXPECT_EQ(status(), "");
}

TEST_F(MainWindowTest, shows_the_counts_of_the_course)
{
    builder.question("old", "a").level(9).tested_ago(1h);
    start_with_three_questions();
    EXPECT_EQ(form1.screen.panel_total.text, "4");
    EXPECT_EQ(form1.screen.panel_nr_unpassed.text, "2");
    const std::int64_t counts[] = {1, 0, 1, 0, 0, 1};
    for (std::size_t level = 0; level < std::size(counts); ++level) {
        const platform::LevelLine& panel = form1.screen.panel_level.at(level);
        EXPECT_EQ(panel.count, counts[level]) << level;
        EXPECT_EQ(panel.total, 4) << level;
        EXPECT_EQ(panel.description, "Level " + std::to_string(level));
        EXPECT_EQ(panel.caption, "Level " + std::to_string(level) + (level == 5 ? "+ \u25CE" : ""));
        EXPECT_EQ(panel.background, level == 5 ? std::optional(common::light_cyan) : std::nullopt) << level;
        EXPECT_FALSE(panel.marked) << level;
    }
}

TEST_F(MainWindowTest, shows_the_score_of_the_day)
{
    builder.number_param("score_today", -4).date_param("last_date", clock.time);
    start_with_three_questions();
    EXPECT_EQ(form1.screen.Panel_score.text, "-4");
}

TEST_F(MainWindowTest, describes_every_figure)
{
    start_with_three_questions();
    const struct {
        const platform::Line& caption;
        const platform::Line& value;
        const char* text;
    } figures[] = {{form1.screen.lab_total, form1.screen.panel_total, "Total"},
                   {form1.screen.lab_score, form1.screen.Panel_score, "Score today"},
                   {form1.screen.lab_open_time, form1.screen.panel_open_time, "Open time"},
                   {form1.screen.lab_time_today, form1.screen.panel_time_today, "Time today"},
                   {form1.screen.lab_time_ever, form1.screen.panel_time_ever, "Time ever"},
                   {form1.screen.lab_time_now, form1.screen.Panel_time_now, "Time now"}};
    for (const auto& figure : figures) {
        EXPECT_EQ(figure.caption.text, figure.text);
        EXPECT_EQ(figure.value.description, figure.text);
    }
    EXPECT_EQ(form1.screen.panel_nr_unpassed.description, "Unpassed");
}

TEST_F(MainWindowTest, follows_a_verdict_with_its_figures)
{
    start_with_three_questions();
    yes();
    yes();
    yes();
    EXPECT_EQ(form1.screen.Panel_score.text, "1");
    EXPECT_TRUE(form1.screen.panel_level[4].marked);
    EXPECT_EQ(form1.screen.panel_level[4].count, 1);
    EXPECT_EQ(form1.screen.panel_level[2].count, 0);
    yes();
    no();
    EXPECT_TRUE(form1.screen.panel_level[0].marked);
    EXPECT_FALSE(form1.screen.panel_level[4].marked);
}

TEST_F(MainWindowTest, tells_on_loading_that_everything_is_passed)
{
    builder.question("old", "a").level(5).tested_ago(1h);
    desktop.on_box = [this] {
        EXPECT_TRUE(form1.window.shown);
        EXPECT_EQ(prompt(), "Shall I ask you a question?");
        EXPECT_EQ(desktop.pointer_depth, 0);
    };
    desktop.expect_box("You have passed level 5 for all questions.");
    start();
}

TEST_F(MainWindowTest, is_busy_while_it_loads)
{
    desktop.on_pump = [this] { EXPECT_EQ(desktop.pointer_depth, 1); };
    start_with_three_questions();
    EXPECT_GT(desktop.pumps, 0);
    EXPECT_EQ(desktop.pointer_depth, 0);
}

TEST_F(MainWindowTest, is_shown_with_its_prompt)
{
    desktop.on_pump = [this] { EXPECT_FALSE(form1.window.shown) << "it would be painted without its prompt"; };
    start_with_three_questions();
    EXPECT_TRUE(form1.window.shown);
    EXPECT_EQ(prompt(), "Shall I ask you a question?");
}

TEST_F(MainWindowTest, that_cannot_show_the_counts_gives_way_to_the_file_dialog)
{
    describe_three_questions();
    path = builder.write(folder);
    make_program();
    // The first query counts the records when the course is opened; the second is the first one of the window.
    database.fail_at(fakes::Operation::open_recordset, 2, platform::DatabaseErrorKind::input_output, "It is gone.");
    desktop.on_box = [this] {
        EXPECT_FALSE(form1.window.shown);
        EXPECT_FALSE(form1.timer_1_min.running);
    };
    desktop.expect_box("The course " + path + " cannot be opened.\r\n\r\nIt is gone.");
    desktop.expect_file({});
    user([this] { started = logic->start.run(path); });
    EXPECT_FALSE(started);
    EXPECT_FALSE(logic->course.is_open());
}

class SwitchOfCourses : public DrillFixture {
protected:
    void SetUp() override
    {
        start_with_three_questions();
        fakes::CourseBuilder other;
        other.question("Oslo?", "Norway").level(1).attempts(1).fails(0).tested_ago(1h);
        other.text_param("course_title", "North");
        other_path = other.write(folder, "other.crs");
    }

    void open_other()
    {
        desktop.expect_file({.path = other_path, .title = "other.crs"});
        choose("m_open");
    }

    std::string other_path;
};

TEST_F(SwitchOfCourses, forgets_what_was_shown_and_done)
{
    yes();
    choose("m_show_answer");
    logic->state.RightClickConsumed = true;
    open_other();
    EXPECT_FALSE(ended);
    EXPECT_EQ(form1.window.caption_value, "Cuedrill: North [other]");
    EXPECT_TRUE(form1.window.shown);
    EXPECT_EQ(logic->state.dialog, DialogState::AskToStart);
    EXPECT_FALSE(logic->state.AwaitingVerdict);
    EXPECT_FALSE(logic->state.RightClickConsumed);
    EXPECT_EQ(question(), "");
    EXPECT_EQ(answer(), "");
    EXPECT_EQ(status(), "");
    EXPECT_TRUE(form1.screen.panel_a.visible);
    EXPECT_EQ(form1.screen.panel_total.text, "1");
    EXPECT_TRUE(form1.timer_1_min.running);
}

TEST_F(SwitchOfCourses, forgets_the_last_verdict_and_its_mark)
{
    yes();
    yes();
    yes();
    ASSERT_TRUE(form1.screen.panel_level[4].marked);
    open_other();
    const fakes::CourseContents before = fakes::read_course(other_path);
    choose("m_undo");
    EXPECT_EQ(fakes::read_course(other_path).qa, before.qa);
    for (const platform::LevelLine& panel : form1.screen.panel_level)
        EXPECT_FALSE(panel.marked) << panel.caption;
}

TEST_F(SwitchOfCourses, stores_the_work_time_of_the_course_that_is_left)
{
    clock.advance_seconds(90);
    open_other();
    EXPECT_EQ(fakes::read_course(path).number("time_ever"), 90);
    clock.advance_seconds(10);
    user([this] { form1.window.close(); });
    EXPECT_EQ(fakes::read_course(other_path).number("time_ever"), 10);
}

} // namespace
} // namespace cuedrill::drill
