#pragma once

#include "exchange/decks/deck.h"
#include "exchange/decks/decoded_file.h"
#include "exchange/decks/table_format.h"
#include "exchange/decks/table_rows.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::decks {

/// A table in a text file: its rows are of one kind, whose fields have the names of the header.
///
/// A row without any text is skipped. One with fewer fields than names has empty texts for the others. One with more
/// gives the kind further fields if the table has no header; otherwise the rest of it is left out and told.
class TableDeck : public Deck {
public:
    /// Reads the beginning of the file.
    /// @param name of the file.
    /// @throws common::Error when the file cannot be read or the encoding is not usable.
    TableDeck(std::unique_ptr<platform::FileReading> file, const platform::TextConversions& conversions,
              const std::string& name, const TableOptions& options);

    [[nodiscard]] const TableFormat& format() const { return format_; }

    [[nodiscard]] const std::vector<Kind>& kinds() const override { return kinds_; }
    [[nodiscard]] Step step() override;
    [[nodiscard]] const Row& row() const override { return row_; }
    [[nodiscard]] std::optional<int> percent() const override { return file_.percent(); }
    [[nodiscard]] std::string left_out() const override;

private:
    [[nodiscard]] bool take(TableRow row);

    DecodedFile file_;
    TableFormat format_;
    TableRows rows_;
    std::vector<Kind> kinds_;
    Row row_;
    bool header_is_due_;
    bool header_was_said_;
    std::int64_t longer_rows_ = 0; ///< rows of which a part is left out
    std::int64_t first_longer_line_ = 0;
};

} // namespace cuedrill::decks
