// Switching to another course, with the commands that open and create a course.
#include "drill/course_opener.h"
#include "drill/opener_fixture.h"
#include "store/course.h"
#include "store/course_params.h"

#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

using platform::BoxAnswer;

class Switching : public OpenerFixture {
protected:
    std::string first = unpassed_course().number_param("target_level", 5).write(courses, "first.crs");
    std::string second = unpassed_course().number_param("target_level", 7).write(courses, "second.crs");

    Switching()
    {
        remember(first);
        if (!opener.apertura_db())
            throw std::runtime_error("the first course does not open");
        logic->display.take_for_record(3);
        logic->display.leave_question(2);
    }
};

TEST_F(Switching, asks_for_the_course_though_one_is_remembered)
{
    expect_dialog_answer(second);
    opener.m_open();
    expect_open(second);
    EXPECT_EQ(course.course_name, "second");
    EXPECT_EQ(course.params.target_level, 7);
    EXPECT_EQ(desktop.file_dialogs.at(0).initial_folder, courses.path().string());
    EXPECT_EQ(desktop.file_dialogs.at(0).initial_file, "first.crs");
}

TEST_F(Switching, puts_the_window_away_and_forgets_the_current_record)
{
    desktop.on_box = [&] {
        EXPECT_FALSE(form1.window.shown);
        EXPECT_FALSE(course.is_open());
        EXPECT_EQ(course.db_path, "");
        EXPECT_EQ(course.course_name, "");
        EXPECT_EQ(logic->state.shown.current_cnt(), 0);
        EXPECT_EQ(logic->state.shown.previous_cnt(), 0);
    };
    expect_dialog_answer(second);
    opener.m_open();
    EXPECT_EQ(times_shown(), 2);
    EXPECT_EQ(times_put_away(), 1);
}

TEST_F(Switching, stores_the_settings_and_the_work_time_of_the_course_before)
{
    course.params.list_mode = true;
    course.params.score_today = 4;
    clock.advance_seconds(300);
    expect_dialog_answer(second);
    opener.m_open();
    const auto contents = fakes::read_course(first);
    EXPECT_EQ(contents.number("list_mode"), 1);
    EXPECT_EQ(contents.number("score_TODAY"), 4);
    EXPECT_EQ(contents.number("time_ever"), 300);
    EXPECT_EQ(contents.param("last_date")->date_value, clock.time);
}

TEST_F(Switching, counts_the_work_time_of_the_later_course_from_its_opening)
{
    clock.advance_seconds(300);
    expect_dialog_answer(second);
    opener.m_open();
    EXPECT_EQ(course.elapsed_seconds(clock.time), 0);
    clock.advance_seconds(20);
    EXPECT_EQ(params.time_ever(clock.time), 20);
}

TEST_F(Switching, to_the_same_course_closes_it_and_opens_it_again)
{
    course.params.always_type = true;
    clock.advance_seconds(50);
    expect_dialog_answer(first);
    opener.m_open();
    expect_open(first);
    EXPECT_TRUE(course.params.always_type);
    EXPECT_EQ(course.params.time_ever, 50);
    EXPECT_EQ(params.time_ever(clock.time), 50) << "nothing is counted twice";
}

TEST_F(Switching, ends_the_program_when_the_dialog_is_cancelled)
{
    desktop.expect_file({});
    EXPECT_THROW(opener.m_open(), common::ProgramEnded);
    expect_nothing_open();
    EXPECT_EQ(remembered(), first);
}

TEST_F(Switching, to_a_missing_course_asks_whether_to_create_it)
{
    const std::string chosen = courses.file("new.crs");
    expect_dialog_answer(chosen);
    desktop.expect_box("File " + chosen + " does not exist. Do you want to create it?", BoxAnswer::yes);
    expect_notice_of_empty_course();
    opener.m_open();
    expect_open(chosen);
}

TEST_F(Switching, creates_a_new_course_without_asking)
{
    const std::string chosen = courses.file("new.crs");
    expect_dialog_answer(chosen);
    expect_notice_of_empty_course();
    opener.m_new();
    expect_open(chosen);
    EXPECT_EQ(course.params.course_title, "Course new");
    EXPECT_EQ(fakes::read_course(chosen).qa.size(), 0U);
}

TEST_F(Switching, to_an_existing_course_by_the_command_for_a_new_one_opens_it)
{
    expect_dialog_answer(second);
    opener.m_new();
    expect_open(second);
    EXPECT_EQ(course.params.target_level, 7);
}

TEST_F(Switching, asks_again_before_creating_once_a_new_course_has_been_opened)
{
    expect_dialog_answer(second);
    opener.m_new();
    const std::string chosen = courses.file("new.crs");
    expect_dialog_answer(chosen);
    desktop.expect_box("File " + chosen + " does not exist. Do you want to create it?", BoxAnswer::yes);
    expect_notice_of_empty_course(7); // the target level of the course that was open before
    opener.m_open();
    expect_open(chosen);
}

TEST_F(Switching, asks_again_before_creating_once_the_dialog_for_a_new_course_was_cancelled)
{
    desktop.expect_file({});
    EXPECT_THROW(opener.m_new(), common::ProgramEnded);
    const std::string chosen = courses.file("new.crs");
    expect_dialog_answer(chosen);
    desktop.expect_box("File " + chosen + " does not exist. Do you want to create it?", BoxAnswer::yes);
    expect_notice_of_empty_course();
    EXPECT_TRUE(opener.apertura_db());
}

TEST_F(Switching, forgets_that_all_questions_had_passed)
{
    course.all_passed_announced = true;
    expect_dialog_answer(second);
    opener.m_open();
    EXPECT_FALSE(course.all_passed_announced);
}

} // namespace
} // namespace cuedrill::drill
