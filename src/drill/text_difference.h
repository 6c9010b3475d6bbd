#pragma once

#include "common/text.h"
#include "platform/text_compare.h"

#include <string_view>
#include <vector>

namespace cuedrill::drill {

/// The characters in which two texts differ: for each text, the ranges that are not part of a longest common
/// subsequence, in code points and in order. Case is ignored. Both lists are empty if a text is not in NFC, because
/// accented letters in another form cannot be compared one by one, and if a text is too long to be compared.
struct TextDifference {
    std::vector<common::TextRange> in_first;
    std::vector<common::TextRange> in_second;
};

TextDifference difference(std::string_view first, std::string_view second, const platform::TextCompare& text_compare);

} // namespace cuedrill::drill
