#include "memory.h"
#include "operations.h"
#include "platform/qt/qt_look.h"
#include "timing.h"

#include <QApplication>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <cstring>
#include <regex>
#include <string_view>
#include <vector>

namespace {

using cuedrill::bench::Operation;

/// The largest course that can be drilled: record numbers have 16 bits.
constexpr int full_course = 32767;

struct Plan {
    std::vector<int> sizes{300, 3000, 30000};
    int memory_size = full_course;
    double min_time = 0; ///< least time of one measurement, seconds; 0 for that of the command line
};

/// A short run that only shows that everything still works; its figures mean little.
Plan brief_plan()
{
    return {.sizes = {300}, .memory_size = 300, .min_time = 0.001};
}

/// Removes `argument` from the arguments. Returns whether it was among them.
bool take_argument(int& argc, char** argv, const char* argument)
{
    char** const end = argv + argc;
    char** const rest = std::remove_if(argv, end, [&](const char* one) { return std::strcmp(one, argument) == 0; });
    argc = static_cast<int>(rest - argv);
    return rest != end;
}

std::vector<Operation> all_operations()
{
    std::vector<Operation> all;
    for (const auto& some :
         {cuedrill::bench::drill_operations(), cuedrill::bench::course_operations(), cuedrill::bench::list_operations(),
          cuedrill::bench::window_operations(), cuedrill::bench::start_operations()})
        all.insert(all.end(), some.begin(), some.end());
    return all;
}

} // namespace

/// --brief runs everything briefly on a small course. --memory measures memory only. --in-turn alternates between each
/// operation and its floor, for a machine with other load. All other arguments are those of Google Benchmark.
int main(int argc, char** argv)
{
    const Plan plan = take_argument(argc, argv, "--brief") ? brief_plan() : Plan{};
    const bool in_turn = take_argument(argc, argv, "--in-turn");
    const bool memory_alone = take_argument(argc, argv, "--memory");
    const bool filtered = std::any_of(
        argv, argv + argc, [](const char* one) { return std::string_view(one).starts_with("--benchmark_filter="); });
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return EXIT_FAILURE;
    const std::vector<Operation> operations = all_operations();
    static_cast<void>(cuedrill::bench::sample_folder());
    // A filter asks for the times of some operations, so memory is measured only if that is asked for, too.
    const bool memory_good = (filtered && !memory_alone) || cuedrill::bench::print_memory(operations, plan.memory_size);
    if (memory_alone)
        return memory_good ? EXIT_SUCCESS : EXIT_FAILURE;

    if (in_turn) {
        cuedrill::bench::TimeTable times;
        times.measure_in_turn(operations, plan.sizes, std::regex(benchmark::GetBenchmarkFilter()));
        times.print(operations, plan.sizes);
        return memory_good && !times.any_failed() ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    if (std::getenv("DISPLAY") == nullptr && std::getenv("WAYLAND_DISPLAY") == nullptr)
        setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const QApplication application(argc, argv);
    cuedrill::platform::qt::set_up_application();
    cuedrill::bench::register_operations(operations, plan.sizes, plan.min_time);
    cuedrill::bench::TimeTable times;
    benchmark::RunSpecifiedBenchmarks(&times);
    times.print(operations, plan.sizes);
    return memory_good && !times.any_failed() ? EXIT_SUCCESS : EXIT_FAILURE;
}
