#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::platform::sqlite {

/// A pattern for whole texts: "*" stands for any run of characters, none and line ends included; "?" for one character;
/// "#" for one digit; "[abx-z]" for one of these characters, "[!abx-z]" for one that is none of them. "[]" stands for
/// nothing, "[!]" for "!". "-" is ordinary first and last in brackets; "*", "?", "#" and "[" are ordinary in brackets,
/// "]", "!" and "-" outside of them; so is every other character anywhere. Case counts: pattern and texts are folded
/// beforehand.
class LikePattern {
public:
    /// @param folded the pattern in UTF-8.
    /// @param shown the pattern as error texts name it.
    /// @throws DatabaseError (other) for a "[" that is not closed, and for a range whose end lies before its beginning.
    LikePattern(std::string_view folded, std::string_view shown);

    /// Whether the pattern stands for the whole of `folded`, a text in UTF-8. Takes no longer than reading the text
    /// once for each character of the pattern.
    [[nodiscard]] bool matches(std::string_view folded) const;

private:
    /// The bytes of a character in UTF-8 as one number. These sort as the code points do.
    using Character = char32_t;

    struct Range {
        Character first;
        Character last;
    };

    enum class Kind { run, characters, one_of, none_of };

    /// Any run, these characters in a row, or one character in or outside of the ranges.
    struct Element {
        Kind kind = Kind::run;
        std::string characters = {};
        std::vector<Range> ranges = {};

        /// Takes away what the element stands for at the start of `text`; false where it does not stand for that.
        bool take_from(std::string_view& text) const;
        /// Takes away what surely lies before the element; false where it stands for nothing in `text`.
        bool skip_to(std::string_view& text) const;
    };

    static Character take(std::string_view& text);
    void add_list(std::string_view list, std::string_view shown);

    std::vector<Element> elements_;
};

} // namespace cuedrill::platform::sqlite
