#pragma once

#include "common/text.h"
#include "exchange/question_text.h"
#include "exchange/record_lines.h"
#include "exchange/text_decoding.h"
#include "platform/text_compare.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace cuedrill::exchange {

/// The line after the last record of an exported file. It is not a comment: an import reads it, after three line ends,
/// as part of the last answer.
inline constexpr std::string_view closing_line = "------------------------";

/// Finds the records that an import of the exported file would not restore unchanged. It parses what is written, as the
/// import does, with only one record in memory. The last answer gains the closing line; that alone does not count as a
/// change, unless the record becomes too long to be stored.
class ReturnCheck {
public:
    explicit ReturnCheck(const platform::TextCompare& text_compare) : text_compare_(text_compare) {}

    /// Forgets all records.
    void restart();
    /// Adds the next record of the file.
    /// @param lines what is written for it; the first line is the marker of the question.
    void add(const std::string& question, const std::string& answer, std::string_view lines);
    /// Ends the file.
    /// @param lines what is written after the last record.
    void finish(std::string_view lines);

    /// How many records would come back changed or not at all. Final after `finish`.
    [[nodiscard]] std::int64_t changed() const { return changed_; }
    /// A line for each of these records: its number in the file, the reasons and the question.
    [[nodiscard]] std::string lines() const { return lines_.text(); }

    /// What an import would change about the record before the one added last, in sentences; empty if nothing.
    [[nodiscard]] const std::string& reasons_before_last() const { return reasons_; }
    /// Whether the record added last would become part of the one before.
    [[nodiscard]] bool last_is_joined() const { return is_joined_; }

private:
    void read(std::string_view lines);
    void take(ReadRecord record);
    void check(bool last);
    [[nodiscard]] bool comes_back(bool last) const;
    [[nodiscard]] std::string reasons(bool last) const;
    [[nodiscard]] bool is_in_normal_form(const std::string& text) const;

    const platform::TextCompare& text_compare_;
    LineSplitter lines_read_{common::cr_lf};
    QuestionTextReader reader_;

    // The current record, added last.
    std::int64_t number_ = 0;
    std::string question_;
    std::string answer_;
    bool is_joined_ = false; ///< its first marker neither ended an answer nor began a question
    bool is_cut_ = false;    ///< a record ended within its lines

    std::int64_t records_ = 0; ///< records read since then that an import would store

    std::optional<ReadRecord> read_; ///< the record read last, in the form in which it is stored

    std::int64_t changed_ = 0;
    RecordLines lines_;
    std::string reasons_; ///< for the record checked last; empty if it comes back
};

} // namespace cuedrill::exchange
