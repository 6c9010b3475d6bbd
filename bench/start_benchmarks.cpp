#include "bench_names.h"
#include "platform/icu/icu_text_compare.h"
#include "sample_course.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace cuedrill::bench {
namespace {

/// About as many as one sits down to learn.
constexpr int small_course = 200;

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

void start(benchmark::State& state, const char* program, int count)
{
    const WorkFolder folder;
    const std::string course = folder.file("sample.crs");
    make_sample_course(course, platform::icu::IcuTextCompare(), count);
    // The remembered course of whoever runs this is left alone.
    setenv("XDG_CONFIG_HOME", folder.file("config").c_str(), 1);
    for ([[maybe_unused]] auto iteration : state) {
        if (!run_to_end(program, course))
            state.SkipWithError("the window did not come up");
    }
}

} // namespace

void register_start_benchmarks()
{
    for (const int count : {small_course, records}) {
        const std::string name = "first painted window, " + std::to_string(count) + " records";
        for (const auto& [full_name, program] :
             {std::pair(program_name(name), CUEDRILL_START_PROGRAM), std::pair(floor_name(name), CUEDRILL_START_FLOOR)})
            benchmark::RegisterBenchmark(full_name.c_str(), start, program, count)
                ->Unit(benchmark::kMillisecond)
                ->UseRealTime()
                ->MinTime(2);
    }
}

} // namespace cuedrill::bench
