#pragma once

#include "exchange/record_lines.h"
#include "platform/text_compare.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace cuedrill::exchange {

/// The line behind the last record of an exported file. It is no comment: an import takes it, behind three line ends,
/// for a part of the last answer.
inline constexpr std::string_view closing_line = "------------------------";

/// Finds the records that an import of the exported file would not give back as they are. That the last answer gets the
/// closing line is left out where the record can be stored with it.
class ReturnCheck {
public:
    explicit ReturnCheck(const platform::TextCompare& text_compare) : m_text_compare(text_compare) {}

    /// Forgets all records.
    void restart();
    /// The next record of the file.
    void add(const std::string& question, const std::string& answer);
    /// There are no more.
    void finish();

    /// How many records would come back changed or not at all. Complete after `finish`.
    [[nodiscard]] std::int64_t changed() const { return m_changed; }
    /// A line for each of them: its number in the file, the reasons and the question.
    [[nodiscard]] std::string lines() const { return m_lines.text(); }

private:
    void check(bool last);
    [[nodiscard]] std::string reasons(bool last) const;
    [[nodiscard]] bool is_in_normal_form(const std::string& text) const;

    const platform::TextCompare& m_text_compare;
    std::int64_t m_number = 0; ///< of the record that was added last
    std::string m_question;
    std::string m_answer;
    std::int64_t m_changed = 0;
    RecordLines m_lines;
};

} // namespace cuedrill::exchange
