#pragma once

#include "store/records.h"

#include <string>
#include <vector>

namespace cuedrill::torture {

/// The records of a question text, read as an import reads them.
/// @throws common::Error when the text is not one.
[[nodiscard]] std::vector<store::QaTexts> records_in(const std::string& question_text);

} // namespace cuedrill::torture
