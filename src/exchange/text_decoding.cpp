#include "exchange/text_decoding.h"

#include "common/errors.h"
#include "common/text.h"
#include "exchange/code_page_1252.h"
#include "exchange/collected_text.h"

#include <algorithm>
#include <utility>

namespace cuedrill::exchange {
namespace {

constexpr std::string_view utf16_little_endian_mark = "\xFF\xFE";
constexpr std::string_view utf16_big_endian_mark = "\xFE\xFF";
constexpr char nul = '\0';

/// The length of the UTF-8 sequence that begins with `lead`; 0 if no sequence begins with it.
std::size_t sequence_length(char lead)
{
    const auto byte = static_cast<unsigned char>(lead);
    if (byte < 0x80)
        return 1;
    if (byte < 0xC0)
        return 0;
    return byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

/// Removes the whole characters from `held` and returns them.
std::string take_whole_characters(std::string& held)
{
    const std::size_t length = without_begun_sequence(held).size();
    std::string rest = held.substr(length);
    held.resize(length);
    return std::exchange(held, std::move(rest));
}

std::string with_ill_formed_marked(std::string text)
{
    if (common::is_utf8(text))
        return text;
    std::string result;
    result.reserve(text.size());
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view character = common::first_code_points(rest, 1);
        result.append(common::is_utf8(character) ? character : std::string_view(&unreadable_mark, 1));
        rest.remove_prefix(character.size());
    }
    return result;
}

} // namespace

std::string_view without_begun_sequence(std::string_view text)
{
    constexpr std::size_t longest_beginning = 3;
    for (std::size_t back = 1; back <= std::min(longest_beginning, text.size()); ++back) {
        const std::size_t length = sequence_length(text[text.size() - back]);
        if (length != 0)
            return text.substr(0, length > back ? text.size() - back : text.size());
    }
    return text;
}

void TextSurvey::add(std::string bytes)
{
    beginning_.append(bytes, 0, utf8_mark.size() - beginning_.size());
    if (beginning_.starts_with(utf16_little_endian_mark) || beginning_.starts_with(utf16_big_endian_mark))
        throw common::Error("The file is encoded as UTF-16. Save it as UTF-8 or Windows-1252 and import it again.");
    std::erase(bytes, nul);
    look_for_line_ends(bytes);
    if (!well_formed_)
        return;
    held_.append(bytes);
    well_formed_ = common::is_utf8(take_whole_characters(held_));
}

void TextSurvey::look_for_line_ends(std::string_view text)
{
    if (text.empty())
        return;
    has_cr_lf_ =
        has_cr_lf_ || (ends_with_cr_ && text.front() == '\n') || text.find(common::cr_lf) != std::string_view::npos;
    has_lf_ = has_lf_ || text.find('\n') != std::string_view::npos;
    has_cr_ = has_cr_ || text.find('\r') != std::string_view::npos;
    ends_with_cr_ = text.back() == '\r';
}

TextFormat TextSurvey::format() const
{
    const bool marked = beginning_ == utf8_mark;
    return {.utf8 = marked || (well_formed_ && held_.empty()),
            .marked = marked,
            .line_end = has_cr_lf_            ? common::cr_lf
                        : has_cr_ && !has_lf_ ? std::string_view("\r")
                                              : std::string_view("\n")};
}

std::string TextDecoder::decode(std::string bytes)
{
    const std::size_t skipped = std::min(skipped_, bytes.size());
    bytes.erase(0, skipped);
    skipped_ -= skipped;
    std::erase(bytes, nul);
    if (!format_.utf8)
        return code_page_1252_to_utf8(bytes);
    held_.append(bytes);
    return with_ill_formed_marked(take_whole_characters(held_));
}

std::string TextDecoder::finish()
{
    return with_ill_formed_marked(std::exchange(held_, {}));
}

bool is_read_as_utf8(std::string bytes)
{
    std::erase(bytes, nul);
    return common::is_utf8(bytes);
}

} // namespace cuedrill::exchange
