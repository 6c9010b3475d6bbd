#include "bench_names.h"
#include "platform/qt/qt_look.h"

#include <QApplication>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

namespace {

/// Remembers the times, to set each against its floor. Of repetitions the quickest counts: what else runs on the
/// machine only adds to the time.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.error_occurred || run.run_type != Run::RT_Iteration)
                continue;
            double& time = times_.try_emplace(run.run_name.function_name, run.GetAdjustedRealTime()).first->second;
            time = std::min(time, run.GetAdjustedRealTime());
        }
    }

    void print_ratios() const
    {
        std::printf("\n%-40s %12s %12s %8s\n", "", "program/ms", "floor/ms", "ratio");
        for (const auto& [name, time] : times_) {
            const std::string suffix = "/program";
            if (!name.ends_with(suffix))
                continue;
            const std::string base = name.substr(0, name.size() - suffix.size());
            const auto floor = times_.find(cuedrill::bench::floor_name(base));
            if (floor != times_.end())
                std::printf("%-40s %12.3f %12.3f %8.2f\n", base.c_str(), time, floor->second, time / floor->second);
        }
    }

private:
    std::map<std::string, double> times_; ///< milliseconds
};

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return EXIT_FAILURE;
    if (std::getenv("DISPLAY") == nullptr && std::getenv("WAYLAND_DISPLAY") == nullptr)
        setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const QApplication application(argc, argv);
    cuedrill::platform::qt::set_up_application();
    cuedrill::bench::register_course_benchmarks();
    cuedrill::bench::register_list_benchmarks();
    cuedrill::bench::register_start_benchmarks();
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.print_ratios();
    return EXIT_SUCCESS;
}
