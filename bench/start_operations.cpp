#include "common/errors.h"
#include "operations.h"

#include <cstdlib>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace cuedrill::bench {
namespace {

/// Runs a program to its end. Returns whether it succeeded.
bool run_to_end(const char* program, const std::string& argument)
{
    std::string path = program;
    std::string course = argument;
    char* arguments[] = {path.data(), course.data(), nullptr};
    pid_t child = 0;
    int status = 0;
    return posix_spawn(&child, program, nullptr, nullptr, arguments, environ) == 0 &&
           waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// A sample course. The programs that are started find no settings of the user who runs the benchmark, and leave none.
std::string prepared_course(const WorkFolder& folder, int records)
{
    setenv("XDG_CONFIG_HOME", folder.file("config").c_str(), 1);
    setenv("XDG_DATA_HOME", folder.file("data").c_str(), 1);
    return fresh_sample(folder, records);
}

Work start(const char* program, const std::string& argument)
{
    return {.run = [program, argument] {
        if (!run_to_end(program, argument))
            throw common::Error("the window did not come up");
    }};
}

Work first_window(const WorkFolder& folder, int records)
{
    return start(CUEDRILL_START_PROGRAM, prepared_course(folder, records));
}

Work empty_window(const WorkFolder& folder, int records)
{
    static_cast<void>(prepared_course(folder, records));
    return start(CUEDRILL_START_FLOOR, "");
}

/// The system's fonts are looked up only when something is written.
Work window_with_a_word(const WorkFolder& folder, int records)
{
    static_cast<void>(prepared_course(folder, records));
    return start(CUEDRILL_START_FLOOR, "Question");
}

} // namespace

std::vector<Operation> start_operations()
{
    return {{.name = "first painted window", .program = first_window, .floor = empty_window, .needs_window = true},
            {.name = "first painted window, beside one with a word",
             .program = first_window,
             .floor = window_with_a_word,
             .needs_window = true}};
}

} // namespace cuedrill::bench
