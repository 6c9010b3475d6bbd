#pragma once

#include "common/int16.h"
#include "platform/database.h"
#include "store/side_fields.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::bank {

/// The most lines of a list.
inline constexpr std::size_t longest_list = 10000;

/// The most text of a list, in bytes: of each record the text that it is listed by, once as it is and once as its line,
/// and the answer beside it. Records of the length that a course gives them never come near.
inline constexpr std::size_t most_list_text = 64'000'000;

/// What stands in front of the answer in a line.
inline constexpr std::string_view answer_arrow = "  --->  ";

/// The records of a list, in its order: of each the text that it is listed by, and its level on that text's side.
class ListLines {
public:
    /// @param beside bytes that will stand beside the text in its line.
    /// @throws common::OutOfRangeError when the list is full.
    void add(std::string text, common::Int16 score, std::size_t beside = 0);

    /// Whether a text of so many bytes does not make the list hold too much text.
    [[nodiscard]] bool has_room_for(std::size_t text_size, std::size_t beside = 0) const;

    /// Keeps the first `count` records only; to be done last.
    void cut(std::size_t count);

    [[nodiscard]] std::size_t list_count() const { return list_texts_.size(); }
    [[nodiscard]] bool full() const { return list_count() == longest_list; }
    [[nodiscard]] const std::string& text(std::size_t place) const { return list_texts_.at(place); }

    /// The line of a record: "02 - France?".
    [[nodiscard]] std::string line(std::size_t place) const;
    /// All lines.
    [[nodiscard]] std::vector<std::string> lines() const;

private:
    std::vector<std::string> list_texts_;
    std::vector<common::Int16> list_scores_;
    std::size_t size_ = 0; ///< bytes of the texts and lines
};

/// The level of a row of `qa` on one side.
/// @throws common::OverflowError when it does not fit 16 bits
common::Int16 score_of(const platform::Recordset& row, const store::SideFields& side);

/// `text` with each CR LF as one blank.
std::string in_one_line(std::string text);

/// The text that a line lists its record by: what stands behind the score, without an answer and without marks. A text
/// that holds "*" or "--->" itself does not come back whole.
std::string text_of_line(std::string_view line);

/// `text` without any occurrence of `ch`.
std::string remove_char(std::string_view text, char ch);

} // namespace cuedrill::bank
