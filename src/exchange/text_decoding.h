#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace cuedrill::exchange {

/// The byte order mark of UTF-8.
inline constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";

/// How a text file is to be read.
struct TextFormat {
    bool utf8 = true;    ///< Windows-1252 otherwise
    bool marked = false; ///< whether it begins with the UTF-8 mark
    std::string_view line_end{};
};

/// Finds out the format of a text file from all of its bytes.
///
/// A file with the UTF-8 mark is UTF-8. A file without a mark is UTF-8 when all of it is well-formed, and Windows-1252
/// otherwise. CR LF ends a line; a lone CR or LF is an ordinary character then. In a file that holds no CR LF at all,
/// LF ends a line, and in one without any LF, CR. NUL characters do not count.
class TextSurvey {
public:
    /// The next bytes of the file.
    /// @throws common::Error when the file has a UTF-16 mark.
    void add(std::string bytes);

    /// The format of what was added.
    [[nodiscard]] TextFormat format() const;

private:
    void look_for_line_ends(std::string_view text);

    std::string beginning_; ///< as long as the longest mark
    std::string held_;      ///< the beginning of a character
    bool well_formed_ = true;
    bool ends_with_cr_ = false;
    bool has_cr_lf_ = false;
    bool has_lf_ = false;
    bool has_cr_ = false;
};

/// Brings the bytes of a text file to UTF-8, without byte order mark and without NUL characters. A byte that belongs to
/// no character becomes `unreadable_mark`.
class TextDecoder {
public:
    explicit TextDecoder(const TextFormat& format) : format_(format), skipped_(format.marked ? utf8_mark.size() : 0) {}

    /// The text of the next bytes of the file, in whole characters: the beginning of one is kept for the next time.
    [[nodiscard]] std::string decode(std::string bytes);
    /// The rest, at the end of the file.
    [[nodiscard]] std::string finish();

private:
    TextFormat format_;
    std::size_t skipped_; ///< bytes that are still to be left out
    std::string held_;    ///< the beginning of a character
};

/// Whether the survey takes bytes without a mark for UTF-8.
bool is_read_as_utf8(std::string bytes);

/// Cuts a text that comes in pieces into its lines.
class LineSplitter {
public:
    /// @param line_end CR LF, LF or CR.
    explicit LineSplitter(std::string_view line_end) : line_end_(line_end) {}

    /// More of the text: calls `text` for what lies between the line ends, and `end` for each of these.
    template <typename Text, typename End>
    void add(std::string piece, const Text& text, const End& end)
    {
        // A CR at the end may be half of a line end.
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

    /// The text is at its end: calls `text` for what was held back.
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
