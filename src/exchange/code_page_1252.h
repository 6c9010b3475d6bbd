#pragma once

#include <string>
#include <string_view>

namespace cuedrill::exchange {

/// Text in code page Windows-1252 as UTF-8. Every byte gives one character: the five bytes that the code page leaves
/// open (81, 8D, 8F, 90, 9D) give the control character of the same number.
std::string code_page_1252_to_utf8(std::string_view bytes);

} // namespace cuedrill::exchange
