#include "memory.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cuedrill::bench {
namespace {

/// More than one, so that memory that a run does not release adds to the peak.
constexpr int runs = 3;

[[noreturn]] void run_in_this_process(const Operation& operation, int records)
{
    int result = EXIT_SUCCESS;
    try {
        const WorkFolder folder;
        const Work work = operation.program(folder, records);
        for (int run = 0; run < runs; ++run) {
            if (work.prepare)
                work.prepare();
            work.run();
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", operation.name.c_str(), error.what());
        result = EXIT_FAILURE;
    }
    std::_Exit(result);
}

} // namespace

bool print_memory(const std::vector<Operation>& operations, int records)
{
    bool all_good = true;
    std::printf("\n| most memory, %d records | MB |\n|---|---|\n", records);
    for (const Operation& operation : operations) {
        if (operation.needs_window)
            continue;
        std::fflush(stdout);
        const pid_t child = fork();
        if (child == 0)
            run_in_this_process(operation, records);
        int status = 0;
        rusage usage{};
        const bool good = child > 0 && wait4(child, &status, 0, &usage) == child && WIFEXITED(status) &&
                          WEXITSTATUS(status) == EXIT_SUCCESS;
        all_good = all_good && good;
        constexpr double bytes_of_kib = 1024;
        std::printf("| %s | %.1f |\n", operation.name.c_str(),
                    static_cast<double>(usage.ru_maxrss) * bytes_of_kib / 1e6);
    }
    return all_good;
}

} // namespace cuedrill::bench
