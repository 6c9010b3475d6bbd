#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace cuedrill::exchange {

/// `text` without blanks, TABs and CR LF pairs at both ends. Trimming stops at a lone CR or LF.
std::string_view trim_exchange_text(std::string_view text);

/// Marks unreadable bytes in a text while it is being read: a byte that never occurs in UTF-8.
inline constexpr char unreadable_mark = '\xFF';

/// A question or an answer as read from a file, trimmed.
struct ReadText {
    std::string text{};         ///< well-formed UTF-8, with U+FFFD for each character that could not be read
    std::size_t cut_off = 0;    ///< number of characters dropped from the end; 0 for a text of normal length
    std::size_t unreadable = 0; ///< number of unreadable characters in the whole text
};

/// Collects a question or an answer from the pieces in which it is read, and trims it. Of a text far longer than a
/// course can hold, only the beginning is kept; the rest is counted.
class CollectedText {
public:
    /// Bytes of a text that are kept.
    static constexpr std::size_t most_kept = 65536;

    /// Adds whole characters, without any CR LF.
    void add(std::string_view text);
    /// Adds CR LF.
    void add_line_end();
    /// Returns the collected text and clears the object.
    [[nodiscard]] ReadText take();

private:
    void count(std::string_view text);

    std::string kept_;           ///< starts with a character that is not trimmed
    bool full_ = false;          ///< whether the limit is reached
    std::size_t cut_off_ = 0;    ///< characters after the kept ones, up to the last one that is not trimmed
    std::size_t white_ = 0;      ///< white-space characters after those
    std::size_t unreadable_ = 0; ///< unreadable characters among the dropped ones
};

} // namespace cuedrill::exchange
