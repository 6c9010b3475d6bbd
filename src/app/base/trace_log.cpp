#include "app/base/trace_log.h"

#include "app/base/paths.h"
#include "common/date_time.h"
#include "common/errors.h"
#include "common/number_format.h"
#include "common/text.h"

#include <cstdint>

namespace cuedrill::app {
namespace {

constexpr std::uint64_t trace_limit = 100000;

} // namespace

TraceLog::TraceLog(platform::Files& files, const platform::Clock& clock, platform::Desktop& desktop,
                   const std::string& program_folder)
    : files_(files), clock_(clock), desktop_(desktop), path_(join_path(program_folder, trace_file)),
      enabled_(file_exists(files, join_path(program_folder, trace_switch_file)))
{
}

void TraceLog::write_trace(std::string_view message)
{
    if (!enabled_)
        return;

    bool written = false;
    try {
        written = files_.append_below(path_, trace_limit, line(message));
    } catch (const common::Error&) {
        enabled_ = false;
        return;
    }
    if (written)
        return;

    // Off before the box opens: timers keep ticking behind it and write traces, too, which must not open a second box.
    enabled_ = false;
    platform::MessageBox box;
    box.text = "Trace file too large. Please delete it (" + path_ + ")";
    desktop_.message_box(box);
}

std::string TraceLog::line(std::string_view message) const
{
    std::string text = common::format_date_time(clock_.now());
    text.append(" (").append(common::format_fixed(clock_.seconds_since_midnight(), 2)).append(") - ");
    return text.append(message).append(common::cr_lf);
}

} // namespace cuedrill::app
