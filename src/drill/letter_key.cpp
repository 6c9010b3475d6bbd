#include "drill/letter_key.h"

#include <array>
#include <string_view>

namespace cuedrill::drill {
namespace {

using namespace std::string_view_literals;

bool is_ascii_letter(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

/// The Turkish "i": these layouts have two keys for it, one with a dot and one without.
bool is_letter_i(std::string_view character)
{
    constexpr std::array turkish{"\u0131"sv, "\u0130"sv};
    return character == turkish[0] || character == turkish[1];
}

/// Accented and similar letters, U+00C0 to U+024F and U+1E00 to U+1EFF. If a layout has one of them at the position of
/// a plain letter, that letter is at another position.
bool is_other_latin_letter(std::string_view character)
{
    const auto byte = [&](std::size_t place) { return static_cast<unsigned char>(character[place]); };
    if (character.size() == 2)
        return byte(0) >= 0xC3 && byte(0) <= 0xC9;
    return character.size() == 3 && byte(0) == 0xE1 && byte(1) >= 0xB8 && byte(1) <= 0xBB;
}

/// Signs and digits that never stand for a letter, even at the position of one. The Dvorak layouts, which are Latin,
/// have quotes and the full stop at the positions of "q" and "e".
bool means_itself(char character, char place)
{
    if (character >= '0' && character <= '9')
        return true;
    if ("+-* "sv.find(character) != std::string_view::npos)
        return true;
    return (place == 'q' && (character == '\'' || character == '"')) ||
           (place == 'e' && (character == '.' || character == '>'));
}

} // namespace

char command_letter(const platform::KeyPress& press)
{
    const std::string_view character = press.character;
    if (press.key != platform::Key::character || character.empty())
        return 0;
    if (is_letter_i(character))
        return 'i';
    if (character.size() == 1 && is_ascii_letter(character.front()))
        return static_cast<char>(character.front() | 0x20);
    if (is_other_latin_letter(character) || (character.size() == 1 && means_itself(character.front(), press.place)))
        return 0;
    return press.place;
}

} // namespace cuedrill::drill
