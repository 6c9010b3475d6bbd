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

/// The line behind the last record of an exported file. It is no comment: an import takes it, behind three line ends,
/// for a part of the last answer.
inline constexpr std::string_view closing_line = "------------------------";

/// Finds the records that an import of the exported file would not give back as they are: it reads what is written as
/// the import does, with no more than a record in memory. That the last answer gets the closing line is left out where
/// the record can be stored with it.
class ReturnCheck {
public:
    explicit ReturnCheck(const platform::TextCompare& text_compare) : text_compare_(text_compare) {}

    /// Forgets all records.
    void restart();
    /// The next record of the file.
    /// @param lines what is written for it; the first line is the marker of the question.
    void add(const std::string& question, const std::string& answer, std::string_view lines);
    /// There are no more.
    /// @param lines what is written behind the last one.
    void finish(std::string_view lines);

    /// How many records would come back changed or not at all. Complete after `finish`.
    [[nodiscard]] std::int64_t changed() const { return changed_; }
    /// A line for each of them: its number in the file, the reasons and the question.
    [[nodiscard]] std::string lines() const { return lines_.text(); }

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

    // The record that was added last.
    std::int64_t number_ = 0;
    std::string question_;
    std::string answer_;
    bool is_joined_ = false; ///< its first marker has ended no answer and begun no question
    bool is_cut_ = false;    ///< a record has ended within its lines

    std::int64_t records_ = 0; ///< that have ended since, and that an import stores

    std::optional<ReadRecord> read_; ///< the record that ended last, in the form in which it is stored

    std::int64_t changed_ = 0;
    RecordLines lines_;
};

} // namespace cuedrill::exchange
