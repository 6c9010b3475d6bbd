#pragma once

#include "exchange/decks/deck.h"

#include <cstddef>
#include <string>
#include <vector>

namespace cuedrill::decks {

/// The beginning of a deck, to let somebody choose its fields.
struct DeckPreview {
    std::vector<std::string> names{};             ///< of the fields of all kinds, each once
    std::vector<std::vector<std::string>> rows{}; ///< a text for each name; "" where the row has no such field
};

/// Reads the first rows of a deck.
/// @param most how many rows at most.
/// @throws common::Error as `Deck::step`.
[[nodiscard]] DeckPreview preview_of(Deck& deck, std::size_t most);

} // namespace cuedrill::decks
