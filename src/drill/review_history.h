#pragma once

#include "app/base/trace_log.h"
#include "drill/noted_failures.h"
#include "drill/status_line.h"
#include "keep/history_file.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "store/course.h"
#include "store/course_params.h"
#include "store/stored_change.h"

#include <optional>
#include <string>

namespace cuedrill::drill {

/// Writes the history of the open course: a line for each stored change of its records, for its opening and for its
/// closing. A failure stops nothing. It goes to the trace, and the first one of the session to the status line, too,
/// with the next tick of a timer.
class ReviewHistory {
public:
    struct Services {
        platform::Files& files;
        const platform::Folders& folders;
        platform::Clock& clock;
        StatusLine& status;
        app::TraceLog& trace;
    };

    /// @param data_folder where histories are; "" if there is no such folder. Nothing is written then.
    ReviewHistory(store::Course& course, const store::CourseParamsStore& params, std::string data_folder,
                  const Services& services);

    /// Writes that the course is open, once. Call it when its window has been painted.
    void course_opened();

    /// Writes that the course is closed, if anything was written about it, and ends its history. Call it while the
    /// course is open.
    void course_closing();

    /// Writes a change that has just been stored. Throws nothing and shows nothing.
    void note(const store::StoredChange& change);

    /// Writes failures to the trace and has the status line tell the first one of the session.
    /// @throws common::ProgramEnded when the program is ended while the box about a full trace is open.
    void tell_failures() { failures_.tell(); }

    /// The failures that were not told yet, for the trace; empty if there are none.
    [[nodiscard]] std::string take_failures() { return failures_.take(); }

private:
    [[nodiscard]] keep::HistoryEvent event_of(keep::HistoryKind kind, common::DateTime time) const;
    [[nodiscard]] keep::HistoryEvent event_with_levels(keep::HistoryKind kind) const;
    void append(const keep::HistoryEvent& event);

    store::Course& course_;
    const store::CourseParamsStore& params_;
    std::string data_folder_;
    Services services_;
    NotedFailures failures_;

    std::optional<keep::HistoryFile> file_; ///< of the open course, once something was to be written
    bool opened_ = false;                   ///< the opening was written
};

} // namespace cuedrill::drill
