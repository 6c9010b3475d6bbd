#pragma once

#include <string>
#include <string_view>

namespace cuedrill::tools {

/// The manual page of the tool in roff, with all verbs and options.
[[nodiscard]] std::string manual_page();

/// A text of the tool as roff shows it literally. Lines that begin with a blank stay lines; the others are filled.
[[nodiscard]] std::string roff_text(std::string_view text);

} // namespace cuedrill::tools
