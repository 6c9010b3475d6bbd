#pragma once

#include <string>
#include <string_view>

namespace cuedrill::support {

/// The first version in `history` with its date: "3.0.18 (21/Nov/2026)". The first line of the history must be an
/// entry.
std::string newest_version(std::string_view history);

/// The version of this program with its date if `version_only`; otherwise the whole history: one entry per line, newest
/// first, ending with the line "[end of version history]". Lines are separated by CR LF.
std::string version_history_text(bool version_only);

/// The same as `version_history_text(true)`.
std::string program_version();

/// The history with a heading, the version and the meaning of the letters.
std::string release_notes_text();

} // namespace cuedrill::support
