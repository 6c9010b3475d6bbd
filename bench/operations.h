#pragma once

#include "sample_course.h"

#include <functional>
#include <string>
#include <vector>

namespace cuedrill::bench {

/// What is measured: `run`, which is called repeatedly, each time after `prepare`, whose time does not count. Both
/// throw if they fail.
struct Work {
    std::function<void()> prepare{}; ///< may be empty
    std::function<void()> run;
};

/// Creates the work on a course of `records` records, with its files in `folder`.
using MakeWork = Work (*)(const WorkFolder& folder, int records);

/// An operation of the program and its floor: the least work with the same result and the same durability. Most floors
/// run hand-written statements on the bare engine.
struct Operation {
    std::string name;
    MakeWork program;
    MakeWork floor;            ///< null if there is nothing to compare with
    bool needs_window = false; ///< whether it shows a window, in this process or in another one
};

/// Verdicts and what follows them: counts and the choice of the next question.
std::vector<Operation> drill_operations();
/// Operations on a whole course: opening, import, export, reset.
std::vector<Operation> course_operations();
/// Lists and searches, without a window.
std::vector<Operation> list_operations();
/// Lists on the screen.
std::vector<Operation> window_operations();
/// The start of the program up to the first paint of its window.
std::vector<Operation> start_operations();

} // namespace cuedrill::bench
