#include "common/errors.h"
#include "platform/icu/icu_text_conversions.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace cuedrill::platform::icu {
namespace {

using namespace std::string_literals;

/// Converts the text in pieces of that many bytes.
std::string converted(const std::string& encoding, const std::string& bytes, std::size_t piece = 1000)
{
    const auto conversion = IcuTextConversions().begin(encoding, '\xFF');
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += piece)
        text += conversion->convert(std::string_view(bytes).substr(at, piece));
    return text + conversion->finish();
}

struct Encoded {
    const char* name;
    const char* encoding;
    std::string bytes;
    std::string text;
};

class Conversion : public testing::TestWithParam<Encoded> {};

TEST_P(Conversion, gives_utf8)
{
    EXPECT_EQ(converted(GetParam().encoding, GetParam().bytes), GetParam().text);
}

TEST_P(Conversion, gives_the_same_for_pieces_of_any_size)
{
    for (const std::size_t piece : {1U, 2U, 3U, 5U})
        EXPECT_EQ(converted(GetParam().encoding, GetParam().bytes, piece), GetParam().text) << piece;
}

TEST_P(Conversion, of_a_long_text_has_all_of_it)
{
    std::string bytes;
    std::string text;
    for (int i = 0; i < 3000; ++i) {
        bytes += GetParam().bytes;
        text += GetParam().text;
    }
    EXPECT_TRUE(converted(GetParam().encoding, bytes, 100'000) == text);
    EXPECT_TRUE(converted(GetParam().encoding, bytes, 777) == text);
}

INSTANTIATE_TEST_SUITE_P(Encodings, Conversion,
                         testing::Values(Encoded{"latin_1", "ISO-8859-1", "caf\xE9", "café"},
                                         Encoded{"latin_2", "ISO-8859-2", "\xB1\xE6\xEA \xA3\xF3\xBC", "ąćę Łóź"},
                                         Encoded{"latin_9", "ISO-8859-15", "3 \xA4 \xBD", "3 € œ"},
                                         Encoded{"central_european", "windows-1250", "\xB9\xE6\xEA \x8A", "ąćę Š"},
                                         Encoded{"cyrillic", "windows-1251", "\xCC\xEE\xF1\xEA\xE2\xE0", "Москва"},
                                         Encoded{"russian", "KOI8-R", "\xED\xCF\xD3\xCB\xD7\xC1", "Москва"},
                                         Encoded{"japanese", "Shift_JIS", "\x93\xFA\x96{\\ ~ \xB1", "日本\\ ~ ｱ"},
                                         Encoded{"chinese", "GB18030", "\xD6\xD0\xCE\xC4 \x95\x32\x82\x36", "中文 𠀀"},
                                         Encoded{"utf16_little_endian", "UTF-16LE", "a\0\xE9\0\x34\xD8\x1E\xDD"s,
                                                 "aé𝄞"},
                                         Encoded{"utf16_big_endian", "UTF-16BE", "\0a\0\xE9\xD8\x34\xDD\x1E"s, "aé𝄞"}),
                         [](const auto& encoded) { return std::string(encoded.param.name); });

TEST(UnreadableText, has_one_sign_for_each_sequence_that_is_no_character)
{
    EXPECT_EQ(converted("Shift_JIS", "a\x93\x20\x93"), "a\xFF \xFF");
    EXPECT_EQ(converted("UTF-16LE", "a\0\x34\xD8z\0"s), "a\xFFz");
    EXPECT_EQ(converted("UTF-16LE", "a\0\x1E\xDDz\0\x34"s), "a\xFFz\xFF");
}

TEST(UnreadableText, is_not_what_the_text_has_as_a_replacement_character)
{
    EXPECT_EQ(converted("UTF-16LE", "\xFD\xFF"s), "\uFFFD");
}

TEST(UnknownEncoding, is_told_by_its_name)
{
    try {
        static_cast<void>(IcuTextConversions().begin("no-such-set", '?'));
        FAIL() << "nothing was thrown";
    } catch (const common::Error& error) {
        EXPECT_STREQ(error.what(), "The character set no-such-set is not known.");
    }
}

} // namespace
} // namespace cuedrill::platform::icu
