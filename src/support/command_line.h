#pragma once

#include <optional>
#include <string>
#include <vector>

namespace cuedrill::support {

/// What the program prints, without showing a window, when its only argument is "--help", "-h" or "--version".
/// @param arguments those behind the program's name.
/// @return nothing for all others, which are for the program itself.
std::optional<std::string> command_line_answer(const std::vector<std::string>& arguments);

} // namespace cuedrill::support
