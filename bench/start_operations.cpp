#include "common/errors.h"
#include "operations.h"

#include <cstdlib>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace cuedrill::bench {
namespace {

/// Runs a program to its end; whether it ended well.
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

/// The program that is started on a sample course.
Work start(const WorkFolder& folder, int records, const char* program)
{
    const std::string course = fresh_sample(folder, records);
    // The remembered course of the user is left alone, and no copy of the sample gets among the others.
    setenv("XDG_CONFIG_HOME", folder.file("config").c_str(), 1);
    setenv("XDG_DATA_HOME", folder.file("data").c_str(), 1);
    return {.run = [program, course] {
        if (!run_to_end(program, course))
            throw common::Error("the window did not come up");
    }};
}

Work first_window(const WorkFolder& folder, int records)
{
    return start(folder, records, CUEDRILL_START_PROGRAM);
}

Work empty_window(const WorkFolder& folder, int records)
{
    return start(folder, records, CUEDRILL_START_FLOOR);
}

} // namespace

std::vector<Operation> start_operations()
{
    return {{.name = "first painted window", .program = first_window, .floor = empty_window, .needs_window = true}};
}

} // namespace cuedrill::bench
