#include "bank/search_text.h"

#include "common/text.h"

#include <algorithm>
#include <cstddef>

namespace cuedrill::bank {
namespace {

constexpr std::string_view mark = "*";

constexpr std::string_view word_separators = " .;!?-\"'/()+<>*";

using Characters = std::vector<std::string_view>;

Characters characters(std::string_view text)
{
    Characters all;
    while (!text.empty()) {
        all.push_back(common::first_code_points(text, 1));
        text.remove_prefix(all.back().size());
    }
    return all;
}

bool holds_only(std::string_view text, char character)
{
    return text.find_first_not_of(character) == std::string_view::npos;
}

} // namespace

std::string escape_like(std::string_view text)
{
    if (text.empty())
        return {};
    if (holds_only(text, '?') || holds_only(text, '*'))
        return "[" + std::string(text) + "]";
    return common::replace_all(text, "'", "''");
}

std::vector<std::string_view> words_of(std::string_view text)
{
    std::vector<std::string_view> words;
    for (text = common::trim_blanks(text); !text.empty(); text = common::trim_blanks(text)) {
        words.push_back(text.substr(0, text.find(' ')));
        text.remove_prefix(words.back().size());
    }
    return words;
}

bool is_word_separator(std::string_view ch)
{
    return ch.empty() || (ch.size() == 1 && word_separators.find(ch) != std::string_view::npos);
}

std::optional<std::string> marked_word(std::string_view text, std::string_view word,
                                       const platform::TextCompare& text_compare)
{
    const std::string folded_text = text_compare.fold(text);
    const std::string folded_word = text_compare.fold(word);
    const Characters given = characters(text);
    const Characters folded = characters(folded_text);
    const Characters wanted = characters(folded_word);
    // Places agree unless the text is damaged; then no mark could be put to its place.
    if (wanted.empty() || given.size() != folded.size())
        return std::nullopt;

    std::string marked;
    bool found = false;
    bool behind_mark = false;
    std::size_t place = 0;
    while (true) {
        const auto occurrence = std::search(folded.begin() + static_cast<std::ptrdiff_t>(place), folded.end(),
                                            wanted.begin(), wanted.end());
        const auto begin = static_cast<std::size_t>(occurrence - folded.begin());
        const std::size_t end = occurrence == folded.end() ? given.size() : begin + wanted.size();
        for (std::size_t at = place; at < end; ++at)
            marked += given[at];
        if (occurrence == folded.end())
            break;
        const std::string_view before = begin == place && behind_mark ? mark : begin == 0 ? "" : given[begin - 1];
        const std::string_view after = end == given.size() ? "" : given[end];
        behind_mark = is_word_separator(before) && is_word_separator(after);
        if (behind_mark) {
            marked += mark;
            found = true;
        }
        place = end;
    }
    return found ? std::optional(std::move(marked)) : std::nullopt;
}

} // namespace cuedrill::bank
