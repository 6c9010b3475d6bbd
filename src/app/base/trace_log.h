#pragma once

#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/files.h"

#include <string>
#include <string_view>

namespace cuedrill::app {

/// Name of the switch file: if it exists in the program folder at start, the trace is on.
inline constexpr std::string_view trace_switch_file = "trace.flg";
inline constexpr std::string_view trace_file = "trace.txt";

/// An optional log for finding faults: one line per call in "trace.txt" in the program folder. "trace.flg" next to it
/// switches the log on at start; later it can only switch off.
class TraceLog {
public:
    /// Looks for the switch file.
    TraceLog(platform::Files& files, const platform::Clock& clock, platform::Desktop& desktop,
             const std::string& program_folder);

    /// Appends date, time, seconds since midnight and `message` as one line; does nothing while the trace is off. If
    /// the file has 100000 bytes or more, tells the user once in a box and turns the trace off. If the file cannot be
    /// written, turns the trace off silently: a log must never stop the work it records.
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
