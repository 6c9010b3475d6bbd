#pragma once

#include "exchange/decks/deck.h"
#include "exchange/record_source.h"
#include "platform/text_compare.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::decks {

/// The fields of a row that make a record: names, in either case, or numbers counted from 1. A name comes first where a
/// field has a number as its name.
struct FieldChoice {
    std::string question{};
    std::string answer{};
};

/// The choice as it is written: two names or numbers with a comma between them.
/// @throws common::Error when the text is something else.
[[nodiscard]] FieldChoice field_choice(std::string_view text);

/// How rows become records.
struct RecordChoice {
    std::optional<FieldChoice> fields{}; ///< std::nullopt for the first two fields of each kind
    bool truncate = false; ///< cut texts to the characters that a course holds; otherwise the import refuses them
};

/// Cuts a text to the characters that a course holds.
/// @return whether anything was cut.
bool cut_to_course(exchange::ReadText& text, const platform::TextCompare& text_compare);

/// The line that says how many texts were cut; empty for none.
[[nodiscard]] std::string cut_words(std::int64_t texts);

/// The records of a deck.
///
/// Texts are trimmed like those of a question text, and their line breaks become CR LF. A row whose kind has not the
/// two fields is left out and counted. One whose fields are all empty is skipped. The number of a record counts the
/// others.
class DeckRecords : public exchange::RecordSource {
public:
    /// @param looked_for what a record is in that file, for `nothing_found`: "rows with two fields separated by ;".
    DeckRecords(std::unique_ptr<Deck> deck, std::string looked_for, const platform::TextCompare& text_compare,
                RecordChoice choice = {});

    [[nodiscard]] Step step() override;
    [[nodiscard]] const exchange::ReadRecord& record() const override { return record_; }
    [[nodiscard]] bool has_question() const override { return record_.number != 0; }
    [[nodiscard]] std::optional<int> percent() const override { return deck_->percent(); }
    [[nodiscard]] std::string nothing_found() const override;
    [[nodiscard]] std::string left_out() const override;

private:
    /// Places of the two fields in a row.
    struct Places {
        std::size_t question = 0;
        std::size_t answer = 0;
    };

    [[nodiscard]] bool take(const Row& row);
    [[nodiscard]] std::optional<Places> places_in(const Kind& kind) const;
    [[nodiscard]] std::optional<std::size_t> place_of_field(const std::string& field, const Kind& kind) const;
    [[nodiscard]] exchange::ReadText read(std::string_view text);

    std::unique_ptr<Deck> deck_;
    std::string looked_for_;
    const platform::TextCompare& text_compare_;
    RecordChoice choice_;
    exchange::ReadRecord record_;
    std::int64_t without_fields_ = 0;  ///< rows left out
    std::string first_without_fields_; ///< place of the first one
    std::int64_t cut_texts_ = 0;
};

} // namespace cuedrill::decks
