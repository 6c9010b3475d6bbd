// Which course is opened: the one on the command line, the one used last time, or the one that the user chooses.
#include "drill/course_opener.h"
#include "drill/opener_fixture.h"
#include "store/course.h"
#include "store/course_params.h"

#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;

class Choice : public OpenerFixture {
protected:
    std::string existing = unpassed_course().write(courses, "German Verbs.crs");
};

TEST_F(Choice, takes_the_course_of_the_command_line_without_a_dialog)
{
    remember(unpassed_course().write(courses, "other.crs"));
    course.db_path = existing;
    EXPECT_TRUE(opener.apertura_db());
    expect_open(existing);
    EXPECT_EQ(course.course_name, "German Verbs");
    EXPECT_EQ(form2.loads, 0);
}

TEST_F(Choice, says_that_the_course_of_the_command_line_is_missing_and_goes_on_to_the_remembered_one)
{
    remember(existing);
    course.db_path = courses.file("gone.crs");
    desktop.expect_box_like({.text = "File " + course.db_path + " does not exist."}, BoxAnswer::ok);
    EXPECT_TRUE(opener.apertura_db());
    expect_open(existing);
}

TEST_F(Choice, takes_the_remembered_course_without_a_dialog)
{
    remember(existing);
    EXPECT_TRUE(opener.apertura_db());
    expect_open(existing);
    EXPECT_EQ(course.course_name, "German Verbs");
}

TEST_F(Choice, opens_the_dialog_in_the_program_folder_at_a_first_start_without_a_sample)
{
    desktop.expect_file({});
    EXPECT_FALSE(opener.apertura_db());
    ASSERT_EQ(desktop.file_dialogs.size(), 1U);
    const auto& dialog = desktop.file_dialogs[0];
    EXPECT_EQ(dialog.title, opener_title);
    EXPECT_EQ(dialog.initial_folder, folder.path().string());
    EXPECT_EQ(dialog.initial_file, "");
    EXPECT_EQ(dialog.default_extension, "crs");
    EXPECT_EQ(dialog.filter, "Cuedrill database file (*.crs)|*.crs");
}

TEST_F(Choice, opens_the_dialog_in_the_program_folder_when_the_remembered_course_is_gone)
{
    remember(courses.file("gone.crs"));
    desktop.expect_file({});
    EXPECT_FALSE(opener.apertura_db());
    EXPECT_EQ(desktop.file_dialogs.at(0).initial_folder, folder.path().string());
    EXPECT_EQ(desktop.file_dialogs.at(0).initial_file, "");
    EXPECT_EQ(remembered(), courses.file("gone.crs"));
}

TEST_F(Choice, loads_the_helper_window_and_lets_events_run_before_the_dialog)
{
    bool pumped_before = false;
    desktop.on_box = [&] {
        pumped_before = desktop.pumps == 1;
        EXPECT_TRUE(form2.loaded);
    };
    desktop.expect_file({});
    EXPECT_FALSE(opener.apertura_db());
    EXPECT_TRUE(pumped_before);
}

TEST_F(Choice, is_cancelled_by_an_empty_name_or_the_bare_pattern_in_any_case)
{
    for (const char* chosen : {"", "*.crs", "*.CRS", "*.Crs"}) {
        SCOPED_TRACE(chosen);
        desktop.expect_file({.path = chosen, .title = chosen});
        EXPECT_FALSE(opener.apertura_db());
        expect_nothing_open();
        EXPECT_EQ(remembered(), "nothing");
    }
    EXPECT_EQ(traced(), std::vector<std::string>(4, "apertura_db -  begin - db_path$ = "));
}

TEST_F(Choice, is_cancelled_by_the_bare_pattern_in_a_folder)
{
    for (const char* title : {"*.crs", "*.CRS"}) {
        SCOPED_TRACE(title);
        desktop.expect_file({.path = courses.file(title), .title = title});
        EXPECT_FALSE(opener.apertura_db());
        expect_nothing_open();
        EXPECT_FALSE(std::filesystem::exists(courses.file(title)));
    }
}

TEST_F(Choice, takes_a_name_that_only_ends_like_the_pattern)
{
    const std::string chosen = unpassed_course().write(courses, "x*.crs");
    expect_dialog_answer(chosen);
    EXPECT_TRUE(opener.apertura_db());
    expect_open(chosen);
}

TEST_F(Choice, opens_what_was_chosen_and_remembers_it)
{
    expect_dialog_answer(existing);
    EXPECT_TRUE(opener.apertura_db());
    expect_open(existing);
    EXPECT_EQ(course.course_name, "German Verbs");
}

TEST_F(Choice, creates_a_missing_file_after_a_yes)
{
    const std::string chosen = courses.file("new.crs");
    expect_dialog_answer(chosen);
    desktop.expect_box_like({.text = "File " + chosen + " does not exist. Do you want to create it?",
                             .buttons = BoxButtons::yes_no,
                             .icon = BoxIcon::question},
                            BoxAnswer::yes);
    expect_notice_of_empty_course();
    EXPECT_TRUE(opener.apertura_db());
    expect_open(chosen);
    EXPECT_EQ(course.params.course_title, "Course new");
    EXPECT_EQ(course.record_count, 0);
}

TEST_F(Choice, ends_the_program_and_writes_nothing_after_a_no)
{
    const std::string chosen = courses.file("new.crs");
    expect_dialog_answer(chosen);
    desktop.expect_box("File " + chosen + " does not exist. Do you want to create it?", BoxAnswer::no);
    EXPECT_THROW((void)opener.apertura_db(), common::ProgramEnded);
    EXPECT_FALSE(std::filesystem::exists(chosen));
    expect_nothing_open();
    EXPECT_EQ(remembered(), "nothing");
}

TEST_F(Choice, names_the_course_by_the_title_that_the_dialog_gives)
{
    desktop.expect_file({.path = existing, .title = "Shown name.part.crs"});
    EXPECT_TRUE(opener.apertura_db());
    EXPECT_EQ(course.course_name, "Shown name.part");
}

TEST_F(Choice, names_a_course_with_a_colon_in_its_name_whole)
{
    const std::string chosen = unpassed_course().write(courses, "Deutsch: Verben.crs");
    desktop.expect_file({.path = chosen, .title = "Deutsch: Verben.crs"});
    EXPECT_TRUE(opener.apertura_db());
    expect_open(chosen);
    EXPECT_EQ(course.course_name, "Deutsch: Verben");
}

TEST_F(Choice, traces_every_step)
{
    remember(existing);
    EXPECT_TRUE(opener.apertura_db());
    EXPECT_EQ(traced(), (std::vector<std::string>{"apertura_db -  begin - db_path$ = ", "apertura_db -  db_determined ",
                                                  "apertura_db - AD1 ", "apertura_db - return from apri_db ",
                                                  "apertura_db - return from read_params "}));
}

TEST_F(Choice, traces_no_choice_for_the_command_line)
{
    course.db_path = existing;
    EXPECT_TRUE(opener.apertura_db());
    EXPECT_EQ(traced(), (std::vector<std::string>{"apertura_db -  begin - db_path$ = " + existing, "apertura_db - AD1 ",
                                                  "apertura_db - return from apri_db ",
                                                  "apertura_db - return from read_params "}));
}

TEST_F(Choice, survives_a_settings_store_that_fails)
{
    settings_store.read_failure = settings_store.write_failure = "no access";
    expect_dialog_answer(existing);
    EXPECT_TRUE(opener.apertura_db());
    EXPECT_TRUE(course.is_open());
    EXPECT_TRUE(form1.window.shown);
}

} // namespace
} // namespace cuedrill::drill
