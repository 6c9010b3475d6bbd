#pragma once

#include "operations.h"

#include <benchmark/benchmark.h>
#include <map>
#include <regex>
#include <string>
#include <utility>
#include <vector>

namespace cuedrill::bench {

/// Registers each operation and its floor as benchmarks, on courses of each size.
/// @param min_time least time of one measurement, seconds; 0 for that of the command line.
void register_operations(const std::vector<Operation>& operations, const std::vector<int>& sizes, double min_time);

/// Collects the times of all measurements. Of several repetitions the shortest time counts, because other load on the
/// machine only adds to it.
class TimeTable : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override;

    /// Prints a row for each operation that was measured: its times in milliseconds on courses of each size, their
    /// growth, and for the smallest and the largest course the time of the floor and the ratio to it.
    void print(const std::vector<Operation>& operations, const std::vector<int>& sizes) const;

    /// Measures each operation that has a floor and needs no window, if the name of the program's side matches
    /// `chosen`. It alternates between the two sides many times, so that other load on the machine affects both. The
    /// result of a side is the 10th percentile of its times.
    void measure_in_turn(const std::vector<Operation>& operations, const std::vector<int>& sizes,
                         const std::regex& chosen);

    /// Whether an operation has failed.
    [[nodiscard]] bool any_failed() const { return any_failed_; }

private:
    void measure_in_turn(const Operation& operation, int records);

    /// Milliseconds; -1 if it was not measured.
    [[nodiscard]] double time_of(const std::string& name) const;

    std::map<std::string, double> times_; ///< milliseconds, by the names of the benchmarks
    bool any_failed_ = false;
};

} // namespace cuedrill::bench
