#include "bank/search_text.h"
#include "platform/icu/icu_text_compare.h"

#include <gtest/gtest.h>

namespace cuedrill::bank {
namespace {

TEST(EscapeLike, doubles_apostrophes)
{
    EXPECT_EQ(escape_like("o'clock"), "o''clock");
    EXPECT_EQ(escape_like("'tis"), "''tis");
    EXPECT_EQ(escape_like("boys'"), "boys''");
    EXPECT_EQ(escape_like("rock''n''roll"), "rock''''n''''roll");
    EXPECT_EQ(escape_like("'"), "''");
    EXPECT_EQ(escape_like("'''"), "''''''");
}

TEST(EscapeLike, brackets_a_text_of_question_marks_or_of_stars_alone)
{
    EXPECT_EQ(escape_like("?"), "[?]");
    EXPECT_EQ(escape_like("??"), "[??]");
    EXPECT_EQ(escape_like("*"), "[*]");
    EXPECT_EQ(escape_like("***"), "[***]");
}

TEST(EscapeLike, leaves_the_characters_of_a_pattern_in_any_other_text)
{
    for (const char* const text : {"?*", "a?", "*a", "? ?", "#", "[", "[ab]", "]", "%", "_", "100%", "\"", ";--"})
        EXPECT_EQ(escape_like(text), text);
    EXPECT_EQ(escape_like("*'?"), "*''?");
}

TEST(EscapeLike, leaves_nothing_as_nothing)
{
    EXPECT_EQ(escape_like(""), "");
}

using Words = std::vector<std::string_view>;

TEST(WordsOf, are_parted_by_blanks)
{
    EXPECT_EQ(words_of("Capital of France"), (Words{"Capital", "of", "France"}));
    EXPECT_EQ(words_of("  Capital   of  "), (Words{"Capital", "of"}));
    EXPECT_EQ(words_of("\u00C9cole"), (Words{"\u00C9cole"}));
}

TEST(WordsOf, nothing_are_none)
{
    EXPECT_TRUE(words_of("").empty());
    EXPECT_TRUE(words_of("   ").empty());
}

TEST(WordsOf, keep_punctuation_and_every_other_white_space)
{
    EXPECT_EQ(words_of("what? (it's) a,b"), (Words{"what?", "(it's)", "a,b"}));
    EXPECT_EQ(words_of("a\tb c\r\nd e\u00A0f"), (Words{"a\tb", "c\r\nd", "e\u00A0f"}));
}

constexpr std::string_view separators = " .;!?-\"'/()+<>*";

TEST(WordSeparator, is_one_of_fifteen_characters_or_nothing)
{
    EXPECT_TRUE(is_word_separator(""));
    for (int code = 0; code < 0x80; ++code) {
        const char ch = static_cast<char>(code);
        EXPECT_EQ(is_word_separator({&ch, 1}), separators.find(ch) != std::string_view::npos) << "character " << code;
    }
    EXPECT_EQ(separators.size(), 15U);
}

TEST(WordSeparator, is_no_character_beyond_ascii_and_no_two_together)
{
    for (const char* const ch : {"\u00A0", "\u2019", "\u00AB", "\u2013", "\u00BF", "\u3002", "  ", "!?"})
        EXPECT_FALSE(is_word_separator(ch)) << ch;
}

class MarkedWord : public testing::Test {
protected:
    /// The marked text; "none" if the word does not occur.
    [[nodiscard]] std::string marked(std::string_view text, std::string_view word) const
    {
        return marked_word(text, word, text_compare).value_or("none");
    }

    platform::icu::IcuTextCompare text_compare;
};

TEST_F(MarkedWord, stands_by_itself)
{
    EXPECT_EQ(marked("Capital of France", "of"), "Capital of* France");
    EXPECT_EQ(marked("Capital", "Capital"), "Capital*");
    EXPECT_EQ(marked("Capital of", "Capital"), "Capital* of");
    EXPECT_EQ(marked("the Capital", "Capital"), "the Capital*");
    EXPECT_EQ(marked("often", "of"), "none");
    EXPECT_EQ(marked("proof", "of"), "none");
    EXPECT_EQ(marked("profit", "of"), "none");
    EXPECT_EQ(marked("France", "Italy"), "none");
    EXPECT_EQ(marked("", "of"), "none");
    EXPECT_EQ(marked("of", "of France"), "none");
}

TEST_F(MarkedWord, is_marked_wherever_it_stands_by_itself)
{
    EXPECT_EQ(marked("of often of proof of", "of"), "of* often of* proof of*");
    EXPECT_EQ(marked("of of", "of"), "of* of*");
    EXPECT_EQ(marked("of-of", "of"), "of*-of*");
}

TEST_F(MarkedWord, has_a_separator_or_nothing_on_both_sides)
{
    for (int code = 1; code < 0x80; ++code) {
        const std::string ch(1, static_cast<char>(code));
        const bool separates = separators.find(ch) != std::string_view::npos;
        EXPECT_EQ(marked("x" + ch + "word" + ch + "y", "word"), separates ? "x" + ch + "word*" + ch + "y" : "none")
            << "character " << code;
        EXPECT_EQ(marked(ch + "word", "word"), separates ? ch + "word*" : "none") << "before, character " << code;
        EXPECT_EQ(marked("word" + ch, "word"), separates ? "word*" + ch : "none") << "behind, character " << code;
    }
    for (const char* const ch : {"\u00A0", "\u2019", "\u2013", "\r\n"})
        EXPECT_EQ(marked("word" + std::string(ch), "word"), "none") << ch;
}

TEST_F(MarkedWord, stands_by_itself_behind_a_mark_too)
{
    EXPECT_EQ(marked("++", "+"), "+*+*");
    EXPECT_EQ(marked("+++", "+"), "+*+*+*");
    EXPECT_EQ(marked("(a(a", "(a"), "(a*(a*");
    EXPECT_EQ(marked("a(a(", "a("), "a(a(*") << "the first one has a letter behind it";
    EXPECT_EQ(marked("ofof", "of"), "none");
}

TEST_F(MarkedWord, may_hold_separators_itself)
{
    EXPECT_EQ(marked("say what? now", "what?"), "say what?* now");
    EXPECT_EQ(marked("what?now", "what?"), "none");
    EXPECT_EQ(marked("he (once) came", "(once)"), "he (once)* came");
    EXPECT_EQ(marked("it's", "it"), "it*'s");
}

TEST_F(MarkedWord, is_found_in_any_case_and_stays_as_it_is)
{
    EXPECT_EQ(marked("The CAPITAL of", "capital"), "The CAPITAL* of");
    EXPECT_EQ(marked("une \u00C9COLE", "\u00E9cole"), "une \u00C9COLE*");
    EXPECT_EQ(marked("une ecole", "\u00E9cole"), "none") << "accents count";
    EXPECT_EQ(marked("\u041C\u041E\u0421\u041A\u0412\u0410 gro\u00DF", "\u043C\u043E\u0441\u043A\u0432\u0430"),
              "\u041C\u041E\u0421\u041A\u0412\u0410* gro\u00DF");
}

TEST_F(MarkedWord, has_its_mark_in_place_though_the_other_case_has_fewer_bytes)
{
    EXPECT_EQ(marked("STRA\u1E9EE breit", "stra\u00DFe"), "STRA\u1E9EE* breit");
    EXPECT_EQ(marked("\u1E9E\u212A word x", "word"), "\u1E9E\u212A word* x");
    EXPECT_EQ(marked("\U00010400 word x", "WORD"), "\U00010400 word* x");
    EXPECT_EQ(marked("x \U00010400 y", "\U00010428"), "x \U00010400* y");
}

TEST_F(MarkedWord, has_each_mark_in_place_among_characters_of_all_lengths)
{
    EXPECT_EQ(marked("\u212A of \u1E9E of \U00010400 of \u00C9 OF e", "of"),
              "\u212A of* \u1E9E of* \U00010400 of* \u00C9 OF* e");
    EXPECT_EQ(marked("\u212A-\u212A \u1E9E", "k"), "\u212A*-\u212A* \u1E9E");
}

TEST_F(MarkedWord, is_not_marked_where_damage_hides_its_place)
{
    EXPECT_EQ(marked("word \xE2\x82", "word"), "none") << "two bytes, folded to one character";
    EXPECT_EQ(marked("\xFF word x", "word"), "\xFF word* x");
}

TEST_F(MarkedWord, of_nothing_is_none)
{
    EXPECT_EQ(marked("a b", ""), "none");
}

} // namespace
} // namespace cuedrill::bank
