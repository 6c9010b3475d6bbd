#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace cuedrill::exchange {

/// The byte order mark of UTF-8.
inline constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";

/// The contents of a text file as well-formed UTF-8, without byte order mark and without NUL characters.
///
/// A file with the UTF-8 mark is UTF-8; what is ill-formed in it becomes U+FFFD. A file without a mark is UTF-8 when
/// all of it is well-formed, and Windows-1252 otherwise.
/// @throws common::Error when the file has a UTF-16 mark.
std::string decode_text(std::string bytes);

/// Whether `decode_text` takes bytes without a mark for UTF-8.
bool is_read_as_utf8(std::string bytes);

/// Gives the lines of a text one by one, without their ends.
///
/// CR LF ends a line; a lone CR or LF is an ordinary character then. In a text that holds no CR LF at all, LF ends a
/// line. The last line need not be ended, and an end at the end of the text starts no further line.
class LineReader {
public:
    /// Requires that `text` outlives the reader and the lines it gives.
    explicit LineReader(std::string_view text);

    /// Nothing after the last line.
    std::optional<std::string_view> next();

private:
    std::string_view m_rest;
    std::string_view m_line_end;
};

} // namespace cuedrill::exchange
