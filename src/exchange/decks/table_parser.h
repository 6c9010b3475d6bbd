#pragma once

#include "exchange/collected_text.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::decks {

/// The characters that a table is made of; '\0' for one that it does not have.
struct TableShape {
    char separator = ',';
    char quote = '"';
    char comment = '\0'; ///< a line that begins with it is skipped

    friend bool operator==(const TableShape&, const TableShape&) = default;
};

/// A row of a table.
struct TableRow {
    std::int64_t line = 1; ///< the line of the file in which it begins, counted from 1
    std::vector<std::string> fields{};
    bool has_more = false; ///< whether it has more fields than are kept
};

/// Quotation marks that begin a field and have no end.
struct UnclosedQuotes {
    std::int64_t count = 0;
    std::int64_t first_line = 0; ///< the line of the first one
};

/// Parses a table by the rules of RFC 4180 from a text that may be added in pieces of any size.
///
/// A field that begins with a quotation mark ends at the next one that is not doubled; separators and line ends between
/// them belong to the field, a doubled mark is a mark. CR LF, LF and CR end a line; inside a field each of them becomes
/// LF. Lines with nothing but blanks are skipped.
///
/// Every text has a result. A quotation mark inside a field that does not begin with one is an ordinary character. So
/// is a mark that begins a field if something else than a blank follows the closing mark, and if no closing mark
/// follows before the end of the text or within `longest_quoted` bytes: then the rows are read again from there. What
/// has to be read again has no further mark of that sort, so the time is linear in the text.
class TableParser {
public:
    /// Bytes that are kept of a field. No course can hold a text that long.
    static constexpr std::size_t most_kept = exchange::CollectedText::most_kept;
    /// Fields that are kept of a row.
    static constexpr std::size_t most_fields = 1000;
    /// Bytes within which a quoted field must end.
    static constexpr std::size_t longest_quoted = 262144;

    /// Receives each row. An exception from it passes through; do not use the parser after that.
    using Sink = std::function<void(TableRow row)>;

    /// @param first_line the number of the first line that is added.
    explicit TableParser(const TableShape& shape, std::int64_t first_line = 1) : shape_(shape), line_(first_line) {}

    /// Adds a piece of UTF-8, which need not end with a whole character. Calls `sink` for each completed row.
    void add(std::string_view text, const Sink& sink);

    /// Ends the text and completes the last row.
    void finish(const Sink& sink);

    [[nodiscard]] const UnclosedQuotes& unclosed() const { return unclosed_; }

    /// How many marks that begin a field were taken for ordinary characters, up to now.
    [[nodiscard]] std::int64_t read_again() const { return read_again_; }

private:
    enum class State {
        row_begins,
        field_begins,
        plain,         ///< in a field without quotation marks
        quoted,        ///< between the marks of a field
        mark,          ///< behind a mark that ends the field or is the first half of a doubled one
        behind_quoted, ///< behind the closing mark and a blank
        comment
    };

    void take(char c, const Sink& sink);
    void take_quoted(char c, const Sink& sink);
    void take_behind_mark(char c, const Sink& sink);
    void take_outside(char c, const Sink& sink);
    void begin_quoted();
    void read_again_unquoted(const Sink& sink);
    void read_again_unclosed(const Sink& sink);
    void keep(char c);
    void end_field();
    void end_line(const Sink& sink);

    TableShape shape_;
    State state_ = State::row_begins;
    bool after_cr_ = false; ///< whether a LF would be the second half of a line end
    std::int64_t line_;

    TableRow row_;
    std::string field_;
    bool field_was_quoted_ = false;

    std::string held_; ///< what follows the opening mark of the current field
    std::int64_t line_of_mark_ = 0;
    UnclosedQuotes unclosed_;
    std::int64_t read_again_ = 0;
};

} // namespace cuedrill::decks
