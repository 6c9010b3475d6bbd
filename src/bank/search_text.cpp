#include "bank/search_text.h"

#include "common/text.h"

#include <algorithm>
#include <cstddef>

namespace cuedrill::bank {
namespace {

constexpr std::string_view mark = "*";

constexpr std::string_view word_separators = " .;!?-\"'/()+<>*";

/// Maps byte offsets in a case-folded text to offsets in the original text. Moves forward only.
class FoldedPlace {
public:
    FoldedPlace(std::string_view given, std::string_view folded)
        : given_(given), folded_(folded), ascii_(std::all_of(given.begin(), given.end(), is_ascii))
    {
    }

    /// Whether both texts have the same number of code points. They do unless the text is ill-formed.
    [[nodiscard]] bool agrees() const { return ascii_ || common::code_points(given_) == common::code_points(folded_); }

    /// The offset in the original text for an offset in the folded text.
    std::size_t move_to(std::size_t folded)
    {
        if (ascii_)
            return folded;
        for (; folded_at_ < folded; given_at_ += length_of_first(given_.substr(given_at_)))
            folded_at_ += length_of_first(folded_.substr(folded_at_));
        return given_at_;
    }

private:
    static bool is_ascii(char c) { return static_cast<unsigned char>(c) < 0x80; }
    static std::size_t length_of_first(std::string_view text) { return common::first_code_points(text, 1).size(); }

    std::string_view given_;
    std::string_view folded_;
    bool ascii_;
    std::size_t given_at_ = 0;
    std::size_t folded_at_ = 0;
};

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
    FoldedPlace given(text, folded_text);
    if (folded_word.empty() || !given.agrees())
        return std::nullopt;

    std::string marked;
    bool found = false;
    bool behind_mark = false;
    std::size_t copied = 0; // offset in the text
    std::size_t place = 0;  // offset in the folded text
    for (std::size_t at = folded_text.find(folded_word); at != std::string::npos;
         at = folded_text.find(folded_word, place)) {
        const std::size_t begin = given.move_to(at);
        const std::size_t end = given.move_to(at + folded_word.size());
        // Separators are single bytes, and no byte of a multi-byte character equals one.
        const std::string_view before = at == place && behind_mark ? mark
                                        : begin == 0               ? std::string_view()
                                                                   : text.substr(begin - 1, 1);
        behind_mark = is_word_separator(before) && is_word_separator(text.substr(end, 1));
        marked += text.substr(copied, end - copied);
        if (behind_mark) {
            marked += mark;
            found = true;
        }
        copied = end;
        place = at + folded_word.size();
    }
    if (!found)
        return std::nullopt;
    marked += text.substr(copied);
    return marked;
}

} // namespace cuedrill::bank
