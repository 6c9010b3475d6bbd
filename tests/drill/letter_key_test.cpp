#include "drill/letter_key.h"

#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

struct LetterCase {
    const char* character;
    char place;
    char expected;
};

TEST(CommandLetter, is_the_latin_letter_that_a_key_gives_or_the_one_at_its_place)
{
    const LetterCase cases[] = {
        {"q", 'q', 'q'},      {"Q", 'q', 'q'},      {"a", 'q', 'a'},                     // French
        {"\u0439", 'q', 'q'}, {"\u0444", 'a', 'a'},                                      // Russian
        {"\u0436", 0, 0},                                                                // Russian, at the place of ";"
        {"\u03b1", 'a', 'a'}, {";", 'q', 'q'},      {":", 'q', 'q'},                     // Greek
        {"/", 'q', 'q'},                                                                 // Hebrew
        {",", 'q', 'q'},                                                                 // Bulgarian
        {"\u0e49", 'h', 'h'}, {"\u094b", 'a', 'a'},                                      // Thai, Hindi: marks
        {"\u0131", 'i', 'i'}, {"i", 0, 'i'},        {"\u0130", 0, 'i'}, {"I", 'i', 'i'}, // Turkish
        {"\u00e8", 't', 0},   {"\u00e4", 0, 0},     {"\u1ec7", 'e', 0},                  // accents
        {"'", 'q', 0},        {".", 'e', 0},        {"5", 'q', 0},                       // Dvorak
        {"+", 'q', 0},        {"-", 'a', 0},        {"*", 's', 0},      {" ", 'd', 0},   {"", 'q', 0},
    };
    for (const LetterCase& c : cases)
        EXPECT_EQ(command_letter({.character = c.character, .place = c.place}), c.expected)
            << c.character << " at " << c.place;
    EXPECT_EQ(command_letter({.key = platform::Key::enter, .place = 'q'}), 0);
}

} // namespace
} // namespace cuedrill::drill
