// If a course cannot be opened, a box names it with the reason, its file is unchanged, and the program still starts.
#include "drill/course_opener.h"
#include "drill/opener_fixture.h"
#include "store/course.h"
#include "store/course_params.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

using fakes::CourseBuilder;
using fakes::Operation;
using platform::BoxAnswer;

class OpeningFailure : public OpenerFixture {
protected:
    std::string sound = unpassed_course().write(courses, "sound.crs");

    void expect_refusal_box(const std::string& chosen, const std::string& reason)
    {
        desktop.expect_box_like(cannot_open(chosen, reason), BoxAnswer::ok);
    }

    /// Tries to open the course, cancels the file dialog that follows, and returns the reason that the box gives, which
    /// is the database engine's own message.
    std::string opener_refuses(const std::string& chosen)
    {
        const std::string start = "The course " + chosen + " cannot be opened.\r\n\r\n";
        desktop.on_box = [&] {
            if (!desktop.boxes.empty() && desktop.file_dialogs.empty())
                desktop.expect_box(desktop.boxes.back().text);
            else
                desktop.expect_file({});
        };
        EXPECT_FALSE(opener.apertura_db());
        desktop.on_box = nullptr;
        if (desktop.boxes.size() != 1 || !desktop.boxes[0].text.starts_with(start)) {
            ADD_FAILURE() << "No box named the course.";
            return {};
        }
        EXPECT_EQ(desktop.boxes[0].icon, platform::BoxIcon::exclamation);
        return desktop.boxes[0].text.substr(start.size());
    }
};

TEST_F(OpeningFailure, of_a_remembered_course_leads_to_the_dialog)
{
    const std::string bytes(5000, 'x');
    const std::string broken = courses.write("broken.crs", bytes);
    remember(broken);
    expect_refusal_box(broken, "It is not a course.");
    expect_dialog_answer(sound);
    EXPECT_TRUE(opener.apertura_db());
    expect_open(sound);
    EXPECT_EQ(courses.read("broken.crs"), bytes);
    EXPECT_EQ(desktop.file_dialogs.at(0).initial_folder, courses.path().string());
    EXPECT_EQ(desktop.file_dialogs.at(0).initial_file, "broken.crs");
}

TEST_F(OpeningFailure, to_store_a_parameter_for_lack_of_room_opens_the_course_and_is_traced)
{
    const std::string chosen = unpassed_course().number_param("target_level", 0).write(courses, "odd.crs");
    remember(chosen);
    database.fail_at(Operation::commit, 1, platform::DatabaseErrorKind::full, "There is no room left on the disk.");
    EXPECT_TRUE(opener.apertura_db());
    expect_open(chosen);
    EXPECT_EQ(course.params.target_level, 5);
    EXPECT_EQ(traced().back(), "apertura_db - parameters not stored - There is no room left on the disk.");
}

TEST_F(OpeningFailure, to_store_the_order_of_the_texts_for_lack_of_room_opens_the_course_and_is_traced)
{
    remember(sound);
    database.leave_unstored("There is no room left on the disk.");
    EXPECT_TRUE(opener.apertura_db());
    expect_open(sound);
    const std::vector<std::string> messages = traced();
    EXPECT_EQ(std::count(messages.begin(), messages.end(),
                         "apertura_db - order of the texts not stored - There is no room left on the disk."),
              1);
}

TEST_F(OpeningFailure, to_store_a_parameter_for_another_reason_refuses_the_course)
{
    const std::string chosen = unpassed_course().number_param("target_level", 0).write(courses, "odd.crs");
    remember(chosen);
    database.fail_at(Operation::commit, 1, platform::DatabaseErrorKind::input_output, "The disk is ill.");
    expect_refusal_box(chosen, "The disk is ill.");
    expect_dialog_answer(sound);
    EXPECT_TRUE(opener.apertura_db());
    expect_open(sound);
}

TEST_F(OpeningFailure, of_the_command_line_s_course_leads_to_the_dialog_though_another_is_remembered)
{
    const std::string broken = courses.write("broken.crs", "not a course");
    remember(sound);
    course.db_path = broken;
    expect_refusal_box(broken, "It is not a course.");
    expect_dialog_answer(sound);
    EXPECT_TRUE(opener.apertura_db());
    expect_open(sound);
    EXPECT_EQ(desktop.file_dialogs.at(0).initial_file, "sound.crs");
}

TEST_F(OpeningFailure, of_a_course_with_a_broken_page_leaves_the_file_as_it_was)
{
    CourseBuilder many;
    for (int i = 0; i < 300; ++i)
        many.question("question " + std::to_string(i), std::string(150, 'x'));
    const std::string chosen = many.write(courses, "broken.crs");
    std::string bytes = courses.read("broken.crs");
    ASSERT_GT(bytes.size(), 40000U);
    for (std::size_t at = 8192; at < bytes.size(); at += 4096)
        bytes.replace(at, 64, std::string(64, '\xee'));
    courses.write("broken.crs", bytes);
    remember(chosen);
    EXPECT_FALSE(opener_refuses(chosen).empty());
    expect_nothing_open();
    EXPECT_EQ(courses.read("broken.crs"), bytes);
}

TEST_F(OpeningFailure, of_a_database_that_is_no_course_names_the_reason)
{
    {
        fakes::RealEngine other;
        other.database.create(courses.file("other.crs"));
        other.database.append_table({.name = "notes", .table = "CREATE TABLE notes (text TEXT) STRICT", .indexes = {}});
        other.database.finish_creation();
    }
    const std::string bytes = courses.read("other.crs");
    remember(courses.file("other.crs"));
    EXPECT_FALSE(opener_refuses(courses.file("other.crs")).empty());
    expect_nothing_open();
    EXPECT_EQ(courses.read("other.crs"), bytes);
}

TEST_F(OpeningFailure, of_a_cancelled_second_choice_leaves_nothing_open)
{
    const std::string broken = courses.write("broken.crs", "");
    remember(broken);
    database.fail_at(Operation::open, 1, platform::DatabaseErrorKind::damaged, "It is damaged (page 3).");
    expect_refusal_box(broken, "It is damaged (page 3).");
    desktop.expect_file({});
    EXPECT_FALSE(opener.apertura_db());
    expect_nothing_open();
    EXPECT_EQ(course.db_path, "");
    EXPECT_EQ(course.course_name, "");
    EXPECT_EQ(remembered(), broken);
}

TEST_F(OpeningFailure, is_told_again_for_every_attempt_that_fails)
{
    const std::string broken = courses.write("broken.crs", "x");
    remember(broken);
    expect_refusal_box(broken, "It is not a course.");
    expect_dialog_answer(broken);
    expect_refusal_box(broken, "It is not a course.");
    expect_dialog_answer(sound);
    EXPECT_TRUE(opener.apertura_db());
    expect_open(sound);
}

TEST_F(OpeningFailure, is_traced_with_path_and_reason)
{
    remember(sound);
    database.fail_at(Operation::open);
    expect_refusal_box(sound, fakes::RecordingDatabase::failure_words);
    desktop.expect_file({});
    EXPECT_FALSE(opener.apertura_db());
    EXPECT_EQ(traced(), (std::vector<std::string>{
                            "apertura_db -  begin - db_path$ = ", "apertura_db -  db_determined ", "apertura_db - AD1 ",
                            "apertura_db - The course " + sound + " cannot be opened. - The disk is full."}));
}

TEST_F(OpeningFailure, while_the_window_loads_puts_the_window_away)
{
    remember(sound);
    // The first query counts the records; the second is the first one of the window.
    database.fail_at(Operation::open_recordset, 2, platform::DatabaseErrorKind::input_output,
                     "The disk could not be read.");
    expect_refusal_box(sound, "The disk could not be read.");
    desktop.expect_file({});
    EXPECT_FALSE(opener.apertura_db());
    expect_nothing_open();
    EXPECT_EQ(times_put_away(), 1);
}

TEST_F(OpeningFailure, does_not_use_up_the_start_of_the_program_as_the_beginning_of_the_work_time)
{
    remember(sound);
    database.fail_at(Operation::open_recordset);
    expect_refusal_box(sound, fakes::RecordingDatabase::failure_words);
    expect_dialog_answer(sound);
    clock.advance_seconds(20);
    EXPECT_TRUE(opener.apertura_db());
    EXPECT_EQ(course.elapsed_seconds(clock.time), 20);
}

TEST_F(OpeningFailure, that_shows_only_after_the_first_picture_leads_to_the_dialog)
{
    const std::string other = unpassed_course().write(courses, "other.crs");
    remember(sound);
    EXPECT_TRUE(opener.apertura_db());
    database.fail_check(platform::DatabaseErrorKind::damaged, "It is damaged (row 2 missing).");
    expect_refusal_box(sound, "It is damaged (row 2 missing).");
    expect_dialog_answer(other);
    form1.window.paint_first_picture();
    expect_open(other);
    EXPECT_EQ(times_put_away(), 1);
    EXPECT_EQ(traced().back().find("damaged"), std::string::npos) << "the other course is open";
}

TEST_F(OpeningFailure, after_the_first_picture_lends_nothing_to_the_next_course)
{
    remember(
        unpassed_course().number_param("always_type", 1).number_param("target_level", 7).write(courses, "odd.crs"));
    EXPECT_TRUE(opener.apertura_db());
    EXPECT_TRUE(course.params.always_type);
    database.fail_check(platform::DatabaseErrorKind::damaged, "It is damaged (row 2 missing).");
    expect_refusal_box(course.db_path, "It is damaged (row 2 missing).");
    expect_dialog_answer(sound);
    form1.window.paint_first_picture();
    expect_open(sound);
    EXPECT_FALSE(course.params.always_type);
    EXPECT_EQ(course.params.target_level, 5);
}

TEST_F(OpeningFailure, after_the_first_picture_ends_the_program_when_the_user_cancels_the_dialog)
{
    remember(sound);
    EXPECT_TRUE(opener.apertura_db());
    const auto before = courses.read("sound.crs");
    database.fail_check(platform::DatabaseErrorKind::damaged, "It is damaged (row 2 missing).");
    expect_refusal_box(sound, "It is damaged (row 2 missing).");
    desktop.expect_file({});
    EXPECT_THROW(form1.window.paint_first_picture(), common::ProgramEnded);
    expect_nothing_open();
    EXPECT_EQ(courses.read("sound.crs"), before);
}

TEST_F(OpeningFailure, is_none_where_another_program_writes_during_the_check)
{
    remember(sound);
    EXPECT_TRUE(opener.apertura_db());
    database.fail_check(platform::DatabaseErrorKind::locked, "Another program is using it.");
    form1.window.paint_first_picture();
    expect_open(sound);
    EXPECT_TRUE(form1.timer_check.running);
    EXPECT_EQ(form1.timer_check.period, std::chrono::minutes(1));
}

TEST_F(OpeningFailure, is_found_by_a_later_attempt_where_another_program_has_written_during_the_check)
{
    remember(sound);
    EXPECT_TRUE(opener.apertura_db());
    database.fail_check(platform::DatabaseErrorKind::locked, "Another program is using it.");
    form1.window.paint_first_picture();
    database.fail_check(platform::DatabaseErrorKind::damaged, "It is damaged (row 2 missing).");
    expect_refusal_box(sound, "It is damaged (row 2 missing).");
    desktop.expect_file({});
    EXPECT_THROW(form1.timer_check.tick(), common::ProgramEnded);
    expect_nothing_open();
    EXPECT_FALSE(form1.timer_check.running);
}

TEST_F(OpeningFailure, is_looked_for_no_more_once_a_later_attempt_has_found_nothing)
{
    remember(sound);
    EXPECT_TRUE(opener.apertura_db());
    database.fail_check(platform::DatabaseErrorKind::locked, "Another program is using it.");
    form1.window.paint_first_picture();
    form1.timer_check.tick();
    EXPECT_FALSE(form1.timer_check.running);
    expect_open(sound);
}

TEST_F(OpeningFailure, is_none_where_the_check_finds_nothing)
{
    remember(sound);
    EXPECT_TRUE(opener.apertura_db());
    form1.window.paint_first_picture();
    expect_open(sound);
    EXPECT_EQ(times_put_away(), 0);
}

/// A box reports the error, and no file is left.
TEST_F(OpeningFailure, of_a_creation_leaves_no_file)
{
    const std::string chosen = courses.file("new.crs");
    expect_dialog_answer(chosen);
    desktop.expect_box("File " + chosen + " does not exist. Do you want to create it?", BoxAnswer::yes);
    database.fail_at(Operation::append_table, 2);
    desktop.expect_box("The course " + chosen + " cannot be created.\r\n\r\n" +
                       std::string(fakes::RecordingDatabase::failure_words));
    desktop.expect_file({});
    EXPECT_FALSE(opener.apertura_db());
    expect_nothing_open();
    EXPECT_FALSE(std::filesystem::exists(chosen));
}

/// Whichever step of an opening fails, a box reports it and nothing is left open.
class FailingStep : public OpeningFailure, public testing::WithParamInterface<std::pair<Operation, int>> {};

TEST_P(FailingStep, is_told_in_a_box_and_leaves_nothing_open)
{
    const auto before = courses.read("sound.crs");
    remember(sound);
    database.fail_at(GetParam().first, GetParam().second, platform::DatabaseErrorKind::input_output,
                     fakes::RecordingDatabase::failure_words);
    expect_refusal_box(sound, fakes::RecordingDatabase::failure_words);
    desktop.expect_file({});
    EXPECT_FALSE(opener.apertura_db());
    expect_nothing_open();
    EXPECT_EQ(times_shown(), 0);
    EXPECT_EQ(courses.read("sound.crs"), before);
}

INSTANTIATE_TEST_SUITE_P(AtEveryStep, FailingStep,
                         testing::Values(std::pair(Operation::open, 1), std::pair(Operation::query, 1),
                                         std::pair(Operation::query, 5), std::pair(Operation::execute, 1),
                                         std::pair(Operation::begin, 1), std::pair(Operation::commit, 1)));

TEST_F(OpeningFailure, after_the_parameters_were_read_lends_nothing_to_the_next_course)
{
    const std::string foreign = unpassed_course()
                                    .number_param("always_type", 1)
                                    .number_param("target_level", 7)
                                    .date_param("last_date", clock.time)
                                    .number_param("score_today", 40000)
                                    .write(courses, "foreign.crs");
    remember(foreign);
    expect_refusal_box(foreign, "Overflow: the score of the day 40000 is outside -32768 to 32767.");
    expect_dialog_answer(sound);
    EXPECT_TRUE(opener.apertura_db());
    expect_open(sound);
    EXPECT_FALSE(course.params.always_type);
    EXPECT_EQ(course.params.target_level, 5);
    EXPECT_EQ(file().number("target_level"), 5);
}

} // namespace
} // namespace cuedrill::drill
