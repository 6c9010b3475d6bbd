#include "exchange/code_page_1252.h"

#include "common/text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <map>

namespace cuedrill::exchange {
namespace {

constexpr unsigned first_own = 0x80;     ///< below this the code page is ASCII
constexpr unsigned first_latin_1 = 0xA0; ///< from here on bytes equal code points

constexpr std::array<char16_t, first_latin_1 - first_own> own_characters{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, //
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F, //
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, //
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool is_ascii(char c)
{
    return static_cast<unsigned char>(c) < first_own;
}

char16_t code_point(char c)
{
    const unsigned byte = static_cast<unsigned char>(c);
    return byte < first_own || byte >= first_latin_1 ? static_cast<char16_t>(byte) : own_characters[byte - first_own];
}

/// Appends a code point of the basic multilingual plane that is not a surrogate.
void append_utf8(std::string& text, char16_t character)
{
    const unsigned code = character;
    const auto append = [&](unsigned byte) { text.push_back(static_cast<char>(byte)); };
    if (code < 0x80) {
        append(code);
    } else if (code < 0x800) {
        append(0xC0U | code >> 6U);
        append(0x80U | (code & 0x3FU));
    } else {
        append(0xE0U | code >> 12U);
        append(0x80U | (code >> 6U & 0x3FU));
        append(0x80U | (code & 0x3FU));
    }
}

/// Maps each non-ASCII character, in UTF-8, to its byte.
using Bytes = std::map<std::string, char, std::less<>>;

Bytes bytes_beyond_ascii()
{
    Bytes bytes;
    for (unsigned byte = first_own; byte <= 0xFF; ++byte) {
        const char c = static_cast<char>(byte);
        bytes.emplace(code_page_1252_to_utf8({&c, 1}), c);
    }
    return bytes;
}

} // namespace

std::string code_page_1252_to_utf8(std::string_view bytes)
{
    const auto beyond_ascii =
        bytes.size() - static_cast<std::size_t>(std::count_if(bytes.begin(), bytes.end(), is_ascii));
    std::string text;
    text.reserve(bytes.size() + beyond_ascii); // most non-ASCII characters take two bytes
    for (const char c : bytes)
        append_utf8(text, code_point(c));
    return text;
}

std::optional<std::string> utf8_to_code_page_1252(std::string_view text)
{
    static const Bytes beyond_ascii = bytes_beyond_ascii();
    std::string bytes;
    bytes.reserve(text.size());
    for (;;) {
        const auto ascii =
            static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), is_ascii) - text.begin());
        bytes.append(text.substr(0, ascii));
        text.remove_prefix(ascii);
        if (text.empty())
            return bytes;
        const std::string_view character = common::first_code_points(text, 1);
        const auto byte = beyond_ascii.find(character);
        if (byte == beyond_ascii.end())
            return std::nullopt;
        bytes.push_back(byte->second);
        text.remove_prefix(character.size());
    }
}

} // namespace cuedrill::exchange
