#pragma once

#include "common/int16.h"
#include "platform/database.h"
#include "store/side_fields.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::bank {

/// Maximum number of lines of a list.
inline constexpr std::size_t longest_list = 10000;

/// Maximum size of a list's texts in bytes. Each record counts its listed text twice (as stored and in its line) and
/// the answer shown with it. Records of normal length never reach this.
inline constexpr std::size_t most_list_text = 64'000'000;

/// Separates question and answer in a line.
inline constexpr std::string_view answer_arrow = "  --->  ";

/// The records of a list in order: the text that lists each record, and its level on that text's side.
class ListLines {
public:
    /// @param beside size in bytes of the answer that its line shows as well.
    /// @throws common::OutOfRangeError when the list is full.
    void add(std::string text, common::Int16 score, std::size_t beside = 0);

    /// Whether a text of `text_size` bytes, with `beside` bytes of answer, stays within `most_list_text`.
    [[nodiscard]] bool has_room_for(std::size_t text_size, std::size_t beside = 0) const;

    /// Keeps only the first `count` records. Call it last: the counted size is not reduced.
    void cut(std::size_t count);

    [[nodiscard]] std::size_t list_count() const { return list_texts_.size(); }
    [[nodiscard]] bool full() const { return list_count() == longest_list; }
    [[nodiscard]] const std::string& text(std::size_t place) const { return list_texts_.at(place); }

    /// The line of a record: "02 - France?".
    [[nodiscard]] std::string line(std::size_t place) const;
    [[nodiscard]] std::vector<std::string> lines() const;

private:
    std::vector<std::string> list_texts_;
    std::vector<common::Int16> list_scores_;
    std::size_t size_ = 0; ///< bytes counted against most_list_text
};

/// The level of a row of `qa` on one side.
/// @throws common::OverflowError when it does not fit 16 bits
common::Int16 score_of(const platform::Recordset& row, const store::SideFields& side);

/// `text` with each CR LF replaced by a blank.
std::string in_one_line(std::string text);

/// The text that lists the record of a line: what follows the score, without the answer and the marks. A text that
/// itself contains "*" or "--->" is not recovered completely.
std::string text_of_line(std::string_view line);

/// `text` without any occurrence of `ch`.
std::string remove_char(std::string_view text, char ch);

} // namespace cuedrill::bank
