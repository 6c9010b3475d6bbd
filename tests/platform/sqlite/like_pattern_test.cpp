#include "platform/database.h"
#include "platform/sqlite/like_pattern.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::platform::sqlite::test {
namespace {

bool matches(std::string_view pattern, std::string_view text)
{
    return LikePattern(pattern, pattern).matches(text);
}

/// Expects `pattern` to match each of `fitting` and none of `others`.
void expect_matches(std::string_view pattern, const std::vector<std::string_view>& fitting,
                    const std::vector<std::string_view>& others)
{
    for (const std::string_view text : fitting)
        EXPECT_TRUE(matches(pattern, text)) << pattern << ' ' << text;
    for (const std::string_view text : others)
        EXPECT_FALSE(matches(pattern, text)) << pattern << ' ' << text;
}

/// The text of the error with which the pattern is rejected.
std::string refusal(std::string_view folded, std::string_view shown)
{
    try {
        const LikePattern pattern(folded, shown);
    } catch (const DatabaseError& error) {
        EXPECT_EQ(static_cast<int>(error.kind()), static_cast<int>(DatabaseErrorKind::other));
        return error.what();
    }
    return "no error";
}

TEST(Pattern, WithoutSpecialCharactersIsTheTextItself)
{
    expect_matches("abc", {"abc"}, {"", "ab", "abcd", "xabc", "abd", "ABC"});
    expect_matches("", {""}, {"a", " "});
}

TEST(Pattern, OrdinaryCharactersStandForThemselves)
{
    for (const std::string_view character :
         {"%", "_", "]", "!", "-", "\\", "^", ".", "'", "\"", "(", ")", "+", " ", "\n"}) {
        expect_matches(character, {character}, {"", "a"});
        expect_matches("*" + std::string(character) + "*", {character}, {"", "a"});
    }
    expect_matches("100%_]", {"100%_]"}, {"100xx]", "1000]"});
}

TEST(Pattern, AStarStandsForAnyRun)
{
    expect_matches("*", {"", "a", "abc", "a\r\nb", "\n"}, {});
    expect_matches("a*", {"a", "ab", "a\r\nb"}, {"", "ba"});
    expect_matches("*a", {"a", "ba", "aa"}, {"", "ab"});
    expect_matches("*a*", {"a", "bab", "\r\na\r\n"}, {"", "b"});
    expect_matches("a*b", {"ab", "axb", "abb", "a*b"}, {"a", "b", "aba", "xab"});
    expect_matches("a*b*c", {"abc", "aXbXc", "abbcc", "acbc"}, {"ac", "acb", "ab"});
    expect_matches("**a***", {"a", "xa", "ax"}, {"", "x"});
}

TEST(Pattern, ARunGivesBackWhatTheRestNeeds)
{
    expect_matches("*ab", {"ab", "aab", "abab"}, {"aba", "abb"});
    expect_matches("*aab*", {"aaab", "xaabx"}, {"ab", "aXab"});
    expect_matches("*ab?ab", {"abxab", "abababxab"}, {"abab", "abxabx"});
    expect_matches("a*a", {"aa", "aba"}, {"a", ""});
    expect_matches("*?b", {"ab", "aab", "bb"}, {"b", "ba"});
}

TEST(Pattern, AQuestionMarkStandsForOneCharacter)
{
    expect_matches("?", {"a", "?", "\n", "\u00E9", "\u20AC", "\U0001F600"}, {"", "ab", "e\u0301"});
    expect_matches("a?c", {"abc", "a\u20ACc"}, {"ac", "abbc"});
    expect_matches("??*", {"ab", "abc", "e\u0301"}, {"", "a", "\U0001F600"});
    expect_matches("*?", {"a", "\u00E9\U0001F600"}, {""});
}

TEST(Pattern, ANumberSignStandsForOneDigit)
{
    expect_matches("#", {"0", "5", "9"}, {"", "a", "#", "/", ":", "12", "\u0663", "\u00B2"});
    expect_matches("##.##", {"19.30"}, {"1.30", "ab.cd"});
}

TEST(Pattern, AListStandsForOneOfItsCharacters)
{
    expect_matches("[abc]", {"a", "b", "c"}, {"", "d", "ab", "[abc]"});
    expect_matches("x[\u00E9\u20AC\U0001F600]y", {"x\u00E9y", "x\u20ACy", "x\U0001F600y"},
                   {"xey", "xy", "x\u00E9\u20ACy", "x\u00E8y", "x\u00A9y"});
    expect_matches("[a][b]", {"ab"}, {"a", "ba"});
    expect_matches("*[ab]*", {"xbx", "a"}, {"", "x"});
}

TEST(Pattern, ARangeGoesByCodePoint)
{
    expect_matches("[b-d]", {"b", "c", "d"}, {"a", "e", "-", ""});
    expect_matches("[a-a]", {"a"}, {"b", "-"});
    expect_matches("[a-c0-9_]", {"a", "c", "0", "9", "_"}, {"d", "-"});
    expect_matches("[\u00E0-\u00E9]", {"\u00E0", "\u00E4", "\u00E9"}, {"a", "\u00A4", "\u00DF", "\u00EA"});
    expect_matches("[z-\u00FF]", {"z", "~", "\u0080", "\u00FF"}, {"y", "\u0100"});
    expect_matches("[\u07FF-\u0800]", {"\u07FF", "\u0800"}, {"\u07FE", "\u0801"});
    expect_matches("[\uFFFD-\U00010400]", {"\uFFFD", "\U00010000", "\U00010400"}, {"\uFFFC", "\U00010401"});
}

TEST(Pattern, AListMayNameWhatItIsNot)
{
    expect_matches("[!abc]", {"d", "!", "\u00E9", "\n"}, {"", "a", "c", "dd"});
    expect_matches("[!b-d]", {"a", "e", "-"}, {"b", "c", "d"});
    expect_matches("*[!a]*", {"ab", "b"}, {"", "a", "aaa"});
    expect_matches("[!!]", {"a"}, {"!"});
}

TEST(Pattern, AnExclamationMarkIsOrdinaryUnlessItIsFirst)
{
    expect_matches("[!]", {"!"}, {"", "a", "]"});
    expect_matches("[a!]", {"a", "!"}, {"b"});
    expect_matches("a[!]b", {"a!b"}, {"axb", "ab"});
    expect_matches("[!]]", {"!]"}, {"a]", "!"});
}

TEST(Pattern, AHyphenIsOrdinaryFirstAndLast)
{
    expect_matches("[-a]", {"-", "a"}, {"b", ","});
    expect_matches("[a-]", {"-", "a"}, {"b", "z"});
    expect_matches("[-]", {"-"}, {"a"});
    expect_matches("[!-a]", {"b"}, {"-", "a"});
    expect_matches("[!a-]", {"b"}, {"-", "a"});
    expect_matches("[a-c-e]", {"a", "b", "c", "-", "e"}, {"d"});
    expect_matches("[+--]", {"+", ",", "-"}, {"*", "."});
}

TEST(Pattern, SpecialCharactersAreOrdinaryInAList)
{
    expect_matches("[*]", {"*"}, {"", "a"});
    expect_matches("[?]", {"?"}, {"a"});
    expect_matches("[#]", {"#"}, {"1"});
    expect_matches("[[]", {"["}, {"a", ""});
    expect_matches("[*?#[]", {"*", "?", "#", "["}, {"a", "]"});
    expect_matches("*[*]*", {"a*b"}, {"ab"});
    expect_matches("[[]a]", {"[a]"}, {"a]"});
}

TEST(Pattern, AnEmptyListStandsForNothing)
{
    expect_matches("[]", {""}, {"a", "[]"});
    expect_matches("a[]b", {"ab"}, {"a[]b", "axb"});
    expect_matches("[]]", {"]"}, {"", "[]"});
    expect_matches("*[]*", {"", "a"}, {});
}

TEST(Pattern, ComposedCharactersAreSeveral)
{
    expect_matches("e?", {"e\u0301"}, {"\u00E9"});
    expect_matches("[e]", {"e"}, {"e\u0301", "\u00E9"});
    expect_matches("*e*", {"e\u0301"}, {"\u00E9"});
}

TEST(Pattern, SeesEverythingBehindAZeroByte)
{
    expect_matches(std::string_view("a\0b", 3), {std::string_view("a\0b", 3)}, {"a", std::string_view("a\0c", 3)});
    expect_matches("a?b", {std::string_view("a\0b", 3)}, {});
}

TEST(Pattern, WithoutAnEndOfItsListIsRefused)
{
    EXPECT_EQ(refusal("*[ab*", "*[AB*"), "The pattern \"*[AB*\" has a \"[\" without a \"]\".");
    EXPECT_EQ(refusal("[", "["), "The pattern \"[\" has a \"[\" without a \"]\".");
    EXPECT_EQ(refusal("[a][", "[a]["), "The pattern \"[a][\" has a \"[\" without a \"]\".");
    EXPECT_EQ(refusal("a]", "a]"), "no error");
}

TEST(Pattern, WithARangeThatRunsBackwardsIsRefused)
{
    EXPECT_EQ(refusal("*[z-a]*", "*[Z-A]*"), "The pattern \"*[Z-A]*\" has a range that runs backwards.");
    EXPECT_EQ(refusal("[a-cz-y]", "[a-cz-y]"), "The pattern \"[a-cz-y]\" has a range that runs backwards.");
    EXPECT_EQ(refusal("[!\u00E9-e]", "[!\u00E9-e]"), "The pattern \"[!\u00E9-e]\" has a range that runs backwards.");
}

// Backtracking into every run would take exponential time.
TEST(Pattern, OfManyRunsIsDecidedAtOnce)
{
    EXPECT_FALSE(matches("*a*a*a*a*a*a*a*b", std::string(200, 'a')));
    std::string pattern;
    for (int i = 0; i < 100; ++i)
        pattern += "*?a";
    EXPECT_FALSE(matches(pattern + "b", std::string(2000, 'a')));
    EXPECT_TRUE(matches(pattern, std::string(2000, 'a')));
}

/// Whether `pattern`, which has only "a", "b", "?" and "*", matches `text`. Applies the rules by plain recursion.
bool matches_slowly(std::string_view pattern, std::string_view text)
{
    if (pattern.empty())
        return text.empty();
    const std::string_view rest = pattern.substr(1);
    if (pattern.front() == '*')
        return matches_slowly(rest, text) || (!text.empty() && matches_slowly(pattern, text.substr(1)));
    return !text.empty() && (pattern.front() == '?' || pattern.front() == text.front()) &&
           matches_slowly(rest, text.substr(1));
}

TEST(Pattern, MatchesWhatTheRulesTriedOutOneByOneDo)
{
    std::mt19937 random(7);
    const auto any_of = [&](std::string_view characters, std::size_t length) {
        std::string text;
        while (text.size() < length)
            text += characters[random() % characters.size()];
        return text;
    };
    int fitting = 0;
    for (int i = 0; i < 20000; ++i) {
        const std::string pattern = any_of("aabb?**", random() % 8);
        const std::string text = any_of("ab", random() % 9);
        const bool expected = matches_slowly(pattern, text);
        ASSERT_EQ(matches(pattern, text), expected) << pattern << ' ' << text;
        fitting += expected ? 1 : 0;
    }
    EXPECT_GT(fitting, 2000);
}

} // namespace
} // namespace cuedrill::platform::sqlite::test
