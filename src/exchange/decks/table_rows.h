#pragma once

#include "exchange/decks/decoded_file.h"
#include "exchange/decks/table_parser.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>

namespace cuedrill::decks {

/// The rows of a table in a text file, one by one.
class TableRows {
public:
    /// @param skipped bytes at the beginning of the text that belong to no row.
    /// @param first_line the number of the line behind them.
    TableRows(DecodedFile& file, const TableShape& shape, std::size_t skipped, std::int64_t first_line)
        : file_(file), parser_(shape, first_line), skipped_(skipped)
    {
    }
    TableRows(const TableRows&) = delete;
    TableRows& operator=(const TableRows&) = delete;

    /// The next row, or std::nullopt after a piece of the file was read and at the end.
    /// @throws common::Error when the file cannot be read.
    [[nodiscard]] std::optional<TableRow> next();

    /// Whether there are no further rows.
    [[nodiscard]] bool at_end() const { return at_end_ && found_.empty(); }

    /// What the parser had to take for something else than it looks, in sentences with line ends; empty for nothing.
    [[nodiscard]] std::string left_out() const;

private:
    void read();

    DecodedFile& file_;
    TableParser parser_;
    std::size_t skipped_;        ///< bytes still to be skipped
    std::deque<TableRow> found_; ///< rows of the piece read last
    bool at_end_ = false;
};

/// The place of a row, as Row::place has it.
[[nodiscard]] std::string place_of(const TableRow& row);

} // namespace cuedrill::decks
