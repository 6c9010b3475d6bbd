#pragma once

#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/files.h"

#include <string>
#include <string_view>

namespace cuedrill::app {

/// Name of the file whose mere existence in the program's folder at start turns the trace on.
inline constexpr std::string_view trace_switch_file = "trace.flg";
inline constexpr std::string_view trace_file = "trace.txt";

/// The optional diary of what the program does, for finding faults: one line per call in "trace.txt" in the program's
/// folder. It is switched on or off once, at start, by "trace.flg" beside it; later it can only go off.
class TraceLog {
public:
    /// Looks for the switch file.
    TraceLog(platform::Files& files, const platform::Clock& clock, platform::Desktop& desktop,
             const std::string& program_folder);

    /// Appends date, time, seconds since midnight and `message` as one line; does nothing while the trace is off.
    /// A file of 100000 bytes or more is left alone: the user is told in a box, once, and the trace goes off.
    /// A file that cannot be written turns the trace off silently: a diary must never stop the work it records.
    /// @throws common::ProgramEnded when the program is ended while the box is open.
    void write_trace(std::string_view message);

    [[nodiscard]] bool trace_enabled() const { return enabled_; }

private:
    [[nodiscard]] std::string line(std::string_view message) const;

    platform::Files& files_;
    const platform::Clock& clock_;
    platform::Desktop& desktop_;
    std::string path_;
    bool enabled_;
};

} // namespace cuedrill::app
