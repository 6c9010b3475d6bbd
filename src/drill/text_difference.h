#pragma once

#include "common/text.h"
#include "platform/text_compare.h"

#include <string_view>
#include <vector>

namespace cuedrill::drill {

/// The characters of two texts that the other one does not have at that place, as places in code points, each list in
/// order. What both have in common is as long as it can be, without regard to case. Texts with accents that are put
/// together in another way than usual have no characters to be compared one by one: then both lists are empty.
struct TextDifference {
    std::vector<common::TextRange> in_first;
    std::vector<common::TextRange> in_second;
};

TextDifference difference(std::string_view first, std::string_view second, const platform::TextCompare& text_compare);

} // namespace cuedrill::drill
