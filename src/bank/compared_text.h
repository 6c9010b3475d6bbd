#pragma once

#include "platform/text_compare.h"

#include <string>
#include <string_view>

namespace cuedrill::bank {

/// A text in the form in which it can be compared with one that a text box has given back: with one kind of line end,
/// and its accents put together.
std::string comparable_text(std::string_view text, const platform::TextCompare& text_compare);

/// Whether two texts are the same in that form, without regard to case.
bool same_text(std::string_view a, std::string_view b, const platform::TextCompare& text_compare);

} // namespace cuedrill::bank
