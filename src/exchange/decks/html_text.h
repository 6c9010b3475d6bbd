#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace cuedrill::decks {

/// What a plain text cannot show.
struct HtmlLosses {
    std::int64_t media = 0;  ///< pictures, sounds and films left out
    std::int64_t clozes = 0; ///< cloze deletions read as their texts
};

/// A fragment of HTML, as flashcard programs store it, as plain text in one pass.
///
/// Tags and comments are dropped, and so is what stands in "style" and "script". "br" is a line break; a paragraph, a
/// "div", a list entry and their like begin and end a line. Entities become their characters; an unknown one stays as
/// it is. Runs of white space, no-break spaces included, become one blank, and there is none at the ends of a line.
/// Pictures and "[sound:…]" are left out, "{{c1::text::hint}}" becomes "text"; both are counted.
///
/// Whatever the text is, the time is linear in its length. A "<" that begins no tag is an ordinary character.
/// @param losses is added to.
/// @return UTF-8 with LF as line end, without line ends at its ends.
[[nodiscard]] std::string html_to_text(std::string_view html, HtmlLosses& losses);

/// A sentence for each sort of loss, each with a line end; empty for none.
[[nodiscard]] std::string words_of(const HtmlLosses& losses);

} // namespace cuedrill::decks
