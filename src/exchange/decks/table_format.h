#pragma once

#include "exchange/decks/encodings.h"
#include "exchange/decks/table_parser.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::decks {

/// What the user says about a table; the rest is found out.
struct TableOptions {
    std::optional<char> separator{};
    std::optional<char> quote{}; ///< '\0' for a table in which quotation marks are ordinary characters
    std::optional<bool> has_header{};
    std::optional<Encoding> encoding{};
};

/// How a table is written.
struct TableFormat {
    TableShape shape{};
    bool has_header = false;
    std::size_t skipped = 0;     ///< bytes at the beginning of the text that belong to no row
    std::int64_t first_line = 1; ///< the number of the line behind them
    /// Names of the fields: those of the header, otherwise "1", "2" and so on for the longest row of the sample.
    std::vector<std::string> names{};
};

/// Finds out how a table is written.
///
/// A first line "sep=;" names the separator. Otherwise it is the one of TAB, semicolon, "|" and comma with which the
/// most rows have the same number of fields, at least two; where several are as good, the one with
/// which the most quotation marks quote something, and then the first of them, because a
/// comma in each text is more probable than a semicolon. A table without any of them has commas. For a name that ends
/// in ".tsv" or ".tab" it is TAB if any row has one, or no other separator.
///
/// The first row is a header if its fields are at least two, all different, none of them empty, longer than 40
/// characters or a question, and
///   - at least two of them are usual names of fields in one language, such as "question" and "answer" or "Vorderseite"
///     and "Rückseite"; or
///   - a field that is no number in the first row is one in all the others, of which there are at least three.
///
/// @param sample the beginning of the text.
/// @param is_whole whether that is all of it; otherwise its last row is not regarded.
/// @param name of the file.
[[nodiscard]] TableFormat recognise_table(std::string_view sample, bool is_whole, std::string_view name,
                                          const TableOptions& options);

/// A separator as the user is told: TAB, blank, or the character itself.
[[nodiscard]] std::string name_of_separator(char separator);

/// The names "1", "2" and so on up to `count`, for fields without names.
[[nodiscard]] std::vector<std::string> numbers_as_names(std::size_t count);

/// The fields of a header as names: without blanks at the ends, on one line; an empty one gets its number.
[[nodiscard]] std::vector<std::string> names_of_header(const std::vector<std::string>& fields);

} // namespace cuedrill::decks
