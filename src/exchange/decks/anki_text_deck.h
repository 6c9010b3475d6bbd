#pragma once

#include "exchange/decks/deck.h"
#include "exchange/decks/decoded_file.h"
#include "exchange/decks/html_text.h"
#include "exchange/decks/table_rows.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::decks {

/// What the first lines of the text export of a flashcard program say.
struct AnkiTextHead {
    TableShape shape{.separator = '\t', .quote = '"', .comment = '#'};
    bool is_html = false;
    std::vector<std::string> columns{};       ///< names of all columns; empty if they are not told
    std::set<std::size_t> left_out{};         ///< columns with tags, deck and identifier, counted from 0
    std::optional<std::size_t> kind_column{}; ///< column with the name of the note type
    std::string kind{};                       ///< the note type of all rows; "" if it is not told
    std::size_t size = 0;                     ///< bytes of these lines
    std::int64_t lines = 0;                   ///< their number
};

/// Reads the lines at the beginning that start with "#" and have a key and a value: "#separator:tab".
///
/// "separator" is tab, comma, semicolon, space, pipe, colon or the character itself; "html" is true or false; "columns"
/// are names, separated like the rows; "tags column", "deck column", "guid column" and "notetype column" are numbers
/// from 1 on, "notetype" is a name. Other keys are skipped.
/// @throws common::Error with the line when a value is none of its key.
[[nodiscard]] AnkiTextHead read_anki_text_head(std::string_view text);

/// The notes of a flashcard program in its text export: a table whose first lines say how it is written. A kind of rows
/// is a note type; the columns with tags, deck, identifier and note type are no fields.
class AnkiTextDeck : public Deck {
public:
    /// More note types than a collection has. A file with more of them has something else in that column.
    static constexpr std::size_t most_kinds = 200;

    /// Reads the beginning of the file.
    /// @param encoding std::nullopt to find it out.
    /// @throws common::Error when the file cannot be read, or its first lines or the encoding are not usable.
    AnkiTextDeck(std::unique_ptr<platform::FileReading> file, const platform::TextConversions& conversions,
                 std::optional<Encoding> encoding);

    [[nodiscard]] char separator() const { return head_.shape.separator; }

    /// The kinds of the first 64 KiB. Further ones come at the end when they are met, with the same fields.
    [[nodiscard]] const std::vector<Kind>& kinds() const override { return kinds_; }
    /// @throws common::Error also with the line that has one note type too many.
    [[nodiscard]] Step step() override;
    [[nodiscard]] const Row& row() const override { return row_; }
    [[nodiscard]] std::optional<int> percent() const override { return file_.percent(); }
    [[nodiscard]] std::string left_out() const override;

private:
    void find_first_kinds();
    [[nodiscard]] std::size_t kind_of(const TableRow& row);
    void give_fields(std::size_t columns);
    void take(TableRow row);

    DecodedFile file_;
    AnkiTextHead head_;
    TableRows rows_;
    std::vector<std::string> fields_; ///< of each kind
    std::vector<Kind> kinds_;
    std::map<std::string, std::size_t, std::less<>> kind_places_; ///< places in `kinds_` by the names
    Row row_;
    HtmlLosses losses_;
};

} // namespace cuedrill::decks
