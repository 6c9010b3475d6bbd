// The programs as a user starts them: exit codes, output and files.

#include "fakes/course_builder.h"
#include "fakes/temp_folder.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>

namespace cuedrill {
namespace {

class CommandTest : public testing::Test {
protected:
    CommandTest()
    {
        setenv("XDG_CONFIG_HOME", folder.file("config").c_str(), 1);
        setenv("XDG_DATA_HOME", folder.file("data").c_str(), 1);
        // Keeps windows off the screen of a developer who runs the tests, unless requested.
        setenv("QT_QPA_PLATFORM", "offscreen", 0);
    }

    pid_t start(std::vector<std::string> words) const
    {
        std::vector<char*> arguments;
        for (std::string& word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        for (const int stream : {STDOUT_FILENO, STDERR_FILENO})
            posix_spawn_file_actions_addopen(&actions, stream, folder.file("printed").c_str(),
                                             O_WRONLY | O_CREAT | O_APPEND, 0600);
        pid_t child = 0;
        const int code = posix_spawn(&child, words.front().c_str(), &actions, nullptr, arguments.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        return code == 0 ? child : -1;
    }

    /// The exit code, or the negated number of the signal that ended the process.
    static int wait_for(pid_t child)
    {
        int status = 0;
        if (waitpid(child, &status, 0) != child)
            return -1000;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

    int run(const std::vector<std::string>& words) const { return wait_for(start(words)); }

    /// Waits until `done` returns true while the process is running; false if the process ends first.
    static bool wait_until(pid_t child, const std::function<bool()>& done)
    {
        while (!done()) {
            siginfo_t ended{};
            if (waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOHANG | WNOWAIT) != 0 || ended.si_pid != 0)
                return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return true;
    }

    /// A question text whose import takes long enough to be observed.
    std::string write_many() const
    {
        std::ofstream text(folder.file("many.txt"), std::ios::binary);
        for (int number = 1; number <= many; ++number)
            text << "@Q@ question " << number << " @A@ answer " << number << "\r\n";
        return folder.file("many.txt");
    }

    /// Whether an unfinished course file exists and already has records.
    bool in_making() const
    {
        const std::filesystem::directory_iterator entries(folder.path());
        return std::any_of(begin(entries), end(entries), [](const auto& entry) {
            std::error_code gone;
            return entry.path().filename().string().starts_with(".cuedrill-new-") && entry.file_size(gone) > 40000 &&
                   !gone;
        });
    }

    [[nodiscard]] std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
            found.push_back(entry.path().filename().string());
        std::sort(found.begin(), found.end());
        return found;
    }

    static constexpr int many = 20000;

    [[nodiscard]] std::string printed() const { return folder.read("printed"); }

    fakes::TempFolder folder;
};

TEST_F(CommandTest, the_course_tool_makes_a_course_of_the_sample_questions)
{
    EXPECT_EQ(run({CUEDRILL_COURSE, folder.file("elements.crs"), SAMPLE_QUESTIONS}), 0);
    const std::size_t made = fakes::read_course(folder.file("elements.crs")).qa.size();
    EXPECT_GE(made, 118U);
    EXPECT_EQ(printed(), std::to_string(made) + " questions and answers insterted.\n");
}

TEST_F(CommandTest, the_course_tool_takes_a_name_in_the_working_folder)
{
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    const int code = run({CUEDRILL_COURSE, "elements.crs", SAMPLE_QUESTIONS});
    std::filesystem::current_path(before);
    EXPECT_EQ(code, 0) << printed();
    EXPECT_GE(fakes::read_course(folder.file("elements.crs")).qa.size(), 118U);
}

TEST_F(CommandTest, the_course_tool_never_replaces_a_file)
{
    folder.write("elements.crs", "something dear");
    EXPECT_EQ(run({CUEDRILL_COURSE, folder.file("elements.crs"), SAMPLE_QUESTIONS}), 1);
    EXPECT_EQ(folder.read("elements.crs"), "something dear");
}

TEST_F(CommandTest, the_course_tool_says_what_it_cannot_read)
{
    EXPECT_EQ(run({CUEDRILL_COURSE, folder.file("elements.crs"), folder.file("nothing.txt")}), 1);
    EXPECT_NE(printed().find("nothing.txt"), std::string::npos) << printed();
}

// The remains of a failed attempt would block the next one.
TEST_F(CommandTest, the_course_tool_leaves_no_course_of_a_text_that_cannot_be_read)
{
    const std::string text = folder.write("utf16.txt", std::string_view("\xFF\xFE@\0Q\0", 6));
    EXPECT_EQ(run({CUEDRILL_COURSE, folder.file("elements.crs"), text}), 1);
    EXPECT_NE(printed().find("UTF-16"), std::string::npos) << printed();
    EXPECT_FALSE(std::filesystem::exists(folder.file("elements.crs")));
    EXPECT_EQ(run({CUEDRILL_COURSE, folder.file("elements.crs"), SAMPLE_QUESTIONS}), 0) << printed();
}

// The database engine would apply them to the new course and destroy it.
TEST_F(CommandTest, the_course_tool_makes_no_course_beside_a_journal_or_a_log)
{
    for (const std::string ending : {"-journal", "-wal"}) {
        const std::string left = folder.write("elements.crs" + ending, "changes of an earlier course");
        EXPECT_EQ(run({CUEDRILL_COURSE, folder.file("elements.crs"), SAMPLE_QUESTIONS}), 1);
        EXPECT_NE(printed().find("is still there: elements.crs" + ending), std::string::npos) << printed();
        EXPECT_EQ(names(), (std::vector<std::string>{"elements.crs" + ending, "printed"}));
        EXPECT_EQ(folder.read("elements.crs" + ending), "changes of an earlier course");
        std::filesystem::remove(left);
    }
}

TEST_F(CommandTest, the_course_tool_names_no_course_beside_a_journal_that_came_meanwhile)
{
    const std::string text = write_many();
    const pid_t child = start({CUEDRILL_COURSE, folder.file("many.crs"), text});
    EXPECT_TRUE(wait_until(child, [this] { return in_making(); })) << printed();
    folder.write("many.crs-journal", "changes of another course");
    EXPECT_EQ(wait_for(child), 1);
    EXPECT_NE(printed().find("is still there: many.crs-journal"), std::string::npos) << printed();
    EXPECT_EQ(names(), (std::vector<std::string>{"many.crs-journal", "many.txt", "printed"}));
}

TEST_F(CommandTest, the_course_tool_makes_no_course_without_records)
{
    const std::string text = folder.write("questions.txt", "Norway? Oslo");
    EXPECT_EQ(run({CUEDRILL_COURSE, folder.file("none.crs"), text}), 1);
    EXPECT_NE(printed().find("No course was made: " + text +
                             " has no record that can be stored. A record is a "
                             "question behind \"@Q@\" and its answer behind \"@A@\"."),
              std::string::npos)
        << printed();
    EXPECT_EQ(names(), (std::vector<std::string>{"printed", "questions.txt"}));
}

TEST_F(CommandTest, the_course_tool_makes_no_course_of_a_part_of_the_text)
{
    const std::string text = write_many();
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    rlimit limit = before;
    limit.rlim_cur = 300000;
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    const pid_t child = start({CUEDRILL_COURSE, folder.file("many.crs"), text});
    ::setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(wait_for(child), 1);
    EXPECT_NE(printed().find("The import has stopped."), std::string::npos) << printed();
    EXPECT_EQ(printed().find("\n0 questions and answers are stored."), std::string::npos) << "it stopped too early";
    EXPECT_NE(printed().find("No course was made, because the import did not come to its end."), std::string::npos)
        << printed();
    EXPECT_EQ(names(), (std::vector<std::string>{"many.txt", "printed"}));
}

TEST_F(CommandTest, the_course_tool_lists_what_it_refuses_and_succeeds)
{
    const std::string text = folder.write("questions.txt", "@Q@ Norway? @A@ Oslo @Q@ " + std::string(201, 'q') +
                                                               " @A@ a @Q@ Italy? @A@ Rome");
    EXPECT_EQ(run({CUEDRILL_COURSE, folder.file("some.crs"), text}), 0);
    EXPECT_NE(printed().find("Question 2: The question has 201 characters; 200 fit."), std::string::npos) << printed();
    EXPECT_EQ(fakes::read_course(folder.file("some.crs")).qa.size(), 2U);
}

TEST_F(CommandTest, the_demonstration_stops_when_nothing_more_is_mature)
{
    const std::string text = folder.write("questions.txt", "@Q@ Norway? @A@ Oslo @Q@ Italy? @A@ Rome");
    ASSERT_EQ(run({CUEDRILL_COURSE, folder.file("two.crs"), text}), 0);
    EXPECT_EQ(run({CUEDRILL_DEMO, folder.file("two.crs"), folder.file("drill.png")}), 0) << printed();
    EXPECT_NE(printed().find("Nothing more is mature"), std::string::npos) << printed();
    EXPECT_EQ(printed().find("question 3\n"), std::string::npos) << printed();
    EXPECT_TRUE(std::filesystem::exists(folder.file("drill.png")));
}

TEST_F(CommandTest, the_demonstration_drills_five_questions_and_saves_a_picture)
{
    ASSERT_EQ(run({CUEDRILL_COURSE, folder.file("elements.crs"), SAMPLE_QUESTIONS}), 0);
    ASSERT_EQ(run({CUEDRILL_DEMO, folder.file("elements.crs"), folder.file("drill.png")}), 0) << printed();
    EXPECT_NE(printed().find("question 5\n"), std::string::npos) << printed();
    EXPECT_EQ(printed().find("question 6\n"), std::string::npos) << printed();
    EXPECT_NE(printed().find("new level: 3\n"), std::string::npos) << printed();
    EXPECT_TRUE(folder.read("drill.png").starts_with("\x89PNG"));
}

TEST_F(CommandTest, the_demonstration_leaves_the_course_and_the_settings_of_the_user_alone)
{
    ASSERT_EQ(run({CUEDRILL_COURSE, folder.file("elements.crs"), SAMPLE_QUESTIONS}), 0);
    std::filesystem::permissions(folder.file("elements.crs"), std::filesystem::perms::owner_read);
    const std::string course = folder.read("elements.crs");
    std::filesystem::create_directories(folder.file("config/CUEDRILL"));
    folder.write("config/CUEDRILL/general.ini", "[settings]\nlast=verbs.crs\n");
    ASSERT_EQ(run({CUEDRILL_DEMO, folder.file("elements.crs"), folder.file("drill.png")}), 0) << printed();
    EXPECT_TRUE(folder.read("elements.crs") == course) << "a verdict was stored";
    EXPECT_EQ(folder.read("config/CUEDRILL/general.ini"), "[settings]\nlast=verbs.crs\n");
    EXPECT_FALSE(std::filesystem::exists(folder.file("config/CUEDRILL/window.ini")));
    EXPECT_FALSE(std::filesystem::exists(folder.file("data")));
}

TEST_F(CommandTest, the_demonstration_says_which_course_is_not_there)
{
    EXPECT_EQ(run({CUEDRILL_DEMO, folder.file("none.crs"), folder.file("drill.png")}), 1);
    EXPECT_NE(printed().find("none.crs cannot be made: No such file"), std::string::npos) << printed();
}

TEST_F(CommandTest, the_demonstration_fails_without_a_course)
{
    const std::string path = folder.write("broken.crs", "no course");
    EXPECT_NE(run({CUEDRILL_DEMO, path, folder.file("drill.png")}), 0);
    EXPECT_FALSE(std::filesystem::exists(folder.file("drill.png")));
}

// A terminated program stores its work time before it ends, as it does when the user chooses Exit.
TEST_F(CommandTest, the_program_ends_in_good_order_when_it_is_terminated)
{
    fakes::CourseBuilder builder;
    builder.question("one", "1").level(1).tested_ago(std::chrono::minutes(1));
    const std::string path = builder.write(folder);
    const pid_t child = start({CUEDRILL, path});
    // The course to remember is written after the course was opened, just before the window is shown.
    EXPECT_TRUE(wait_until(child, [&] { return std::filesystem::exists(folder.file("config/CUEDRILL/general.ini")); }))
        << printed();
    kill(child, SIGTERM);
    EXPECT_EQ(wait_for(child), 0) << printed();
    EXPECT_TRUE(fakes::read_course(path).number("time_ever").has_value());
}

// A course file with the requested name must always be complete.
TEST_F(CommandTest, a_course_tool_that_is_killed_leaves_no_course_of_that_name)
{
    const std::string path = folder.file("many.crs");
    const std::string text = write_many();
    const pid_t child = start({CUEDRILL_COURSE, path, text});
    EXPECT_TRUE(wait_until(child, [this] { return in_making(); })) << printed();
    EXPECT_FALSE(std::filesystem::exists(path));
    kill(child, SIGKILL);
    wait_for(child);
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_EQ(run({CUEDRILL_COURSE, path, text}), 0) << printed();
    EXPECT_EQ(fakes::read_course(path).qa.size(), static_cast<std::size_t>(many));
}

} // namespace
} // namespace cuedrill
