#pragma once

#include <string>
#include <string_view>

namespace cuedrill::decks {

/// `text` as the contents of an XML element. A line end of any kind becomes the number of its character, so that a
/// reader gets back the same bytes.
///
/// XML cannot hold most control characters, U+FFFE, U+FFFF, and bytes that are no UTF-8: each becomes U+FFFD.
/// @param replaced is set to true if there was such a character, and otherwise left as it is.
[[nodiscard]] std::string xml_escaped(std::string_view text, bool& replaced);

} // namespace cuedrill::decks
