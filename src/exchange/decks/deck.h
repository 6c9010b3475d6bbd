#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::decks {

/// Rows of one kind have the same fields: a table and a vocabulary have one kind, a deck has one for each note type.
struct Kind {
    std::string name{}; ///< "" where the file has only one kind and gives it no name
    /// Names of the fields in their order. A table without a header line has "1", "2" and so on.
    std::vector<std::string> fields{};
};

/// Makes names that occur twice different, without regard to the place in which they stand: "Word", "Word (2)".
[[nodiscard]] std::vector<std::string> different(std::vector<std::string> names);

/// A row of a deck.
struct Row {
    std::string place{};  ///< where it stands in the file, in words: "line 12", "note 7", "entry 3"
    std::size_t kind = 0; ///< its place in `Deck::kinds`
    /// A text for each field of its kind, as plain text in UTF-8 with LF or CR LF as line ends; a byte that could not
    /// be decoded is exchange::unreadable_mark.
    std::vector<std::string> texts{};
};

/// A file of another program, read as rows of fields one by one.
class Deck {
public:
    enum class Step {
        reading, ///< a piece was read
        row,     ///< `row` returns the next row
        end      ///< the end of the file is reached
    };

    Deck() = default;
    Deck(const Deck&) = delete;
    Deck& operator=(const Deck&) = delete;
    virtual ~Deck() = default;

    /// The kinds of rows. Known from the beginning, but for a table without header, whose only kind may get more fields
    /// while longer rows are met.
    [[nodiscard]] virtual const std::vector<Kind>& kinds() const = 0;

    /// Reads the next piece or returns the next row. A step takes milliseconds at most.
    /// @throws common::Error with the place when the file is damaged or cannot be read.
    [[nodiscard]] virtual Step step() = 0;

    /// The row that the last step returned.
    [[nodiscard]] virtual const Row& row() const = 0;

    /// How much of the file has been read, in percent; std::nullopt for a small file or where it is not known.
    [[nodiscard]] virtual std::optional<int> percent() const = 0;

    /// What the reader has left out up to now, one sentence in each line: "12 pictures and sounds were left out.";
    /// empty for nothing.
    [[nodiscard]] virtual std::string left_out() const = 0;
};

} // namespace cuedrill::decks
