#include "common/text.h"

#include <algorithm>

namespace cuedrill::common {
namespace {

bool is_continuation(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// Length in bytes of the well-formed sequence at the start of `text` (not empty); 0 if there is none. The ranges are
/// those of the Unicode standard, table 3-7.
std::size_t sequence_length(std::string_view text)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80)
        return 1;
    const std::size_t length = lead >= 0xC2 && lead <= 0xDF   ? 2
                               : lead >= 0xE0 && lead <= 0xEF ? 3
                               : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                              : 0;
    if (length == 0 || text.size() < length)
        return 0;
    const unsigned char low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned char high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (byte(1) < low || byte(1) > high)
        return 0;
    const std::string_view rest = text.substr(2, length - 2);
    return std::all_of(rest.begin(), rest.end(), is_continuation) ? length : 0;
}

std::string_view trim(std::string_view text, std::string_view unwanted)
{
    const std::size_t first = text.find_first_not_of(unwanted);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(unwanted) - first + 1);
}

} // namespace

std::string_view trim_blanks(std::string_view text)
{
    return trim(text, " ");
}

std::string_view trim_blanks_and_line_ends(std::string_view text)
{
    return trim(text, " \r\n");
}

std::size_t code_points(std::string_view text)
{
    std::size_t count = 0;
    for (; !text.empty(); ++count)
        text.remove_prefix(std::max<std::size_t>(sequence_length(text), 1));
    return count;
}

std::string_view first_code_points(std::string_view text, std::size_t count)
{
    std::string_view rest = text;
    for (; count > 0 && !rest.empty(); --count)
        rest.remove_prefix(std::max<std::size_t>(sequence_length(rest), 1));
    return text.substr(0, text.size() - rest.size());
}

bool is_utf8(std::string_view text)
{
    for (std::size_t at = 0; at < text.size();) {
        const bool is_ascii = static_cast<unsigned char>(text[at]) < 0x80; // most characters of most texts
        const std::size_t length = is_ascii ? 1 : sequence_length(text.substr(at));
        if (length == 0)
            return false;
        at += length;
    }
    return true;
}

bool equal_ascii(std::string_view a, std::string_view b)
{
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](char x, char y) { return lower(x) == lower(y); });
}

std::string replace_all(std::string_view text, std::string_view what, std::string_view with)
{
    std::string result;
    for (std::size_t at = text.find(what); at != std::string_view::npos; at = text.find(what)) {
        result.append(text.substr(0, at)).append(with);
        text.remove_prefix(at + what.size());
    }
    return result.append(text);
}

std::string with_one_kind_of_line_end(std::string text)
{
    for (const std::string_view line_end : {"\r\n", "\r", "\u2028", "\u2029"})
        text = replace_all(text, line_end, "\n");
    return text;
}

} // namespace cuedrill::common
