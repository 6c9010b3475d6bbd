#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace cuedrill::exchange {

/// Text in code page Windows-1252 as UTF-8. Every byte gives one character: the five bytes that the code page leaves
/// open (81, 8D, 8F, 90, 9D) give the control character of the same number.
std::string code_page_1252_to_utf8(std::string_view bytes);

/// The bytes that `code_page_1252_to_utf8` turns into `text`. Nothing when a character has no byte (U+0080 is one), and
/// for text that is no well-formed UTF-8.
std::optional<std::string> utf8_to_code_page_1252(std::string_view text);

} // namespace cuedrill::exchange
