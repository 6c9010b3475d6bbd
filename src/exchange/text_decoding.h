#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace cuedrill::exchange {

/// The byte order mark of UTF-8.
inline constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";

/// Encoding and line ends of a text file.
struct TextFormat {
    bool utf8 = true;    ///< otherwise Windows-1252
    bool marked = false; ///< whether it begins with the UTF-8 byte order mark
    std::string_view line_end{};
};

/// Detects the format of a text file from all of its bytes.
///
/// A file with the UTF-8 mark is UTF-8. Without a mark it is UTF-8 if all of it is well-formed, otherwise Windows-1252.
/// If the file contains CR LF, that is the line end, and a lone CR or LF is an ordinary character. Without CR LF, LF is
/// the line end; without LF, CR is. NUL characters are ignored.
class TextSurvey {
public:
    /// Adds the next bytes of the file.
    /// @throws common::Error when the file has a UTF-16 mark.
    void add(std::string bytes);

    /// The format of the bytes added so far.
    [[nodiscard]] TextFormat format() const;

private:
    void look_for_line_ends(std::string_view text);

    std::string beginning_; ///< the first bytes, as many as the longest mark has
    std::string held_;      ///< an incomplete character
    bool well_formed_ = true;
    bool ends_with_cr_ = false;
    bool has_cr_lf_ = false;
    bool has_lf_ = false;
    bool has_cr_ = false;
};

/// Converts the bytes of a text file to UTF-8 without byte order mark and NUL characters. A byte that belongs to no
/// character becomes `unreadable_mark`.
class TextDecoder {
public:
    explicit TextDecoder(const TextFormat& format) : format_(format), skipped_(format.marked ? utf8_mark.size() : 0) {}

    /// Decodes the next bytes of the file. An incomplete character at the end is kept for the next call.
    [[nodiscard]] std::string decode(std::string bytes);
    /// Decodes the rest, at the end of the file.
    [[nodiscard]] std::string finish();

private:
    TextFormat format_;
    std::size_t skipped_; ///< bytes of the mark still to be skipped
    std::string held_;    ///< an incomplete character
};

/// `text` without an incomplete UTF-8 sequence at its end.
std::string_view without_begun_sequence(std::string_view text);

/// Whether `TextSurvey` takes these bytes, without a mark, for UTF-8.
bool is_read_as_utf8(std::string bytes);

/// Splits a text that comes in pieces into lines.
class LineSplitter {
public:
    /// @param line_end CR LF, LF or CR.
    explicit LineSplitter(std::string_view line_end) : line_end_(line_end) {}

    /// Adds a piece: calls `text` for each part between line ends, and `end` for each line end.
    template <typename Text, typename End>
    void add(std::string piece, const Text& text, const End& end)
    {
        // A CR at the end may be the first half of a CR LF.
        if (cr_held_)
            piece.insert(0, 1, '\r');
        cr_held_ = line_end_.size() > 1 && piece.ends_with('\r');
        if (cr_held_)
            piece.pop_back();
        std::string_view rest = piece;
        for (std::size_t at = rest.find(line_end_); at != std::string_view::npos; at = rest.find(line_end_)) {
            text(rest.substr(0, at));
            end();
            rest.remove_prefix(at + line_end_.size());
        }
        if (!rest.empty())
            text(rest);
    }

    /// Ends the text: calls `text` for what was held back.
    template <typename Text>
    void finish(const Text& text)
    {
        if (cr_held_)
            text(std::string_view("\r"));
        cr_held_ = false;
    }

private:
    std::string_view line_end_;
    bool cr_held_ = false;
};

} // namespace cuedrill::exchange
