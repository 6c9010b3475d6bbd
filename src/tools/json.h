#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::tools {

/// A text as JSON, with its quotes. Bytes that are not UTF-8 become replacement characters.
[[nodiscard]] std::string json_text(std::string_view text);

/// A list of values that are JSON already, on one line.
[[nodiscard]] std::string json_list(const std::vector<std::string>& values);

} // namespace cuedrill::tools
