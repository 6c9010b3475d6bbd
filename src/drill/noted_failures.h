#pragma once

#include "app/base/trace_log.h"
#include "drill/status_line.h"

#include <string>
#include <utility>
#include <vector>

namespace cuedrill::drill {

/// Failures that stop nothing. They are noted where no box may be shown, and told with the next tick of a timer: each
/// one to the trace, and the first one of the session to the status line, too.
class NotedFailures {
public:
    /// @param sentence stands in the status line before the reason: "Texts could not be kept."
    /// @param trace_word stands in the trace before the reasons: "texts not kept".
    NotedFailures(StatusLine& status, app::TraceLog& trace, std::string sentence, std::string trace_word);

    void note(std::string reason) { reasons_.push_back(std::move(reason)); }

    /// Tells what was noted since the last call. Where another text waits for the status line, it is told there with a
    /// later call.
    /// @throws common::ProgramEnded when the program is ended while the box about a full trace is open.
    void tell();

    /// What was not told yet, for the trace; empty if there is nothing.
    [[nodiscard]] std::string take();

private:
    StatusLine& status_;
    app::TraceLog& trace_;
    std::string sentence_;
    std::string trace_word_;
    std::vector<std::string> reasons_;
    std::string first_;  ///< text for the status line; empty until something was noted, and when it was told
    bool noted_ = false; ///< something was noted since the program started
};

} // namespace cuedrill::drill
