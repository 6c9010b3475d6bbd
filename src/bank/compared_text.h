#pragma once

#include "platform/text_compare.h"

#include <string>
#include <string_view>

namespace cuedrill::bank {

/// Normalises a text so that it can be compared with what a text box returned: one kind of line end, NFC.
std::string comparable_text(std::string_view text, const platform::TextCompare& text_compare);

/// Whether two texts are equal after `comparable_text`, ignoring case.
bool same_text(std::string_view a, std::string_view b, const platform::TextCompare& text_compare);

/// The same for texts that differ in case, line ends or composed characters only.
std::string comparison_key(std::string_view text, const platform::TextCompare& text_compare);

} // namespace cuedrill::bank
