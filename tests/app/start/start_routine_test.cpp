#include "app/start/start.h"
#include "drill/drill_fixture.h"
#include "scheduler/dead_time.h"
#include "store/course.h"

#include <filesystem>
#include <string>
#include <vector>

namespace cuedrill::app {
namespace {

/// The start of the program, with the course "My course" to open.
class StartRoutineTest : public drill::DrillFixture {
protected:
    void SetUp() override
    {
        builder.question("France?", "Paris").level(0);
        path = builder.write(folder, "My course.crs");
    }

    bool run(const std::string& command_line)
    {
        if (!logic)
            make_program();
        return logic->start.run(command_line);
    }

    [[nodiscard]] store::Course& course() const { return logic->course; }

    /// The lines of the trace without their times.
    [[nodiscard]] std::vector<std::string> traced() const
    {
        const std::string text = folder.read("trace.txt");
        std::vector<std::string> messages;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = text.find("\r\n", at);
            const std::size_t message = text.find(") - ", at) + 4;
            messages.push_back(text.substr(message, end - message));
            at = end + 2;
        }
        return messages;
    }
};

TEST_F(StartRoutineTest, opens_the_course_of_the_command_line)
{
    EXPECT_TRUE(run(path));
    EXPECT_TRUE(course().is_open());
    EXPECT_EQ(course().db_path, path);
    EXPECT_EQ(course().course_name, "My course");
    EXPECT_EQ(course().record_count, 1);
    EXPECT_TRUE(form1.window.shown);
}

TEST_F(StartRoutineTest, measures_the_frame)
{
    ASSERT_TRUE(run(path));
    EXPECT_EQ(logic->start.frame_allowances().minimal_height, 435);
}

TEST_F(StartRoutineTest, measures_the_frame_before_a_course_is_opened)
{
    form2.smallest_height = 40000;
    EXPECT_THROW(static_cast<void>(run(path)), common::OverflowError);
    EXPECT_EQ(course().db_path, path);
    EXPECT_FALSE(course().is_open());
}

TEST_F(StartRoutineTest, takes_quotes_off_the_path)
{
    EXPECT_TRUE(run('"' + path + '"'));
    EXPECT_EQ(course().db_path, path);
}

TEST_F(StartRoutineTest, takes_a_single_quote_off_either_end)
{
    EXPECT_TRUE(run('"' + path));
    course().close();
    EXPECT_TRUE(run(path + '"'));
    EXPECT_EQ(course().db_path, path);
}

TEST_F(StartRoutineTest, traces_its_steps_in_order)
{
    static_cast<void>(folder.write("trace.flg", ""));
    ASSERT_TRUE(run(path));
    EXPECT_EQ(traced(), (std::vector<std::string>{"sub main -  return form init_dead_time_array",
                                                  "apertura_db -  begin - db_path$ = " + path, "apertura_db - AD1 ",
                                                  "apertura_db - return from apri_db ",
                                                  "apertura_db - return from read_params "}));
}

TEST_F(StartRoutineTest, traces_nothing_without_the_switch_file)
{
    ASSERT_TRUE(run(path));
    EXPECT_FALSE(std::filesystem::exists(folder.file("trace.txt")));
}

TEST_F(StartRoutineTest, fills_the_dead_times)
{
    ASSERT_TRUE(run(path));
    EXPECT_EQ(logic->dead_times.dead_time(4), 2);
}

TEST_F(StartRoutineTest, remembers_a_relative_path_as_an_absolute_one)
{
    const std::string relative = std::filesystem::relative(path).string();
    ASSERT_FALSE(relative.starts_with('/'));
    ASSERT_TRUE(run(relative));
    EXPECT_TRUE(course().db_path.starts_with('/')) << course().db_path;
    EXPECT_TRUE(std::filesystem::equivalent(course().db_path, path));
    EXPECT_EQ(settings_store.values.at("CUEDRILL/general/last_db_path"), course().db_path);
}

TEST_F(StartRoutineTest, tells_of_a_missing_file_and_goes_on_with_the_remembered_course)
{
    settings_store.values["CUEDRILL/general/last_db_path"] = path;
    const std::string missing = folder.file("missing.crs");
    desktop.expect_box_like({.text = "File " + missing + " does not exist."}, platform::BoxAnswer::ok);
    EXPECT_TRUE(run(missing));
    EXPECT_EQ(course().db_path, path);
    EXPECT_FALSE(std::filesystem::exists(missing));
}

TEST_F(StartRoutineTest, without_a_course_asks_for_one_and_gives_up_when_cancelled)
{
    desktop.expect_file({});
    EXPECT_FALSE(run(""));
    EXPECT_FALSE(course().is_open());
    EXPECT_EQ(desktop.file_dialogs.at(0).initial_folder, folder.path().string());
    EXPECT_EQ(times_noted("Form1.show"), 0);
}

TEST_F(StartRoutineTest, names_a_file_that_is_no_course_and_then_lets_the_user_choose)
{
    const std::string text = folder.write("notes.crs", std::string(4096, 'x'));
    desktop.expect_box("The course " + text + " cannot be opened.\r\n\r\nIt is not a course.");
    desktop.expect_file({.path = path, .title = "My course.crs"});
    EXPECT_TRUE(run(text));
    EXPECT_EQ(course().db_path, path);
    EXPECT_EQ(folder.read("notes.crs"), std::string(4096, 'x'));
}

TEST_F(StartRoutineTest, ends_when_a_missing_course_is_not_to_be_created)
{
    const std::string wanted = folder.file("new.crs");
    desktop.expect_file({.path = wanted, .title = "new.crs"});
    desktop.expect_box("File " + wanted + " does not exist. Do you want to create it?", platform::BoxAnswer::no);
    EXPECT_THROW(static_cast<void>(run("")), common::ProgramEnded);
    EXPECT_FALSE(std::filesystem::exists(wanted));
}

} // namespace
} // namespace cuedrill::app
