#pragma once

#include "platform/archive.h"

#include <cstddef>
#include <string>

namespace cuedrill::decks {

/// The database of a flashcard package, unpacked.
///
/// A package may hold several: a newer one in its own form, and an older one for older programs, which only asks to
/// update them. The newest that is there counts.
/// @param longest the most bytes that it may have.
/// @throws common::Error when there is none, or the package is of a later edition, damaged or cannot be read.
[[nodiscard]] std::string collection_of(platform::Archive& package, const platform::Archives& archives,
                                        std::size_t longest);

} // namespace cuedrill::decks
