#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace cuedrill::exchange {

/// `text` without the blanks, TABs and CR LF pairs at both ends. A lone CR or LF stays, and keeps what lies within.
std::string_view trim_exchange_text(std::string_view text);

/// Stands in a text that is being read where the file holds bytes that are no character: a byte that UTF-8 never has.
inline constexpr char unreadable_mark = '\xFF';

/// A question or an answer as a file has it, trimmed.
struct ReadText {
    std::string text{};         ///< well-formed UTF-8, U+FFFD in place of what could not be read
    std::size_t cut_off = 0;    ///< how many characters follow in the file; a text of usual length is whole
    std::size_t unreadable = 0; ///< how many characters of the whole text could not be read
};

/// Collects a question or an answer from the pieces in which it is read, and trims it. Of a text that is far longer
/// than any that a course takes, only the beginning is kept and the rest is counted.
class CollectedText {
public:
    /// What is longer, in bytes, is cut off.
    static constexpr std::size_t most_kept = 65536;

    /// Adds whole characters, none of which is part of a CR LF.
    void add(std::string_view text);
    /// Adds CR LF.
    void add_line_end();
    /// The text that was added; the object is empty again.
    [[nodiscard]] ReadText take();

private:
    void count(std::string_view text);

    std::string kept_;           ///< begins with a character that is not trimmed
    bool full_ = false;          ///< nothing more is kept
    std::size_t cut_off_ = 0;    ///< characters behind those, up to the last one that is not trimmed
    std::size_t white_ = 0;      ///< characters behind those
    std::size_t unreadable_ = 0; ///< of those that are not kept
};

} // namespace cuedrill::exchange
