#include "common/errors.h"
#include "common/text.h"
#include "platform/icu/icu_text_compare.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace cuedrill::platform::icu {
namespace {

const IcuTextCompare& order()
{
    static const IcuTextCompare instance;
    return instance;
}

int sign(int value)
{
    return (value > 0) - (value < 0);
}

std::string utf8(char32_t point)
{
    const auto byte = [](char32_t value) { return static_cast<char>(static_cast<unsigned char>(value)); };
    if (point < 0x80)
        return {byte(point)};
    if (point < 0x800)
        return {byte(0xC0 | point >> 6U), byte(0x80 | (point & 0x3FU))};
    return {byte(0xE0 | point >> 12U), byte(0x80 | (point >> 6U & 0x3FU)), byte(0x80 | (point & 0x3FU))};
}

/// The 256 characters of code page 1252; the five undefined bytes map to the control codes of the same number.
std::vector<char32_t> code_page_1252()
{
    constexpr char32_t upper[32] = {0x20AC, 0x81,   0x201A, 0x192,  0x201E, 0x2026, 0x2020, 0x2021,
                                    0x2C6,  0x2030, 0x160,  0x2039, 0x152,  0x8D,   0x17D,  0x8F,
                                    0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                    0x2DC,  0x2122, 0x161,  0x203A, 0x153,  0x9D,   0x17E,  0x178};
    std::vector<char32_t> points;
    for (char32_t code = 0; code < 256; ++code)
        points.push_back(code >= 0x80 && code < 0xA0 ? upper[code - 0x80] : code);
    return points;
}

/// The lower-case letter for a capital of the code page, taken from its table; other characters map to themselves.
char32_t small_letter(char32_t point)
{
    const bool capital = (point >= 'A' && point <= 'Z') || (point >= 0xC0 && point <= 0xDE && point != 0xD7);
    if (capital)
        return point + 0x20;
    switch (point) {
    case 0x160:
    case 0x152:
    case 0x17D:
        return point + 1;
    case 0x178:
        return 0xFF;
    default:
        return point;
    }
}

TEST(Equality, IgnoresNothingButCaseForAllPairsOfCodePage1252)
{
    for (const char32_t a : code_page_1252())
        for (const char32_t b : code_page_1252())
            ASSERT_EQ(order().equal(utf8(a), utf8(b)), small_letter(a) == small_letter(b))
                << std::hex << std::uint32_t{a} << ' ' << std::uint32_t{b};
}

TEST(Equality, HoldsExactlyWhereCompareGivesZeroForAllPairsOfCodePage1252)
{
    for (const char32_t a : code_page_1252())
        for (const char32_t b : code_page_1252()) {
            const int result = order().compare(utf8(a), utf8(b));
            ASSERT_EQ(order().equal(utf8(a), utf8(b)), result == 0)
                << std::hex << std::uint32_t{a} << ' ' << std::uint32_t{b};
            ASSERT_EQ(sign(order().compare(utf8(b), utf8(a))), -sign(result))
                << std::hex << std::uint32_t{a} << ' ' << std::uint32_t{b};
        }
}

TEST(Equality, FoldsCaseBeyondLatinLetters)
{
    EXPECT_TRUE(order().equal("ΑΒΓ", "αβγ"));
    EXPECT_TRUE(order().equal("ПРИВЕТ", "привет"));
    EXPECT_TRUE(order().equal("ΟΔΟΣ", "οδος")) << "both small sigmas fold to one";
    EXPECT_TRUE(order().equal("\u1E9E", "\u00DF")) << "capital and small sharp s";
    EXPECT_TRUE(order().equal("\u023A", "\u2C65")) << "folding makes the text longer";
    EXPECT_TRUE(order().equal("\U00010400", "\U00010428")) << "outside the first plane";
}

TEST(Equality, KeepsTheTurkishLettersApart)
{
    EXPECT_FALSE(order().equal("\u0130", "i"));
    EXPECT_FALSE(order().equal("\u0131", "i"));
    EXPECT_FALSE(order().equal("\u0130", "\u0131"));
}

TEST(Equality, NeverTakesOneCharacterForSeveral)
{
    EXPECT_FALSE(order().equal("Straße", "Strasse"));
    EXPECT_FALSE(order().equal("\uFB01", "fi"));
    EXPECT_FALSE(order().equal("æ", "ae"));
}

TEST(Equality, TellsLookalikesApart)
{
    const std::pair<std::string_view, std::string_view> pairs[] = {
        {"x²", "x2"}, {"ª", "a"}, {"é", "e"}, {"a", "a\u0001"}, {"a\u00A0b", "a b"}, {"co-op", "coop"}, {"", " "}};
    for (const auto& [a, b] : pairs) {
        EXPECT_FALSE(order().equal(a, b)) << a << ' ' << b;
        EXPECT_NE(order().compare(a, b), 0) << a << ' ' << b;
    }
}

TEST(Equality, SeesEverythingBehindAZeroByte)
{
    EXPECT_FALSE(order().equal(std::string_view("a\0b", 3), std::string_view("a\0c", 3)));
    EXPECT_TRUE(order().equal(std::string_view("a\0b", 3), std::string_view("A\0B", 3)));
    EXPECT_FALSE(order().equal("a", std::string_view("a\0", 2)));
}

TEST(Folding, IsTheSameExactlyForEqualTextsForAllPairsOfCodePage1252)
{
    for (const char32_t a : code_page_1252())
        for (const char32_t b : code_page_1252())
            ASSERT_EQ(order().fold(utf8(a)) == order().fold(utf8(b)), order().equal(utf8(a), utf8(b)))
                << std::hex << std::uint32_t{a} << ' ' << std::uint32_t{b};
}

TEST(Folding, GivesSmallLettersForCodePage1252)
{
    for (const char32_t point : code_page_1252()) {
        // The micro sign is the only character of the page that folds to a letter of another alphabet.
        const std::string folded = point == 0xB5 ? "\u03BC" : utf8(small_letter(point));
        ASSERT_EQ(order().fold(utf8(point)), folded) << std::hex << std::uint32_t{point};
    }
}

TEST(Folding, IsThatOfSingleCharacters)
{
    EXPECT_EQ(order().fold("Stra\u00DFE"), "stra\u00DFe") << "the sharp s stays one character";
    EXPECT_EQ(order().fold("\u1E9E"), "\u00DF") << "the capital one is its capital";
    EXPECT_EQ(order().fold("\u0130\u0131"), "\u0130\u0131") << "both Turkish letters stay";
    EXPECT_EQ(order().fold("ΟΔΟΣ ς"), "οδοσ σ") << "one sigma, wherever it stands";
    EXPECT_EQ(order().fold("\U00010400x\U00010427"), "\U00010428x\U0001044F") << "Deseret capitals";
    EXPECT_EQ(order().fold("\uFB01 \u01C4"), "\uFB01 \u01C6") << "ligatures are not taken apart";
    EXPECT_EQ(order().fold(std::string_view("A\0B", 3)), std::string("a\0b", 3));
    EXPECT_EQ(order().fold(""), "");
}

TEST(Folding, KeepsThePlaces)
{
    for (const std::string_view text :
         {"Straße", "\u0130\u1E9E\u023A", "ÀÉ\u0301 Ÿ", "\uFB03\U00010400\U0001F600", "\u1F88\u0390\u0587"})
        EXPECT_EQ(common::code_points(order().fold(text)), common::code_points(text)) << text;
}

TEST(Order, IsAlphabeticalNotByCode)
{
    const std::vector<std::string> sorted = {"",    " ",    "_",    "1",    "10",   "2",     "a",   "Äpfel", "apple",
                                             "Apt", "cote", "coté", "côte", "côté", "Émile", "emu", "z",     "Zoë"};
    for (std::size_t i = 0; i + 1 < sorted.size(); ++i)
        EXPECT_LT(order().compare(sorted[i], sorted[i + 1]), 0) << sorted[i] << " < " << sorted[i + 1];
}

TEST(Order, IgnoresCaseEntirely)
{
    EXPECT_EQ(order().compare("CUEDRILL", "cuedrill"), 0);
    EXPECT_LT(order().compare("a", "B"), 0);
    EXPECT_LT(order().compare("A", "b"), 0);
    EXPECT_EQ(sign(order().compare("ÉTÉ", "zéro")), sign(order().compare("été", "ZÉRO")));
}

TEST(Order, BreaksTiesOfTheAlphabetByCodePoint)
{
    EXPECT_LT(order().compare("a\u0001", "a\u0002"), 0);
    EXPECT_GT(order().compare("a\u0002", "a\u0001"), 0);
    EXPECT_LT(order().compare("a", "a\u0001"), 0);
    EXPECT_NE(order().compare("e\u0301", "\u00E9"), 0) << "not brought to the normal form";
}

// The database searches an index by bisection, which loses rows unless the order is total.
TEST(Order, IsTotalOverTextsOfAwkwardPieces)
{
    const std::vector<std::string> pieces = {"a",      "A",    "á",      "a\u0301", "b",      "\u0001", " ",
                                             "-",      "ß",    "ss",     "\u0301",  "\u0327", "ς",      "Σ",
                                             "\xFF",   "\xC3", "\uFFFD", "\u0E40",  "\u0E01", "1",      "²",
                                             "\u00AD", "x",    "\uAC00", "\u1100",  "\u1161", "ch",     "\U0001F600"};
    std::mt19937 random(7);
    std::uniform_int_distribution<std::size_t> piece(0, pieces.size() - 1);
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < 400; ++i) {
        std::string text;
        for (std::size_t part = 0; part < i % 5; ++part)
            text += pieces[piece(random)];
        texts.push_back(text);
    }
    std::sort(texts.begin(), texts.end(),
              [](const std::string& a, const std::string& b) { return order().compare(a, b) < 0; });
    for (std::size_t i = 0; i < texts.size(); ++i)
        for (std::size_t j = i; j < texts.size(); ++j) {
            const int result = order().compare(texts[i], texts[j]);
            ASSERT_LE(result, 0) << testing::PrintToString(texts[i]) << ' ' << testing::PrintToString(texts[j]);
            ASSERT_EQ(sign(order().compare(texts[j], texts[i])), -sign(result));
            ASSERT_EQ(order().equal(texts[i], texts[j]), result == 0);
        }
}

TEST(IllFormedText, CountsAsReplacementCharacters)
{
    EXPECT_TRUE(order().equal("a\xFF", "A\uFFFD"));
    EXPECT_EQ(order().compare("a\xFF", "A\uFFFD"), 0);
    EXPECT_TRUE(order().equal("\xC3", "\x80")) << "a lead byte alone, a continuation alone";
    EXPECT_FALSE(order().equal("\xC3\xC3", "\xC3"));
    EXPECT_EQ(order().fold("A\xFF\xC3"), "a\uFFFD\uFFFD");
    EXPECT_EQ(order().fold("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD") << "half of a surrogate pair";
    EXPECT_EQ(order().lower("A\xFF"), "a\uFFFD");
    EXPECT_EQ(order().nfc("A\xFF"), "A\uFFFD");
}

// Short texts are folded in a fixed buffer; longer ones must give the same result.
TEST(LongText, IsComparedLikeAShortOne)
{
    for (const std::string_view letter : {"A", "É", "Ⱥ", "\xFF"})
        for (std::size_t count = 500; count <= 520; ++count) {
            std::string text;
            for (std::size_t i = 0; i < count; ++i)
                text += letter;
            ASSERT_TRUE(order().equal(text, text + ""));
            ASSERT_EQ(common::code_points(order().fold(text)), count);
            ASSERT_FALSE(order().equal(text + "a", text + "b"));
            ASSERT_LT(order().compare(text + "a", text + "B"), 0);
            ASSERT_EQ(order().compare(text + "b", text + "B"), 0);
        }
}

TEST(LongText, IsRefusedBeyondTheLimitsOfTheLibrary)
{
    // The view reaches beyond its text; only its length is read.
    const std::string_view endless("x", (std::size_t{1} << 28U) + 1);
    EXPECT_THROW(static_cast<void>(order().equal(endless, "x")), common::Error);
    EXPECT_THROW(static_cast<void>(order().compare("x", endless)), common::Error);
    EXPECT_THROW(static_cast<void>(order().fold(endless)), common::Error);
    EXPECT_THROW(static_cast<void>(order().lower(endless)), common::Error);
}

TEST(LowerCase, FollowsUnicodeNotALocale)
{
    EXPECT_EQ(order().lower("ABC xyz 123"), "abc xyz 123");
    EXPECT_EQ(order().lower("ÄÖÜ ÉÀ ŠŒŽŸ"), "äöü éà šœžÿ");
    EXPECT_EQ(order().lower("INI"), "ini");
    EXPECT_EQ(order().lower("\u0130"), "i\u0307") << "longer than its source";
    EXPECT_EQ(order().lower("ΟΔΟΣ"), "οδος") << "a sigma at the end of a word";
    EXPECT_EQ(order().lower(""), "");
    EXPECT_EQ(order().lower(std::string_view("A\0B", 3)), std::string("a\0b", 3));
}

TEST(NormalForm, ComposesLettersAndTheirMarks)
{
    EXPECT_EQ(order().nfc("e\u0301te\u0301"), "\u00E9t\u00E9");
    EXPECT_EQ(order().nfc("\u1100\u1161"), "\uAC00");
    EXPECT_EQ(order().nfc("\u212B"), "\u00C5") << "the Angstrom sign";
}

TEST(NormalForm, LeavesComposedTextsAndCompatibilityCharactersAlone)
{
    for (const std::string_view text : {"", "plain", "été", "x²", "\uFB01", "😀", "a\r\nb\t"})
        EXPECT_EQ(order().nfc(text), text);
}

TEST(NormalForm, ComposesWithTheFirstOfTheMarks)
{
    EXPECT_EQ(order().nfc("a\u0300"), "\u00E0");
    EXPECT_EQ(order().nfc("\u02FFa"), "\u02FFa") << "the last character before the marks";
}

// Latin letters need no look into the tables, but bytes that are none do.
TEST(NormalForm, HasNoIllFormedBytesAmongLatinLetters)
{
    EXPECT_EQ(order().nfc("\xC3"), "\uFFFD");
    EXPECT_EQ(order().nfc("\xC3x\xC3\xA9"), "\uFFFDx\u00E9");
    EXPECT_EQ(order().nfc("\xC0\x80"), "\uFFFD\uFFFD");
    EXPECT_EQ(order().nfc("\x80"), "\uFFFD");
}

TEST(NormalForm, MayBeLongerThanItsSource)
{
    EXPECT_EQ(order().nfc("\u0958"), "\u0915\u093C");
    EXPECT_EQ(order().nfc("\u1D16\U0001D160"), "\u1D16\U0001D158\U0001D165\U0001D16E");
}

TEST(OrderVersion, IsTheSameForTheSameRules)
{
    EXPECT_EQ(IcuTextCompare().order_version(), order().order_version());
    EXPECT_EQ(IcuTextCompare("en_GB").order_version(), order().order_version());
}

TEST(OrderVersion, ChangesWithTheLocale)
{
    EXPECT_NE(IcuTextCompare("sv").order_version(), order().order_version());
    EXPECT_NE(IcuTextCompare("en_US").order_version(), order().order_version());
}

TEST(OtherLocale, SortsByItsOwnAlphabet)
{
    EXPECT_LT(order().compare("ä", "z"), 0);
    EXPECT_GT(IcuTextCompare("sv").compare("ä", "z"), 0);
}

// The requested order does not exist: ICU's status becomes an error of the program.
TEST(FailedConstruction, IsReportedInWords)
{
    try {
        const IcuTextCompare impossible("en@colStrength=nonsense");
        FAIL() << "no error";
    } catch (const common::Error& error) {
        EXPECT_EQ(std::string(error.what()),
                  "The text library failed to load the alphabetical order: U_ILLEGAL_ARGUMENT_ERROR.");
    }
}

TEST(SharedUse, OneOrderServesSeveralThreads)
{
    const auto disagreements = [](std::size_t& count) {
        for (int i = 0; i < 5000; ++i)
            count +=
                order().compare("Äpfel", "apple") >= 0 || !order().equal("É", "é") || order().nfc("e\u0301") != "é";
    };
    std::size_t counts[4] = {};
    std::vector<std::thread> threads;
    for (std::size_t& count : counts)
        threads.emplace_back(disagreements, std::ref(count));
    for (std::thread& thread : threads)
        thread.join();
    for (const std::size_t count : counts)
        EXPECT_EQ(count, 0U);
}

} // namespace
} // namespace cuedrill::platform::icu
