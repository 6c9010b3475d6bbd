#include "exchange/decks/deck_fixture.h"

#include "common/errors.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>

namespace cuedrill::decks {

std::string MemoryFile::read(std::size_t most)
{
    if (reads_left_-- == 0)
        throw common::Error("The disk cannot be read.");
    std::string piece = bytes_.substr(std::min(at_, bytes_.size()), most);
    at_ += piece.size();
    return piece;
}

std::unique_ptr<platform::FileReading> file_of(std::string bytes)
{
    return std::make_unique<MemoryFile>(std::move(bytes));
}

std::vector<Row> rows_of(Deck& deck)
{
    std::vector<Row> rows;
    for (auto step = deck.step(); step != Deck::Step::end; step = deck.step()) {
        if (step != Deck::Step::row)
            continue;
        rows.push_back(deck.row());
        EXPECT_EQ(rows.back().texts.size(), deck.kinds().at(rows.back().kind).fields.size());
    }
    EXPECT_EQ(deck.step(), Deck::Step::end) << "it stays at its end";
    return rows;
}

std::vector<std::vector<std::string>> texts_of(const std::vector<Row>& rows)
{
    std::vector<std::vector<std::string>> texts;
    std::transform(rows.begin(), rows.end(), std::back_inserter(texts), [](const Row& row) { return row.texts; });
    return texts;
}

std::vector<std::string> places_of(const std::vector<Row>& rows)
{
    std::vector<std::string> places;
    std::transform(rows.begin(), rows.end(), std::back_inserter(places), [](const Row& row) { return row.place; });
    return places;
}

void expect_error(const std::function<void()>& action, std::string_view words)
{
    try {
        action();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const common::Error& error) {
        EXPECT_EQ(std::string_view(error.what()), words);
    }
}

} // namespace cuedrill::decks
