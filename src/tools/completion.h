#pragma once

#include <string>

namespace cuedrill::tools {

/// A script that teaches bash to complete the command lines of the tool: verbs, options, file names.
[[nodiscard]] std::string bash_completion();

/// The same for zsh.
[[nodiscard]] std::string zsh_completion();

} // namespace cuedrill::tools
