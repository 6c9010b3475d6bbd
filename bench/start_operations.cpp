#include "common/errors.h"
#include "keep/copy_names.h"
#include "operations.h"
#include "platform/system/system_clock.h"

#include <filesystem>
#include <fstream>
#include <spawn.h>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace cuedrill::bench {
namespace {

/// The folders of a user, in the work folder: the programs that are started find no settings of the user who runs the
/// benchmark, and leave none.
struct User {
    explicit User(const WorkFolder& folder) : config(folder.file("config")), data(folder.file("data")) {}

    std::string config;
    std::string data;
};

/// This process's environment with the folders of another user.
std::vector<std::string> environment_of(const User& user)
{
    std::vector<std::string> all{"XDG_CONFIG_HOME=" + user.config, "XDG_DATA_HOME=" + user.data};
    for (char** one = environ; *one != nullptr; ++one) {
        const std::string_view variable = *one;
        if (!variable.starts_with("XDG_CONFIG_HOME=") && !variable.starts_with("XDG_DATA_HOME="))
            all.emplace_back(variable);
    }
    return all;
}

/// Runs a program to its end. Returns whether it succeeded.
bool run_to_end(const char* program, const std::string& argument, const User& user)
{
    std::string path = program;
    std::string course = argument;
    char* arguments[] = {path.data(), course.data(), nullptr};
    std::vector<std::string> variables = environment_of(user);
    std::vector<char*> environment;
    for (std::string& variable : variables)
        environment.push_back(variable.data());
    environment.push_back(nullptr);
    pid_t child = 0;
    int status = 0;
    return posix_spawn(&child, program, nullptr, nullptr, arguments, environment.data()) == 0 &&
           waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

Work start(const char* program, const std::string& argument, const User& user)
{
    return {.run = [program, argument, user] {
        if (!run_to_end(program, argument, user))
            throw common::Error("the window did not come up");
    }};
}

Work first_window(const WorkFolder& folder, int records)
{
    return start(CUEDRILL_START_PROGRAM, fresh_sample(folder, records), User(folder));
}

/// A year's copies of the course, the newest more than a day old: another one is due.
Work first_window_with_copies(const WorkFolder& folder, int records)
{
    const User user(folder);
    const std::string course = fresh_sample(folder, records);
    const std::filesystem::path copies =
        std::filesystem::path(user.data) / "cuedrill" / "copies" / keep::folder_name(course);
    std::filesystem::create_directories(copies);
    const common::DateTime now = platform::system::SystemClock().now();
    constexpr int most_copies = 35;
    for (int age = 2; age < 2 + most_copies; ++age)
        std::filesystem::copy_file(course, copies / keep::copy_name(now.plus_days(-age)));
    return start(CUEDRILL_START_PROGRAM, course, user);
}

/// Where the folder for the user's data cannot be created, no copies are made or looked for.
Work first_window_without_place(const WorkFolder& folder, int records)
{
    User user(folder);
    std::ofstream(user.data).put('\n');
    return start(CUEDRILL_START_PROGRAM, fresh_sample(folder, records), user);
}

Work empty_window(const WorkFolder& folder, int)
{
    return start(CUEDRILL_START_FLOOR, "", User(folder));
}

/// The system's fonts are looked up only when something is written.
Work window_with_a_word(const WorkFolder& folder, int)
{
    return start(CUEDRILL_START_FLOOR, "Question", User(folder));
}

} // namespace

std::vector<Operation> start_operations()
{
    return {{.name = "first painted window", .program = first_window, .floor = empty_window, .needs_window = true},
            {.name = "first painted window, beside one with a word",
             .program = first_window,
             .floor = window_with_a_word,
             .needs_window = true},
            {.name = "first painted window with copies, beside one without",
             .program = first_window_with_copies,
             .floor = first_window_without_place,
             .needs_window = true}};
}

} // namespace cuedrill::bench
