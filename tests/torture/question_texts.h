#pragma once

#include "store/records.h"

#include <string>
#include <vector>

namespace cuedrill::torture {

/// The records of a question text, read as an import reads them.
/// @throws common::Error when the text is not one.
[[nodiscard]] std::vector<store::QaTexts> records_in(const std::string& question_text);

/// The texts in the whole entries of a "removed.txt" or of a draft. What follows the last whole one was being appended.
/// Where a power cut has left the end of an entry without its beginning, each entry is read by itself: an import would
/// read that end as a part of the answer before it.
/// @throws common::Error when there are entries, but no mark before them.
[[nodiscard]] std::vector<store::QaTexts> kept_in(const std::string& entries);

} // namespace cuedrill::torture
