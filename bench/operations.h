#pragma once

#include "sample_course.h"

#include <functional>
#include <string>
#include <vector>

namespace cuedrill::bench {

/// What is measured: `run`, again and again, each time behind a `prepare` that does not count. Both throw where they
/// have not done what they should.
struct Work {
    std::function<void()> prepare{}; ///< may be empty
    std::function<void()> run;
};

/// Makes the work on a course of `records` records, with its files in `folder`.
using MakeWork = Work (*)(const WorkFolder& folder, int records);

/// Something that the program does, and the least work with the same result and the same durability: the best
/// statements, written by hand, prepared and bound before they are measured, on the bare engine.
struct Operation {
    std::string name;
    MakeWork program;
    MakeWork floor;            ///< null where there is nothing to compare with
    bool needs_window = false; ///< it cannot run without a QApplication
};

/// A verdict and what follows it.
std::vector<Operation> drill_operations();
/// What concerns a course as a whole: opening, import, export, reset.
std::vector<Operation> course_operations();
/// Lists and searches, without a window.
std::vector<Operation> list_operations();
/// Lists on the screen.
std::vector<Operation> window_operations();
/// The program up to its first painted window.
std::vector<Operation> start_operations();

} // namespace cuedrill::bench
