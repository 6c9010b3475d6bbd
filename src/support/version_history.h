#pragma once

#include <string>
#include <string_view>

namespace cuedrill::support {

/// The version that `history` begins with, and its date: "3.0.18 (21/Nov/2026)". Requires a history whose first line is
/// an entry.
std::string newest_version(std::string_view history);

/// The version of this program with its date, or else the whole history: an entry to a line, newest first, ended by
/// the line "[end of version history]". Lines are separated by CR LF.
std::string version_history_text(bool version_only);

/// `version_history_text(true)`.
std::string program_version();

/// The history with a heading, the version and the meaning of the letters.
std::string release_notes_text();

} // namespace cuedrill::support
