#include "common/errors.h"
#include "exchange/decks/deck_fixture.h"
#include "exchange/decks/decoded_file.h"
#include "platform/icu/icu_text_conversions.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace cuedrill::decks {
namespace {

using namespace std::string_literals;

const platform::icu::IcuTextConversions conversions;

std::string whole(DecodedFile& file)
{
    std::string text;
    while (const auto piece = file.read())
        text += *piece;
    EXPECT_EQ(file.read(), std::nullopt) << "it stays at its end";
    return text;
}

std::string decoded(const std::string& bytes, std::optional<Encoding> encoding = {})
{
    DecodedFile file(file_of(bytes), conversions, encoding);
    return whole(file);
}

struct Case {
    const char* name;
    std::string bytes;
    std::string text;
    std::optional<Encoding> encoding = {};
};

class DecodedText : public testing::TestWithParam<Case> {};

TEST_P(DecodedText, is_utf8)
{
    EXPECT_EQ(decoded(GetParam().bytes, GetParam().encoding), GetParam().text);
}

TEST_P(DecodedText, has_a_beginning_that_is_all_of_a_short_file)
{
    const DecodedFile file(file_of(GetParam().bytes), conversions, GetParam().encoding);
    EXPECT_EQ(file.beginning(), GetParam().text);
    EXPECT_TRUE(file.is_whole());
    EXPECT_EQ(file.percent(), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Found, DecodedText,
                         testing::Values(Case{"empty", "", ""}, Case{"ascii", "abc\r\n", "abc\r\n"},
                                         Case{"utf8", "café €", "café €"},
                                         Case{"utf8_with_mark",
                                              "\xEF\xBB\xBF"
                                              "café",
                                              "café"},
                                         Case{"utf8_with_mark_and_bad_bytes",
                                              "\xEF\xBB\xBF"
                                              "caf\xE9",
                                              "caf\xFF"},
                                         Case{"code_page_1252", "caf\xE9 \x80", "café €"},
                                         Case{"incomplete_at_the_end", "caf\xC3", "cafÃ"},
                                         Case{"nul_bytes", "a\0b, and more behind it"s, "ab, and more behind it"},
                                         Case{"utf16_le_with_mark", "\xFF\xFE\x16\x04\x20\x04"s, "ЖР"},
                                         Case{"utf16_be_with_mark", "\xFE\xFF\x04\x16\x04\x20"s, "ЖР"},
                                         Case{"utf16_le_without_mark", "a\0b\0\xE9\0\n\0"s, "abé\n"},
                                         Case{"utf16_be_without_mark", "\0a\0b\0\xE9\0\n"s, "abé\n"},
                                         Case{"cyrillic_utf16_without_mark", "\x16\x04\x20\0\x20\x04\n\0"s, "Ж Р\n"}),
                         [](const auto& text) { return std::string(text.param.name); });

INSTANTIATE_TEST_SUITE_P(Said, DecodedText,
                         testing::Values(Case{"utf8", "caf\xC3\xA9 \xE9", "café \xFF", Encoding::utf_8},
                                         Case{"utf8_with_mark",
                                              "\xEF\xBB\xBF"
                                              "a",
                                              "a", Encoding::utf_8},
                                         Case{"code_page_1252", "caf\xC3\xA9", "cafÃ©", Encoding::windows_1252},
                                         Case{"latin_2", "\xB1\xE6\xEA", "ąćę", Encoding::iso_8859_2},
                                         Case{"latin_1", "\xE9\x80", "é\xC2\x80", Encoding::iso_8859_1},
                                         Case{"latin_9", "\xA4", "€", Encoding::iso_8859_15},
                                         Case{"central_european", "\xB9", "ą", Encoding::windows_1250},
                                         Case{"cyrillic", "\xCC\xEE", "Мо", Encoding::windows_1251},
                                         Case{"russian", "\xED\xCF", "Мо", Encoding::koi8_r},
                                         Case{"japanese", "\x93\xFA\x96{ \x93", "日本 \xFF", Encoding::shift_jis},
                                         Case{"chinese", "\xD6\xD0", "中", Encoding::gb18030},
                                         Case{"utf16_by_its_mark", "\xFE\xFF\x04\x16"s, "Ж", Encoding::utf_16},
                                         Case{"utf16_by_its_look", "\0a\0b"s, "ab", Encoding::utf_16},
                                         Case{"utf16_without_either", "\x16\x04", "Ж", Encoding::utf_16},
                                         Case{"utf16_le_with_mark", "\xFF\xFE\x16\x04", "Ж", Encoding::utf_16_le},
                                         Case{"utf16_be", "\x04\x16", "Ж", Encoding::utf_16_be},
                                         Case{"utf16_with_half_a_character", "a\0b"s, "a\xFF", Encoding::utf_16_le},
                                         Case{"utf16_with_nul", "a\0\0\0b\0"s, "ab", Encoding::utf_16_le}),
                         [](const auto& text) { return std::string(text.param.name); });

/// Files whose first 64 KiB are not all of them.
class LongFile : public testing::Test {
protected:
    static constexpr std::size_t sample = DecodedFile::sample_size;
};

TEST_F(LongFile, of_ascii_at_first_is_what_all_of_it_is)
{
    const std::string ascii(sample + 1000, 'x');
    EXPECT_TRUE(decoded(ascii + "é") == ascii + "é");
    EXPECT_TRUE(decoded(ascii + "\xE9") == ascii + "é");
    EXPECT_TRUE(decoded(ascii + "é \xE9") == ascii + "Ã© é");
}

TEST_F(LongFile, of_utf8_at_first_stays_so)
{
    const std::string text = "é" + std::string(sample, 'x');
    EXPECT_TRUE(decoded(text + "\xE9") == text + "\xFF");
}

TEST_F(LongFile, of_other_bytes_at_first_is_no_utf8)
{
    const std::string text(sample, 'x');
    EXPECT_TRUE(decoded("\xE9" + text + "\xC3\xA9") == "é" + text + "Ã©");
}

TEST_F(LongFile, may_have_a_character_across_the_end_of_its_beginning)
{
    const std::string text = "é" + std::string(sample - 3, 'x');
    DecodedFile file(file_of(text + "é!"), conversions, {});
    EXPECT_FALSE(file.is_whole());
    EXPECT_TRUE(file.beginning() == text);
    EXPECT_TRUE(whole(file) == text + "é!");
}

TEST_F(LongFile, may_have_characters_across_its_pieces)
{
    std::string text = "x";
    while (text.size() < 3 * sample)
        text += "€𝄞";
    EXPECT_TRUE(decoded(text) == text);
}

TEST_F(LongFile, says_how_far_it_is_read)
{
    DecodedFile file(file_of(std::string(3'000'000, 'x')), conversions, {});
    std::vector<int> percents{file.percent().value_or(-1)};
    std::size_t longest = 0;
    while (const auto piece = file.read()) {
        percents.push_back(file.percent().value_or(-1));
        longest = std::max(longest, piece->size());
    }
    EXPECT_EQ(percents.front(), 0);
    EXPECT_EQ(percents.back(), 100);
    EXPECT_TRUE(std::is_sorted(percents.begin(), percents.end()));
    EXPECT_LE(longest, 16384U);
}

TEST_F(LongFile, that_fails_says_why)
{
    EXPECT_THROW(DecodedFile(std::make_unique<MemoryFile>("abc", 0), conversions, {}), common::Error);
    DecodedFile file(std::make_unique<MemoryFile>(std::string(3 * sample, 'x'), 2), conversions, {});
    expect_error([&] { static_cast<void>(whole(file)); }, "The disk cannot be read.");
}

TEST(NamedEncoding, is_found_in_either_case)
{
    EXPECT_EQ(encoding_named("utf-8"), Encoding::utf_8);
    EXPECT_EQ(encoding_named("SHIFT_JIS"), Encoding::shift_jis);
    for (const Encoding encoding : {Encoding::utf_8, Encoding::utf_16, Encoding::windows_1252, Encoding::koi8_r})
        EXPECT_EQ(encoding_named(name_of(encoding)), encoding);
}

TEST(NamedEncoding, that_is_not_known_is_told_with_those_that_are)
{
    expect_error([] { static_cast<void>(encoding_named("EBCDIC")); },
                 "The encoding \"EBCDIC\" is not known. Known are UTF-8, UTF-16, UTF-16LE, UTF-16BE, Windows-1252, "
                 "Windows-1250, Windows-1251, ISO-8859-1, ISO-8859-2, ISO-8859-15, Shift_JIS, GB18030, KOI8-R.");
}

} // namespace
} // namespace cuedrill::decks
