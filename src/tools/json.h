#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cuedrill::tools {

/// A text as JSON, with its quotes. Bytes that are not UTF-8 become replacement characters.
[[nodiscard]] std::string json_text(std::string_view text);

[[nodiscard]] std::string json_truth(bool value);

/// A list of values that are JSON already, on one line.
[[nodiscard]] std::string json_list(const std::vector<std::string>& values);

/// An object of names and values that are JSON already, on one line.
[[nodiscard]] std::string json_object(const std::vector<std::pair<std::string_view, std::string>>& members);

} // namespace cuedrill::tools
