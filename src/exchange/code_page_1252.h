#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace cuedrill::exchange {

/// Converts Windows-1252 to UTF-8. Every byte is converted: the five bytes that the code page leaves undefined (81, 8D,
/// 8F, 90, 9D) become the control character with the same number.
std::string code_page_1252_to_utf8(std::string_view bytes);

/// The inverse of `code_page_1252_to_utf8`. std::nullopt if a character has no byte (such as U+0080) or the text is not
/// well-formed UTF-8.
std::optional<std::string> utf8_to_code_page_1252(std::string_view text);

} // namespace cuedrill::exchange
