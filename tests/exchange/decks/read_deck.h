#pragma once

#include "common/errors.h"
#include "exchange/decks/deck.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace cuedrill::decks {

/// All that a deck gives.
struct ReadDeck {
    std::vector<Kind> kinds{};
    std::vector<Row> rows{};
    std::string left_out{};
    std::string failure{}; ///< text of the error that ended the reading; empty if there was none
};

/// Reads a deck to its end or to an error. The deck may also fail when it is made.
inline ReadDeck read_deck(const std::function<std::unique_ptr<Deck>()>& make)
{
    ReadDeck result;
    std::unique_ptr<Deck> deck;
    try {
        deck = make();
        result.kinds = deck->kinds();
        for (Deck::Step step = deck->step(); step != Deck::Step::end; step = deck->step()) {
            if (step == Deck::Step::row)
                result.rows.push_back(deck->row());
        }
    } catch (const common::Error& error) {
        result.failure = error.what();
    }
    if (deck != nullptr)
        result.left_out = deck->left_out();
    return result;
}

/// The rows as lines: "entry 1: Norway | Oslo".
inline std::string lines_of(const std::vector<Row>& rows)
{
    std::string lines;
    for (const Row& row : rows) {
        lines += row.place + ":";
        for (std::size_t i = 0; i < row.texts.size(); ++i)
            lines += (i == 0 ? " " : " | ") + row.texts[i];
        lines += "\n";
    }
    return lines;
}

} // namespace cuedrill::decks
