#pragma once

#include "exchange/importer.h"

#include <string>

namespace cuedrill::exchange {

/// That the record is not stored, and why.
[[nodiscard]] std::string empty_words(const EmptyRecord& record);

/// What is told at the end of an import.
[[nodiscard]] std::string end_words(const Progress& progress);
/// The further lines with it, about a file in which no question was found; nothing for another one.
[[nodiscard]] std::string end_details(const Progress& progress);

/// What is told of an import that an error has stopped.
/// @param reason the words of the error.
[[nodiscard]] std::string stop_words(const std::string& reason, const Progress& progress);

} // namespace cuedrill::exchange
