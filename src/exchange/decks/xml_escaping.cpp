#include "exchange/decks/xml_escaping.h"

#include "common/text.h"

namespace cuedrill::decks {
namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD"; // U+FFFD

/// @param character a code point in UTF-8, or a single byte that is none.
bool is_allowed(std::string_view character)
{
    const auto first = static_cast<unsigned char>(character.front());
    constexpr unsigned char first_printing = 0x20;
    constexpr unsigned char first_above_ascii = 0x80;
    if (character.size() == 1)
        return first >= first_printing && first < first_above_ascii;
    return character != "\xEF\xBF\xBE" && character != "\xEF\xBF\xBF";
}

} // namespace

std::string xml_escaped(std::string_view text, bool& replaced)
{
    std::string result;
    while (!text.empty()) {
        const std::string_view character = common::first_code_points(text, 1);
        text.remove_prefix(character.size());
        if (character == "&") {
            result += "&amp;";
        } else if (character == "<") {
            result += "&lt;";
        } else if (character == ">") {
            result += "&gt;";
        } else if (character == "\t" || character == "\n" || character == "\r") {
            result += "&#" + std::to_string(static_cast<int>(character.front())) + ";";
        } else if (is_allowed(character)) {
            result += character;
        } else {
            result += replacement;
            replaced = true;
        }
    }
    return result;
}

} // namespace cuedrill::decks
