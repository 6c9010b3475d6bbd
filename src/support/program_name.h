#pragma once

#include <string_view>

namespace cuedrill::support {

/// The program's name within a text.
inline constexpr std::string_view program_name = "Cuedrill";

/// The program's name as a heading.
inline constexpr std::string_view program_title = "CUEDRILL";

} // namespace cuedrill::support
