#include "tools/progress_line.h"

#include <ostream>

namespace cuedrill::tools {
namespace {

constexpr double patience = 1; ///< seconds

// The end of the line is cleared with a sequence that all terminals know (ECMA-48, "erase in line").
constexpr const char* line_start = "\r\033[K";

} // namespace

void ProgressLine::show(std::optional<int> percent)
{
    if (!around_.shows_progress || !percent || percent == shown_ || clock_.steady_seconds() - begun_ < patience)
        return;
    shown_ = percent;
    around_.err << line_start << *percent << " %" << std::flush;
}

void ProgressLine::clear()
{
    if (shown_)
        around_.err << line_start << std::flush;
    shown_.reset();
}

} // namespace cuedrill::tools
