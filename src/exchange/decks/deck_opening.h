#pragma once

#include "exchange/decks/deck.h"
#include "exchange/decks/table_format.h"
#include "platform/archive.h"
#include "platform/files.h"
#include "platform/foreign_tables.h"
#include "platform/text_conversions.h"
#include "platform/xml.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::decks {

/// Whether the name of a file is that of a deck, in either case of the letters. A ".txt" is not: it is a question text
/// unless a format is asked for.
[[nodiscard]] bool is_deck_name(std::string_view path);

/// The names of the formats, for the user.
[[nodiscard]] std::vector<std::string> deck_formats();

/// What the user says about a deck.
struct DeckOptions {
    std::optional<std::string> format{}; ///< one of `deck_formats`; std::nullopt for the one of the file's name
    TableOptions table{};                ///< for a text export, only the encoding counts
};

/// What the readers of the formats need of the platform.
struct DeckTools {
    const platform::TextConversions& conversions;
    const platform::Archives& archives;
    const platform::ForeignDatabases& databases;
    const platform::Xml& xml;
};

/// A deck, and what a record is in it, as DeckRecords takes it.
struct OpenedDeck {
    std::unique_ptr<Deck> deck{};
    std::string looked_for{};
};

/// Opens the file at `path` and reads its beginning; of a package, its whole collection.
/// @param tools are used as long as the deck.
/// @throws common::Error when the file cannot be read, is damaged or too long, or when there is no such format.
[[nodiscard]] OpenedDeck open_deck(const std::string& path, const DeckOptions& options, const platform::Files& files,
                                   const DeckTools& tools);

} // namespace cuedrill::decks
