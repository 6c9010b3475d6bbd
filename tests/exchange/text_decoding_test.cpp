#include "common/errors.h"
#include "exchange/text_decoding.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::exchange {
namespace {

using namespace std::string_literals;

/// Names the test cases of a table.
constexpr auto by_name = [](const auto& table_case) { return std::string(table_case.param.name); };

/// What a reader with pieces of `size` bytes decodes.
std::string decoded(std::string_view bytes, std::size_t size)
{
    TextSurvey survey;
    for (std::size_t at = 0; at < bytes.size(); at += size)
        survey.add(std::string(bytes.substr(at, size)));
    TextDecoder decoder(survey.format());
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += size) {
        const std::string piece = decoder.decode(std::string(bytes.substr(at, size)));
        text += piece;
    }
    return text + decoder.finish();
}

struct Decoding {
    const char* name;
    std::string bytes;
    std::string text;
};

class DecodedText : public testing::TestWithParam<Decoding> {};

TEST_P(DecodedText, is_utf8_without_mark_and_nul)
{
    for (const std::size_t size : {1000U, 1U, 2U, 3U, 4U, 5U})
        EXPECT_EQ(decoded(GetParam().bytes, size), GetParam().text) << "in pieces of " << size;
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
                             "a\xFFz é"},
                    Decoding{"each_ill_formed_byte_after_the_mark", "\xEF\xBB\xBF\xE2\x82", "\xFF\xFF"},
                    Decoding{"surrogate_after_the_mark", "\xEF\xBB\xBF\xED\xA0\x80", "\xFF\xFF\xFF"},
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
        TextSurvey().add(GetParam());
        FAIL() << "not refused";
    } catch (const common::Error& error) {
        EXPECT_STREQ(error.what(),
                     "The file is encoded as UTF-16. Save it as UTF-8 or Windows-1252 and import it again.");
    }
}

INSTANTIATE_TEST_SUITE_P(Marks, Utf16File,
                         testing::Values("\xFF\xFE@\0Q\0@\0"s, "\xFE\xFF\0@\0Q\0@"s, "\xFF\xFE"s, "\xFE\xFF"s));

using Lines = std::vector<std::string>;

/// The lines of a text added in pieces of `size` bytes.
Lines lines_of(std::string_view text, std::size_t size)
{
    TextSurvey survey;
    for (std::size_t at = 0; at < text.size(); at += size)
        survey.add(std::string(text.substr(at, size)));
    LineSplitter splitter(survey.format().line_end);
    Lines lines;
    bool in_line = false;
    const auto add = [&](std::string_view part) {
        if (!in_line)
            lines.emplace_back();
        in_line = in_line || !part.empty();
        lines.back() += part;
    };
    const auto end = [&] { in_line = false; };
    for (std::size_t at = 0; at < text.size(); at += size)
        splitter.add(std::string(text.substr(at, size)), add, end);
    splitter.finish(add);
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
    for (const std::size_t size : {1000U, 1U, 2U, 3U})
        EXPECT_EQ(lines_of(GetParam().text, size), GetParam().lines) << "in pieces of " << size;
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
                                         Splitting{"cr_where_there_is_no_lf", "a\r\rb\r", {"a", "", "b"}},
                                         Splitting{"lf_cr_is_no_pair", "a\n\rb", {"a", "\rb"}}),
                         by_name);

} // namespace
} // namespace cuedrill::exchange
