#pragma once

#include "platform/text_compare.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::bank {

/// `text` as it can stand between the apostrophes of a pattern for "like": apostrophes are doubled. A text of nothing
/// but "?", or of nothing but "*", is bracketed, so that it is found as it stands; in any other text these, "#" and
/// "[" keep their meaning in a pattern.
std::string escape_like(std::string_view text);

/// The words of a text, which blanks part. Punctuation belongs to its word.
std::vector<std::string_view> words_of(std::string_view text);

/// Whether a character can stand before or behind a word; so can nothing, the empty text.
bool is_word_separator(std::string_view ch);

/// `text` with "*" behind each place where `word` stands by itself, in any case; nothing when there is no such place.
std::optional<std::string> marked_word(std::string_view text, std::string_view word,
                                       const platform::TextCompare& text_compare);

} // namespace cuedrill::bank
