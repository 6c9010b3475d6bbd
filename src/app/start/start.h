#pragma once

#include "app/base/trace_log.h"
#include "common/int16.h"
#include "drill/course_opener.h"
#include "drill/kept_texts.h"
#include "platform/desktop.h"
#include "platform/files.h"
#include "scheduler/dead_time.h"
#include "store/course.h"

#include <string>

namespace cuedrill::app {

/// Sizes of the frame around a window, in twips.
struct FrameAllowances {
    common::Int16 height = 0;
    common::Int16 width = 0;
    common::Int16 minimal_height = 0; ///< of a window with a title bar
    common::Int16 minimal_width = 0;
};

/// Measures the frame: outer minus inner size of the smallest window with a title bar.
/// @throws common::OverflowError when a size does not fit 16 bits.
FrameAllowances measure_frame(const platform::DialogHost& form2);

/// The start routine: sets up what lives as long as the program and opens the first course.
class StartRoutine {
public:
    StartRoutine(store::Course& course, drill::CourseOpener& opener, scheduler::DeadTimes& dead_times,
                 drill::KeptTexts& kept, const platform::DialogHost& form2, platform::Files& files, TraceLog& trace)
        : course_(course), opener_(opener), dead_times_(dead_times), kept_(kept), form2_(form2), files_(files),
          trace_(trace)
    {
    }

    /// @param command_line everything after the program's name: the path of a course, or empty.
    /// @return false if no course is open; the program then ends at once.
    /// @throws common::ProgramEnded when the program was ended meanwhile.
    bool run(std::string command_line);

    /// The result of the last `run`.
    [[nodiscard]] const FrameAllowances& frame_allowances() const { return frame_; }

private:
    store::Course& course_;
    drill::CourseOpener& opener_;
    scheduler::DeadTimes& dead_times_;
    drill::KeptTexts& kept_;
    const platform::DialogHost& form2_;
    platform::Files& files_;
    TraceLog& trace_;
    FrameAllowances frame_;
};

} // namespace cuedrill::app
