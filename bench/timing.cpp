#include "timing.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <exception>

namespace cuedrill::bench {
namespace {

std::string program_name(const Operation& operation, int records)
{
    return operation.name + "/" + std::to_string(records) + "/program";
}

std::string floor_name(const Operation& operation, int records)
{
    return operation.name + "/" + std::to_string(records) + "/floor";
}

void measure(benchmark::State& state, MakeWork make, int records)
{
    try {
        const WorkFolder folder;
        const Work work = make(folder, records);
        for ([[maybe_unused]] auto iteration : state) {
            if (work.prepare) {
                state.PauseTiming();
                work.prepare();
                state.ResumeTiming();
            }
            work.run();
        }
    } catch (const std::exception& error) {
        state.SkipWithError(error.what());
    }
}

void register_side(const std::string& name, MakeWork make, int records, double min_time)
{
    auto* const registered = benchmark::RegisterBenchmark(name.c_str(), measure, make, records);
    registered->Unit(benchmark::kMillisecond)->UseRealTime();
    if (min_time > 0)
        registered->MinTime(min_time);
}

/// The time of one run in milliseconds.
double run_once(const Work& work)
{
    if (work.prepare)
        work.prepare();
    const auto begun = std::chrono::steady_clock::now();
    work.run();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begun).count();
}

/// The 10th percentile. Changes the order of the times.
double quick_time(std::vector<double>& times)
{
    const auto place = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 10);
    std::nth_element(times.begin(), place, times.end());
    return *place;
}

} // namespace

void register_operations(const std::vector<Operation>& operations, const std::vector<int>& sizes, double min_time)
{
    for (const Operation& operation : operations) {
        for (const int records : sizes) {
            register_side(program_name(operation, records), operation.program, records, min_time);
            if (operation.floor != nullptr)
                register_side(floor_name(operation, records), operation.floor, records, min_time);
        }
    }
}

void TimeTable::ReportRuns(const std::vector<Run>& runs)
{
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        any_failed_ = any_failed_ || run.error_occurred;
        if (run.error_occurred || run.run_type != Run::RT_Iteration)
            continue;
        double& time = times_.try_emplace(run.run_name.function_name, run.GetAdjustedRealTime()).first->second;
        time = std::min(time, run.GetAdjustedRealTime());
    }
}

void TimeTable::measure_in_turn(const std::vector<Operation>& operations, const std::vector<int>& sizes,
                                const std::regex& chosen)
{
    for (const Operation& operation : operations) {
        if (operation.floor == nullptr || operation.needs_window)
            continue;
        for (const int records : sizes) {
            if (!std::regex_search(program_name(operation, records), chosen))
                continue;
            try {
                measure_in_turn(operation, records);
            } catch (const std::exception& error) {
                std::fprintf(stderr, "%s: %s\n", operation.name.c_str(), error.what());
                any_failed_ = true;
            }
        }
    }
}

void TimeTable::measure_in_turn(const Operation& operation, int records)
{
    constexpr std::size_t fewest_turns = 5;
    constexpr std::size_t most_turns = 300;
    constexpr std::chrono::seconds long_enough{3};
    const WorkFolder folder;
    const WorkFolder floor_folder;
    const Work program = operation.program(folder, records);
    const Work floor = operation.floor(floor_folder, records);
    std::vector<double> program_times;
    std::vector<double> floor_times;
    const auto begun = std::chrono::steady_clock::now();
    const auto has_time = [&] { return std::chrono::steady_clock::now() - begun < long_enough; };
    while (program_times.size() < fewest_turns || (program_times.size() < most_turns && has_time())) {
        program_times.push_back(run_once(program));
        floor_times.push_back(run_once(floor));
    }
    times_[program_name(operation, records)] = quick_time(program_times);
    times_[floor_name(operation, records)] = quick_time(floor_times);
}

double TimeTable::time_of(const std::string& name) const
{
    const auto found = times_.find(name);
    return found != times_.end() ? found->second : -1;
}

void TimeTable::print(const std::vector<Operation>& operations, const std::vector<int>& sizes) const
{
    const int smallest = sizes.front();
    const int largest = sizes.back();
    std::printf("\n| milliseconds |");
    for (const int records : sizes)
        std::printf(" %d records |", records);
    std::printf(" growth | exponent | floor, %d | ratio, %d | floor, %d | ratio, %d |\n|---|", smallest, smallest,
                largest, largest);
    for (std::size_t column = 0; column < sizes.size() + 6; ++column)
        std::printf("---|");
    std::printf("\n");
    for (const Operation& operation : operations) {
        const double first = time_of(program_name(operation, smallest));
        const double last = time_of(program_name(operation, largest));
        if (first <= 0 || last <= 0)
            continue;
        std::printf("| %s |", operation.name.c_str());
        for (const int records : sizes)
            std::printf(" %.3f |", time_of(program_name(operation, records)));
        // The exponent is that of the power law through the times of the smallest and the largest course.
        if (largest > smallest)
            std::printf(" %.2f | %.2f |", last / first,
                        std::log(last / first) / std::log(static_cast<double>(largest) / smallest));
        else
            std::printf(" | |");
        for (const int records : {smallest, largest}) {
            const double floor = time_of(floor_name(operation, records));
            if (floor > 0)
                std::printf(" %.3f | %.2f |", floor, time_of(program_name(operation, records)) / floor);
            else
                std::printf(" | |");
        }
        std::printf("\n");
    }
}

} // namespace cuedrill::bench
