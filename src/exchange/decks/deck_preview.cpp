#include "exchange/decks/deck_preview.h"

#include <algorithm>
#include <map>

namespace cuedrill::decks {
namespace {

using TextsByName = std::map<std::string, std::string>;

TextsByName texts_of(const Row& row, const Kind& kind)
{
    TextsByName texts;
    for (std::size_t i = 0; i < std::min(row.texts.size(), kind.fields.size()); ++i)
        texts.emplace(kind.fields[i], row.texts[i]);
    return texts;
}

std::vector<std::string> names_of(const std::vector<Kind>& kinds)
{
    std::vector<std::string> names;
    for (const Kind& kind : kinds) {
        for (const std::string& field : kind.fields) {
            if (std::find(names.begin(), names.end(), field) == names.end())
                names.push_back(field);
        }
    }
    return names;
}

} // namespace

DeckPreview preview_of(Deck& deck, std::size_t most)
{
    std::vector<TextsByName> rows;
    while (rows.size() < most) {
        const Deck::Step found = deck.step();
        if (found == Deck::Step::end)
            break;
        if (found == Deck::Step::row)
            rows.push_back(texts_of(deck.row(), deck.kinds().at(deck.row().kind)));
    }
    // Only now: the rows of a table without header tell how many fields there are.
    DeckPreview preview{.names = names_of(deck.kinds())};
    for (const TextsByName& row : rows) {
        std::vector<std::string>& texts = preview.rows.emplace_back();
        for (const std::string& name : preview.names) {
            const auto found = row.find(name);
            texts.push_back(found == row.end() ? std::string() : found->second);
        }
    }
    return preview;
}

} // namespace cuedrill::decks
