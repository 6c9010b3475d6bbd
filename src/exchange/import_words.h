#pragma once

#include "exchange/importer.h"

#include <string>

namespace cuedrill::exchange {

/// The message that a record is not stored, with the reason.
[[nodiscard]] std::string empty_words(const EmptyRecord& record);

/// The message at the end of an import.
[[nodiscard]] std::string end_words(const Progress& progress);
/// Further lines of that message: what was looked for if nothing was found, and what was left out; empty for neither.
[[nodiscard]] std::string end_details(const Importer& importer);

/// The message about an import that stopped with an error.
/// @param reason the text of the error.
[[nodiscard]] std::string stop_words(const std::string& reason, const Progress& progress);

} // namespace cuedrill::exchange
