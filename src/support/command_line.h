#pragma once

#include <optional>
#include <string>
#include <vector>

namespace cuedrill::support {

/// What the program prints, without a window, if its only argument is "--help", "-h" or "--version".
/// @param arguments those after the program's name.
/// @return std::nullopt for all other arguments; the program itself handles them.
std::optional<std::string> command_line_answer(const std::vector<std::string>& arguments);

/// Whether the arguments set the widget style, which is an option of the toolkit.
bool sets_style(const std::vector<std::string>& arguments);

} // namespace cuedrill::support
