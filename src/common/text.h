#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace cuedrill::common {

/// The characters of a text from `begin` up to, but not including, `end`, counted in code points from 0.
struct TextRange {
    std::size_t begin = 0;
    std::size_t end = 0;

    friend bool operator==(const TextRange&, const TextRange&) = default;
};

/// Line end of messages and of stored texts.
inline constexpr std::string_view cr_lf = "\r\n";

/// `text` without blanks (character 32 only) at both ends.
std::string_view trim_blanks(std::string_view text);

/// `text` without blanks and line ends at both ends; a user does not see them after pasting.
std::string_view trim_blanks_and_line_ends(std::string_view text);

/// Number of code points of `text`. Each byte outside a well-formed sequence counts as one.
std::size_t code_points(std::string_view text);

/// The first `count` code points of `text`; all of it if it has fewer.
std::string_view first_code_points(std::string_view text, std::size_t count);

/// Whether all of `text` is well-formed UTF-8 (no overlong forms, no surrogates, nothing above U+10FFFF).
bool is_utf8(std::string_view text);

/// Whether both texts are equal, ignoring the case of A to Z. For names that the program itself defines; user texts are
/// compared by platform::TextCompare.
bool equal_ascii(std::string_view a, std::string_view b);

/// `text` with every occurrence of `what` replaced by `with`, from the left. Requires a non-empty `what`.
std::string replace_all(std::string_view text, std::string_view what, std::string_view with);

/// `text` with each line end of any kind (CR LF, CR, U+2028, U+2029) as LF. A text box knows one kind only and may
/// return another one than it was given.
std::string with_one_kind_of_line_end(std::string text);

} // namespace cuedrill::common
