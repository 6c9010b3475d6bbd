#pragma once

#include "platform/text_compare.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::bank {

/// Escapes `text` for a quoted pattern of "like": apostrophes are doubled. A text of only "?" or only "*" is put in
/// brackets and so found literally; in any other text these, "#" and "[" stay wildcards.
std::string escape_like(std::string_view text);

/// The words of a text, separated by blanks. Punctuation is part of its word.
std::vector<std::string_view> words_of(std::string_view text);

/// Whether a character can stand before or after a word. The empty text, for the start or end of a text, counts too.
bool is_word_separator(std::string_view ch);

/// `text` with "*" after each standalone occurrence of `word`, ignoring case; std::nullopt if there is none.
std::optional<std::string> marked_word(std::string_view text, std::string_view word,
                                       const platform::TextCompare& text_compare);

} // namespace cuedrill::bank
