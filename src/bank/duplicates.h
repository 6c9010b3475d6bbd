#pragma once

#include "platform/text_compare.h"
#include "store/course.h"
#include "store/records.h"

#include <vector>

namespace cuedrill::bank {

/// Records that have the same text on one side, in the order of their numbers; at least two.
using SameTexts = std::vector<store::QaRecord>;

/// Finds the records that share a text.
/// @param column "q" or "a". Texts that differ in case, line ends or composed characters only are the same.
/// @return in the order of the lowest number of each group.
/// @throws platform::DatabaseError
[[nodiscard]] std::vector<SameTexts> find_duplicates(platform::Database& database, const std::string& column,
                                                     const platform::TextCompare& text_compare);

} // namespace cuedrill::bank
