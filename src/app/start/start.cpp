#include "app/start/start.h"

#include "app/base/paths.h"

#include <utility>

namespace cuedrill::app {
namespace {

/// Inner height of every window with a title bar, in twips; the rest of its outer height is frame.
constexpr common::Twips inner_height = 405;
constexpr common::Twips inner_width = 120;

} // namespace

FrameAllowances measure_frame(const platform::DialogHost& form2)
{
    FrameAllowances frame;
    frame.height = common::to_int16(std::int64_t{form2.least_height()} - inner_height, "height of a window");
    frame.width = common::to_int16(std::int64_t{form2.least_width()} - inner_width, "width of a window");
    frame.minimal_height = common::to_int16(std::int64_t{frame.height} + inner_height, "height of a window");
    frame.minimal_width = common::to_int16(std::int64_t{frame.width} + inner_width, "width of a window");
    return frame;
}

bool StartRoutine::run(std::string command_line)
{
    dead_times_.init_dead_time_array();
    trace_.write_trace("sub main -  return form init_dead_time_array");
    strip_quotes(command_line);
    // Absolute, because the remembered path must work from any working folder.
    course_.db_path = files_.absolute(command_line);
    kept_.keep_left_drafts();
    frame_ = measure_frame(form2_);
    return opener_.apertura_db();
}

} // namespace cuedrill::app
