#include "common/errors.h"
#include "exchange/text_decoding.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::exchange {
namespace {

using namespace std::string_literals;

/// Names the cases of a table in the list of tests.
constexpr auto by_name = [](const auto& table_case) { return std::string(table_case.param.name); };

struct Decoding {
    const char* name;
    std::string bytes;
    std::string text;
};

class DecodedText : public testing::TestWithParam<Decoding> {};

TEST_P(DecodedText, is_utf8_without_mark_and_nul)
{
    EXPECT_EQ(decode_text(GetParam().bytes), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Encodings, DecodedText,
    testing::Values(Decoding{"empty", "", ""}, Decoding{"ascii", "@Q@ x @A@ y\r\n", "@Q@ x @A@ y\r\n"},
                    Decoding{"utf8_without_mark", "caf\xC3\xA9 \xE2\x82\xAC", "café €"},
                    Decoding{"utf8_with_mark", "\xEF\xBB\xBF@Q@ caf\xC3\xA9", "@Q@ café"},
                    Decoding{"mark_alone", "\xEF\xBB\xBF", ""},
                    Decoding{"only_the_first_mark_is_one", "\xEF\xBB\xBF\xEF\xBB\xBFx", "\xEF\xBB\xBFx"},
                    Decoding{"ill_formed_after_the_mark",
                             "\xEF\xBB\xBF"
                             "a\xE9z \xC3\xA9",
                             "a\xEF\xBF\xBDz é"},
                    Decoding{"each_ill_formed_byte_after_the_mark", "\xEF\xBB\xBF\xE2\x82", "\xEF\xBF\xBD\xEF\xBF\xBD"},
                    Decoding{"surrogate_after_the_mark", "\xEF\xBB\xBF\xED\xA0\x80",
                             "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
                    Decoding{"code_page", "caf\xE9 \x80", "café €"},
                    Decoding{"code_page_where_one_byte_is_ill_formed", "\xC3\xA9 \xE9", "Ã© é"},
                    Decoding{"truncated_at_the_end_is_code_page", "abc\xC3", "abcÃ"},
                    Decoding{"part_of_a_mark_is_code_page", "\xEF\xBB", "ï»"},
                    Decoding{"nul_in_ascii", "a\0b\0\r\0\n"s, "ab\r\n"},
                    Decoding{"nul_in_utf8",
                             "\xEF\xBB\xBF"
                             "a\0\xC3\xA9\0"s,
                             "aé"},
                    Decoding{"nul_in_code_page", "\xE9\0x"s, "éx"}, Decoding{"nul_alone", "\0"s, ""}),
    by_name);

TEST(TextEncoding, is_utf8_where_all_of_the_bytes_are_well_formed)
{
    EXPECT_TRUE(is_read_as_utf8(""));
    EXPECT_TRUE(is_read_as_utf8("abc\r\n"));
    EXPECT_TRUE(is_read_as_utf8("caf\xC3\xA9"));
    EXPECT_TRUE(is_read_as_utf8("caf\xC3\0\xA9"s));
    EXPECT_FALSE(is_read_as_utf8("caf\xE9"));
    EXPECT_FALSE(is_read_as_utf8("caf\xC3\xA9 \xE9"));
}

class Utf16File : public testing::TestWithParam<std::string> {};

TEST_P(Utf16File, is_refused_with_words_that_help)
{
    try {
        (void)decode_text(GetParam());
        FAIL() << "not refused";
    } catch (const common::Error& error) {
        EXPECT_STREQ(error.what(),
                     "The file is encoded as UTF-16. Save it as UTF-8 or Windows-1252 and import it again.");
    }
}

INSTANTIATE_TEST_SUITE_P(Marks, Utf16File,
                         testing::Values("\xFF\xFE@\0Q\0@\0"s, "\xFE\xFF\0@\0Q\0@"s, "\xFF\xFE"s, "\xFE\xFF"s));

using Lines = std::vector<std::string>;

Lines lines_of(std::string_view text)
{
    Lines lines;
    LineReader reader(text);
    while (const auto line = reader.next())
        lines.emplace_back(*line);
    EXPECT_EQ(reader.next(), std::nullopt) << "a reader at its end stays there";
    return lines;
}

struct Splitting {
    const char* name;
    std::string text;
    Lines lines;
};

class SplitText : public testing::TestWithParam<Splitting> {};

TEST_P(SplitText, gives_its_lines)
{
    EXPECT_EQ(lines_of(GetParam().text), GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(Lines, SplitText,
                         testing::Values(Splitting{"empty_text_has_none", "", {}}, Splitting{"unended", "a", {"a"}},
                                         Splitting{"ended", "a\r\n", {"a"}},
                                         Splitting{"last_unended", "a\r\nb", {"a", "b"}},
                                         Splitting{"empty_lines", "\r\n\r\na\r\n\r\n", {"", "", "a", ""}},
                                         Splitting{"lone_lf_beside_cr_lf", "a\nb\r\nc\n", {"a\nb", "c\n"}},
                                         Splitting{"cr_lf_only_at_the_end", "a\nb\r\n", {"a\nb"}},
                                         Splitting{"lone_cr_beside_cr_lf", "a\rb\r\r\nc\r", {"a\rb\r", "c\r"}},
                                         Splitting{"lf_where_there_is_no_cr_lf", "a\n\nb\n", {"a", "", "b"}},
                                         Splitting{"lf_last_unended", "a\nb", {"a", "b"}},
                                         Splitting{"lone_cr_beside_lf", "a\rb\nc", {"a\rb", "c"}},
                                         Splitting{"lone_cr_alone_ends_nothing", "a\rb\r", {"a\rb\r"}},
                                         Splitting{"lf_cr_is_no_pair", "a\n\rb", {"a", "\rb"}}),
                         by_name);

TEST(LineReader, gives_views_into_the_text)
{
    const std::string text = "first\r\nsecond";
    LineReader reader(text);
    EXPECT_EQ(reader.next()->data(), text.data());
    EXPECT_EQ(reader.next()->data(), text.data() + 7);
}

} // namespace
} // namespace cuedrill::exchange
