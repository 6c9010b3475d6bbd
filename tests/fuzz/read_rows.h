#pragma once

#include "common/errors.h"
#include "common/text.h"
#include "exchange/collected_text.h"
#include "exchange/decks/deck.h"
#include "fuzz/fuzzing.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace cuedrill::fuzz {

/// What a deck has given.
struct Reading {
    std::vector<decks::Row> rows{};
    std::string left_out{};
    std::string refusal{};
};

inline bool same(const Reading& a, const Reading& b)
{
    return a.refusal == b.refusal && a.left_out == b.left_out &&
           std::equal(a.rows.begin(), a.rows.end(), b.rows.begin(), b.rows.end(),
                      [](const decks::Row& x, const decks::Row& y) {
                          return x.place == y.place && x.kind == y.kind && x.texts == y.texts;
                      });
}

/// Reads a deck to its end and checks what it promises of its rows.
inline Reading read(const std::function<std::unique_ptr<decks::Deck>()>& make)
{
    Reading result;
    try {
        const std::unique_ptr<decks::Deck> deck = make();
        for (decks::Deck::Step step = deck->step(); step != decks::Deck::Step::end; step = deck->step()) {
            const int percent = deck->percent().value_or(0);
            require(percent >= 0 && percent <= 100, "a percentage is one");
            if (step != decks::Deck::Step::row)
                continue;
            const decks::Row& row = deck->row();
            require(row.kind < deck->kinds().size(), "a row is of a kind of the deck");
            require(row.texts.size() == deck->kinds()[row.kind].fields.size(), "a row has a text for each field");
            for (std::string text : row.texts) {
                std::erase(text, exchange::unreadable_mark);
                require(common::is_utf8(text), "a text is valid UTF-8 but for the marks");
            }
            result.rows.push_back(row);
        }
        result.left_out = deck->left_out();
    } catch (const common::Error& error) {
        result.refusal = error.what();
        require(!result.refusal.empty(), "an error has a text");
    }
    return result;
}

} // namespace cuedrill::fuzz
