#include "common/text.h"
#include "exchange/code_page_1252.h"

#include <gtest/gtest.h>
#include <string>

namespace cuedrill::exchange {
namespace {

struct Case {
    unsigned char byte;
    const char* utf8;
};

class OwnCharacter : public testing::TestWithParam<Case> {};

TEST_P(OwnCharacter, becomes_its_unicode_character)
{
    EXPECT_EQ(code_page_1252_to_utf8(std::string(1, static_cast<char>(GetParam().byte))), GetParam().utf8);
}

TEST_P(OwnCharacter, becomes_its_byte_again)
{
    EXPECT_EQ(utf8_to_code_page_1252(GetParam().utf8), std::string(1, static_cast<char>(GetParam().byte)));
}

INSTANTIATE_TEST_SUITE_P(CodePage1252, OwnCharacter,
                         testing::Values(Case{0x80, "€"}, Case{0x82, "‚"}, Case{0x83, "ƒ"}, Case{0x84, "„"},
                                         Case{0x85, "…"}, Case{0x86, "†"}, Case{0x87, "‡"}, Case{0x88, "ˆ"},
                                         Case{0x89, "‰"}, Case{0x8A, "Š"}, Case{0x8B, "‹"}, Case{0x8C, "Œ"},
                                         Case{0x8E, "Ž"}, Case{0x91, "‘"}, Case{0x92, "’"}, Case{0x93, "“"},
                                         Case{0x94, "”"}, Case{0x95, "•"}, Case{0x96, "–"}, Case{0x97, "—"},
                                         Case{0x98, "˜"}, Case{0x99, "™"}, Case{0x9A, "š"}, Case{0x9B, "›"},
                                         Case{0x9C, "œ"}, Case{0x9E, "ž"}, Case{0x9F, "Ÿ"}, Case{0xA0, "\u00A0"},
                                         Case{0xBF, "¿"}, Case{0xC0, "À"}, Case{0xE9, "é"}, Case{0xFF, "ÿ"}));

INSTANTIATE_TEST_SUITE_P(UndefinedBytes, OwnCharacter,
                         testing::Values(Case{0x81, "\xC2\x81"}, Case{0x8D, "\xC2\x8D"}, Case{0x8F, "\xC2\x8F"},
                                         Case{0x90, "\xC2\x90"}, Case{0x9D, "\xC2\x9D"}));

TEST(CodePage1252, gives_one_character_for_each_byte)
{
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all.push_back(static_cast<char>(byte));
    const std::string text = code_page_1252_to_utf8(all);
    EXPECT_TRUE(common::is_utf8(text));
    EXPECT_EQ(common::code_points(text), 256U);
    EXPECT_EQ(text.substr(0, 128), all.substr(0, 128));
    EXPECT_EQ(utf8_to_code_page_1252(text), all);
}

TEST(CodePage1252, keeps_the_order_of_mixed_text)
{
    EXPECT_EQ(code_page_1252_to_utf8("caf\xE9 3 \x80\r\n"), "café 3 €\r\n");
    EXPECT_EQ(code_page_1252_to_utf8(""), "");
    EXPECT_EQ(utf8_to_code_page_1252("café 3 €\r\n"), "caf\xE9 3 \x80\r\n");
    EXPECT_EQ(utf8_to_code_page_1252(""), "");
}

class TextWithoutBytes : public testing::TestWithParam<const char*> {};

TEST_P(TextWithoutBytes, is_not_converted)
{
    EXPECT_EQ(utf8_to_code_page_1252(GetParam()), std::nullopt);
    EXPECT_EQ(utf8_to_code_page_1252("before " + std::string(GetParam()) + " after"), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(CodePage1252, TextWithoutBytes,
                         testing::Values("\u0080", "\u0082", "\u009F", "\u0100", "Ж", "e\u0301", "\uFEFF", "\uFFFD",
                                         "𝄞"));

INSTANTIATE_TEST_SUITE_P(IllFormed, TextWithoutBytes,
                         testing::Values("\xE9", "\xC3", "\x80", "\xC1\x81", "\xED\xA0\x80", "\xE0\x83\xA9"));

} // namespace
} // namespace cuedrill::exchange
