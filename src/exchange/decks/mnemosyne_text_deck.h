#pragma once

#include "exchange/decks/deck.h"
#include "exchange/decks/decoded_file.h"
#include "exchange/decks/html_text.h"
#include "exchange/decks/table_rows.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::decks {

/// The cards of a flashcard program in its text export. A line has a question and its answer, or a word, its
/// pronunciation and its meaning, separated by TABs. Quotation marks are ordinary characters. A line break in a text is
/// "\n" or a tag of HTML; other tags are dropped.
///
/// The fields of a word are in the order word, meaning, pronunciation, because the meaning is what is asked for. Lines
/// with one text or with more than three are left out and told.
class MnemosyneTextDeck : public Deck {
public:
    /// Reads the beginning of the file.
    /// @param encoding std::nullopt to find it out.
    /// @throws common::Error when the file cannot be read or the encoding is not usable.
    MnemosyneTextDeck(std::unique_ptr<platform::FileReading> file, const platform::TextConversions& conversions,
                      std::optional<Encoding> encoding);

    [[nodiscard]] const std::vector<Kind>& kinds() const override { return kinds_; }
    [[nodiscard]] Step step() override;
    [[nodiscard]] const Row& row() const override { return row_; }
    [[nodiscard]] std::optional<int> percent() const override { return file_.percent(); }
    [[nodiscard]] std::string left_out() const override;

private:
    [[nodiscard]] bool take(const TableRow& row);

    DecodedFile file_;
    TableRows rows_;
    std::vector<Kind> kinds_;
    Row row_;
    HtmlLosses losses_;
    std::int64_t other_lines_ = 0;
    std::int64_t first_other_line_ = 0;
};

} // namespace cuedrill::decks
