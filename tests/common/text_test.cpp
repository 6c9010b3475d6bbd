#include "common/text.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace cuedrill::common {
namespace {

struct IllFormed {
    std::string_view name;
    std::string_view bytes;
};

// Each is ill-formed for a different reason; every byte counts as one code point.
constexpr IllFormed ill_formed[] = {
    {"a continuation alone", "\x80"},
    {"a lead byte alone", "\xC3"},
    {"a two-byte sequence that is overlong", "\xC0\xAF"},
    {"a two-byte sequence that is overlong, highest", "\xC1\xBF"},
    {"a three-byte sequence cut off", "\xE2\x82"},
    {"a three-byte sequence that is overlong", "\xE0\x9F\xBF"},
    {"the first surrogate", "\xED\xA0\x80"},
    {"the last surrogate", "\xED\xBF\xBF"},
    {"a four-byte sequence cut off", "\xF0\x9F\x98"},
    {"a four-byte sequence that is overlong", "\xF0\x8F\xBF\xBF"},
    {"the first code point above the last", "\xF4\x90\x80\x80"},
    {"a lead byte of no code point", "\xF5\x80\x80\x80"},
    {"a byte that is never used", "\xFF"},
};

// The first and last code points of all ranges of well-formed sequences.
constexpr std::string_view single_points[] = {
    "\x01",
    "\x7F",
    "\xC2\x80",
    "\xDF\xBF",
    "\xE0\xA0\x80",
    "\xEC\xBF\xBF",
    "\xED\x80\x80",
    "\xED\x9F\xBF",
    "\xEE\x80\x80",
    "\xEF\xBF\xBF",
    "\xF0\x90\x80\x80",
    "\xF3\xBF\xBF\xBF",
    "\xF4\x80\x80\x80",
    "\xF4\x8F\xBF\xBF",
};

TEST(Trimming, TakesBlanksFromBothEndsOnly)
{
    EXPECT_EQ(trim_blanks("  a b  "), "a b");
    EXPECT_EQ(trim_blanks("a"), "a");
    EXPECT_EQ(trim_blanks(""), "");
    EXPECT_EQ(trim_blanks("   "), "");
}

TEST(Trimming, KeepsEveryOtherWhiteSpace)
{
    EXPECT_EQ(trim_blanks(" \t a\r\n "), "\t a\r\n");
    EXPECT_EQ(trim_blanks("\u00A0a\u00A0"), "\u00A0a\u00A0");
}

TEST(CodePoints, CountsCharactersNotBytes)
{
    EXPECT_EQ(code_points(""), 0U);
    EXPECT_EQ(code_points("abc"), 3U);
    EXPECT_EQ(code_points("a\u00E9\u20AC\U0001F600"), 4U);
    EXPECT_EQ(code_points("e\u0301"), 2U) << "a combining mark is a code point of its own";
    EXPECT_EQ(code_points(std::string_view("a\0b", 3)), 3U);
}

TEST(CodePoints, CountsTheEndsOfAllRangesAsOne)
{
    for (const std::string_view point : single_points) {
        EXPECT_EQ(code_points(point), 1U) << testing::PrintToString(point);
        EXPECT_TRUE(is_utf8(point)) << testing::PrintToString(point);
    }
}

TEST(CodePoints, CountsEveryIllFormedByteAsOne)
{
    for (const IllFormed& text : ill_formed) {
        EXPECT_EQ(code_points(text.bytes), text.bytes.size()) << text.name;
        EXPECT_EQ(code_points("\u00E9" + std::string(text.bytes) + "\u00E9"), text.bytes.size() + 2) << text.name;
    }
}

TEST(Utf8Check, RefusesEveryIllFormedText)
{
    for (const IllFormed& text : ill_formed) {
        EXPECT_FALSE(is_utf8(text.bytes)) << text.name;
        EXPECT_FALSE(is_utf8("a" + std::string(text.bytes) + "b")) << text.name;
    }
    EXPECT_TRUE(is_utf8(""));
    EXPECT_TRUE(is_utf8("a\u00E9\u20AC\U0001F600"));
}

TEST(FirstCodePoints, NeverCutsACharacter)
{
    constexpr std::string_view text = "a\u00E9\u20AC\U0001F600z";
    EXPECT_EQ(first_code_points(text, 0), "");
    EXPECT_EQ(first_code_points(text, 1), "a");
    EXPECT_EQ(first_code_points(text, 2), "a\u00E9");
    EXPECT_EQ(first_code_points(text, 3), "a\u00E9\u20AC");
    EXPECT_EQ(first_code_points(text, 4), "a\u00E9\u20AC\U0001F600");
    EXPECT_EQ(first_code_points(text, 5), text);
}

TEST(FirstCodePoints, GivesAShorterTextWhole)
{
    EXPECT_EQ(first_code_points("ab", 200), "ab");
    EXPECT_EQ(first_code_points("", 200), "");
}

TEST(FirstCodePoints, AgreesWithTheCountForIllFormedTexts)
{
    for (const IllFormed& text : ill_formed) {
        const std::string whole = "\u20AC" + std::string(text.bytes) + "x";
        for (std::size_t count = 0; count <= code_points(whole); ++count)
            EXPECT_EQ(code_points(first_code_points(whole, count)), count) << text.name;
    }
}

TEST(ReplaceAll, ReplacesEveryOccurrenceFromTheLeft)
{
    EXPECT_EQ(replace_all("a'b'c", "'", "''"), "a''b''c");
    EXPECT_EQ(replace_all("aaaa", "aa", "b"), "bb");
    EXPECT_EQ(replace_all("aaa", "aa", "b"), "ba");
    EXPECT_EQ(replace_all("abc", "x", "y"), "abc");
    EXPECT_EQ(replace_all("", "x", "y"), "");
    EXPECT_EQ(replace_all("axbx", "x", ""), "ab");
}

TEST(ReplaceAll, DoesNotReplaceInsideWhatItPutIn)
{
    EXPECT_EQ(replace_all("a\r\n", "\n", "\r\n"), "a\r\r\n");
    EXPECT_EQ(replace_all("x", "x", "xx"), "xx");
}

TEST(EqualAscii, TakesTheLettersOfEitherCaseForTheSame)
{
    EXPECT_TRUE(equal_ascii("", ""));
    EXPECT_TRUE(equal_ascii("*.CRS", "*.crs"));
    EXPECT_TRUE(equal_ascii("AZaz09_", "azAZ09_"));
    EXPECT_FALSE(equal_ascii("a", ""));
    EXPECT_FALSE(equal_ascii("", "a"));
    EXPECT_FALSE(equal_ascii("abc", "abcd"));
    EXPECT_FALSE(equal_ascii("abc", "abd"));
}

// Pairs of bytes that differ by 32, like an upper and a lower case letter, but are not ASCII letters.
TEST(EqualAscii, TellsAllOtherBytesApart)
{
    EXPECT_FALSE(equal_ascii("@", "`"));
    EXPECT_FALSE(equal_ascii("[", "{"));
    EXPECT_FALSE(equal_ascii("\xC3\x84", "\xC3\xA4"));
    EXPECT_FALSE(equal_ascii(std::string_view("\0", 1), " "));
    EXPECT_TRUE(equal_ascii("\xC3\x84", "\xC3\x84"));
}

TEST(LineEnds, of_every_kind_become_one)
{
    EXPECT_EQ(with_one_kind_of_line_end("a\r\nb\rc\nd\u2028e\u2029f\r\n\r\n"), "a\nb\nc\nd\ne\nf\n\n");
    EXPECT_EQ(with_one_kind_of_line_end("\r\r\n"), "\n\n");
    EXPECT_EQ(with_one_kind_of_line_end("no end"), "no end");
}

TEST(TrimBlanksAndLineEnds, takes_both_from_both_ends_only)
{
    EXPECT_EQ(trim_blanks_and_line_ends(" \r\n a \r\n b\n \r"), "a \r\n b");
    EXPECT_EQ(trim_blanks_and_line_ends(" \r\n \n"), "");
    EXPECT_EQ(trim_blanks_and_line_ends("\ta"), "\ta");
}

} // namespace
} // namespace cuedrill::common
