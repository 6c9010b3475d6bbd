#pragma once

#include "operations.h"

#include <benchmark/benchmark.h>
#include <map>
#include <regex>
#include <string>
#include <utility>
#include <vector>

namespace cuedrill::bench {

/// Has each operation measured on courses of each size, beside its floor.
/// @param min_time least time of one measurement, seconds; 0 for that of the command line.
void register_operations(const std::vector<Operation>& operations, const std::vector<int>& sizes, double min_time);

/// Collects the times of all measurements. Of repetitions the quickest counts: what else runs on the machine only adds
/// to the time.
class TimeTable : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override;

    /// Prints a row for each operation that was measured: its times on courses of each size, how they grow, and how
    /// they stand to the floor.
    void print(const std::vector<Operation>& operations, const std::vector<int>& sizes) const;

    /// Measures each operation that has a floor and needs no window: both sides in turn, many times, so that whatever
    /// else the machine does meets both. Only where the name of the program's side matches `chosen`. Of all times of a
    /// side that counts which a tenth of them are below.
    void measure_in_turn(const std::vector<Operation>& operations, const std::vector<int>& sizes,
                         const std::regex& chosen);

    /// Whether an operation has not done what it should.
    [[nodiscard]] bool any_failed() const { return any_failed_; }

private:
    void measure_in_turn(const Operation& operation, int records);

    /// Milliseconds; below 0 when it was not measured.
    [[nodiscard]] double time_of(const std::string& name) const;

    std::map<std::string, double> times_; ///< by the names that they are registered under
    bool any_failed_ = false;
};

} // namespace cuedrill::bench
