#pragma once

#include "keep/history_line.h"
#include "platform/files.h"
#include "platform/folders.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::keep {

/// Full path of the history of the course at this path. It depends on the course's full path, so a course that was
/// moved begins another one. Neither needs to exist.
/// @param data_folder the program's folder for the user's data, in which "history" lies.
[[nodiscard]] std::string history_path(const platform::Folders& folders, const std::string& data_folder,
                                       const std::string& course_path);

/// The history of one course, to which lines are appended. Several programs may append to it.
class HistoryFile {
public:
    /// @param path as `history_path` gives it.
    HistoryFile(platform::Files& files, std::string path);

    /// Appends a line without waiting, neither for the disk nor for another program: while another one is writing, the
    /// line is kept for the next append. Creates the folder if it is missing.
    /// @throws common::Error with the path and the reason; the line is lost then, and those that were kept.
    void append(const HistoryEvent& event);

    /// Does the same for the last line, but waits up to a second for another program.
    /// @throws common::Error
    void append_last(const HistoryEvent& event);

private:
    void append(const HistoryEvent& event, std::chrono::milliseconds patience, bool last);

    platform::Files& files_;
    std::string path_;
    std::string folder_;
    std::string unwritten_; ///< lines that wait for another program
    bool has_folder_ = false;
};

/// A line of a history as it is read.
struct HistoryLine {
    std::int64_t place = 0;              ///< counted from 1, the header included
    std::string_view text;               ///< without its line end; valid during the call only
    std::optional<HistoryEvent> event{}; ///< nothing for a line that cannot be read
};

/// Reads a history line by line. Its headers and empty lines are left out.
/// @throws common::Error with the path and the reason; whatever `visit` throws.
void read_history(const platform::Files& files, const std::string& path,
                  const std::function<void(const HistoryLine&)>& visit);

/// A history in memory.
struct History {
    std::vector<HistoryEvent> events; ///< in the order of the file
    std::int64_t unreadable = 0;      ///< lines that were skipped
};

/// Reads all of a history.
/// @throws common::Error with the path and the reason.
[[nodiscard]] History read_history(const platform::Files& files, const std::string& path);

/// Joins the lines of the history `from` to those of the history `to`, in order of time; a line that cannot be read
/// stays behind the line before it. The result is durable before `from` is removed. Where that was interrupted, doing
/// it again adds no line twice.
/// @param from must exist; `to` need not. Both are in the same folder.
/// @return how many lines have come from `from`.
/// @throws common::Error with the path and the reason; no line is lost then.
std::int64_t adopt_history(platform::Files& files, const std::string& from, const std::string& to);

} // namespace cuedrill::keep
