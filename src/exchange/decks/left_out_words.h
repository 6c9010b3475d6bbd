#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace cuedrill::decks {

/// A line about a number of things: "3 entries were left out." and a line end; empty for 0.
/// @param one stands behind "1 ".
/// @param more stands behind any other number and a blank.
[[nodiscard]] std::string count_line(std::int64_t count, std::string_view one, std::string_view more);

} // namespace cuedrill::decks
