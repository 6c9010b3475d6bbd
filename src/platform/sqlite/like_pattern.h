#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::platform::sqlite {

/// A pattern that is matched against a whole text. "*" matches any run of characters, including line ends and the empty
/// run; "?" matches one character; "#" one digit from 0 to 9; "[abx-z]" one of these characters; "[!abx-z]" one
/// character that is none of these. "[]" matches the empty text, "[!]" matches "!". Within brackets "-" is literal in
/// the first and last place, and "*", "?", "#" and "[" are always literal. Outside brackets "]", "!" and "-" are
/// literal, and so is every other character. Matching is case-sensitive: the caller folds pattern and texts.
class LikePattern {
public:
    /// @param folded the folded pattern in UTF-8.
    /// @param shown the pattern as error texts show it.
    /// @throws DatabaseError (other) for a "[" without a "]", and for a range whose end comes before its start.
    LikePattern(std::string_view folded, std::string_view shown);

    /// Whether the pattern matches the whole of `folded`, a folded text in UTF-8. The time is at most proportional to
    /// the length of the text times that of the pattern.
    [[nodiscard]] bool matches(std::string_view folded) const;

private:
    /// The UTF-8 bytes of a character as one number. Such numbers sort like code points.
    using Character = char32_t;

    struct Range {
        Character first;
        Character last;
    };

    enum class Kind { run, characters, one_of, none_of };

    /// A run, a sequence of literal characters, or one character inside or outside the ranges.
    struct Element {
        Kind kind = Kind::run;
        std::string characters = {};
        std::vector<Range> ranges = {};

        /// Removes what the element matches from the start of `text`; false if it does not match there. Not for runs.
        bool take_from(std::string_view& text) const;
        /// Removes what comes before the first place where literal characters match; false if they match nowhere in
        /// `text`. Does nothing for other kinds.
        bool skip_to(std::string_view& text) const;
    };

    static Character take(std::string_view& text);
    void add_list(std::string_view list, std::string_view shown);

    std::vector<Element> elements_;
};

} // namespace cuedrill::platform::sqlite
