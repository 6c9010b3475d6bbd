#include "exchange/decks/table_parser.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cuedrill::decks {
namespace {

using Fields = std::vector<std::string>;
using Rows = std::vector<Fields>;
using Lines = std::vector<std::int64_t>;

struct Table {
    Rows rows{};
    Lines lines{};
    bool has_more = false;
    UnclosedQuotes unclosed{};
};

Table parsed(std::string_view text, const TableShape& shape = {}, std::size_t piece = 1'000'000'000)
{
    Table table;
    const TableParser::Sink sink = [&](TableRow row) {
        table.rows.push_back(std::move(row.fields));
        table.lines.push_back(row.line);
        table.has_more = table.has_more || row.has_more;
    };
    TableParser parser(shape);
    for (; !text.empty(); text.remove_prefix(std::min(piece, text.size())))
        parser.add(text.substr(0, piece), sink);
    parser.finish(sink);
    table.unclosed = parser.unclosed();
    return table;
}

struct Case {
    const char* name;
    std::string text;
    Rows rows;
    Lines lines;
    TableShape shape = {};
};

class ParsedTable : public testing::TestWithParam<Case> {};

TEST_P(ParsedTable, has_its_rows_with_their_lines)
{
    const Table table = parsed(GetParam().text, GetParam().shape);
    EXPECT_EQ(table.rows, GetParam().rows);
    EXPECT_EQ(table.lines, GetParam().lines);
    EXPECT_EQ(table.unclosed.count, 0);
    EXPECT_FALSE(table.has_more);
}

TEST_P(ParsedTable, is_the_same_in_pieces_of_any_size)
{
    for (std::size_t piece = 1; piece <= 7; ++piece) {
        const Table table = parsed(GetParam().text, GetParam().shape, piece);
        EXPECT_EQ(table.rows, GetParam().rows) << piece;
        EXPECT_EQ(table.lines, GetParam().lines) << piece;
    }
}

const TableShape tabs{.separator = '\t', .quote = '"', .comment = '\0'};
const TableShape single_quotes{.separator = ';', .quote = '\'', .comment = '\0'};
const TableShape no_quotes{.separator = ',', .quote = '\0', .comment = '\0'};
const TableShape comments{.separator = ',', .quote = '"', .comment = '#'};
const TableShape blanks{.separator = ' ', .quote = '"', .comment = '\0'};

INSTANTIATE_TEST_SUITE_P(
    Tables, ParsedTable,
    testing::Values(
        Case{"empty", "", {}, {}}, Case{"one_row", "a,b", {{"a", "b"}}, {1}},
        Case{"line_feeds", "a,b\nc,d\n", {{"a", "b"}, {"c", "d"}}, {1, 2}},
        Case{"carriage_returns", "a,b\rc,d\r", {{"a", "b"}, {"c", "d"}}, {1, 2}},
        Case{"both", "a,b\r\nc,d\r\n", {{"a", "b"}, {"c", "d"}}, {1, 2}},
        Case{"mixed_line_ends", "a\r\nb\nc\rd\n\re", {{"a"}, {"b"}, {"c"}, {"d"}, {"e"}}, {1, 2, 3, 4, 6}},
        Case{"empty_fields", ",\na,\n,b\n,,", {{"", ""}, {"a", ""}, {"", "b"}, {"", "", ""}}, {1, 2, 3, 4}},
        Case{"blank_lines", "\n\na,b\n \t \r\n\nc,d\n\n", {{"a", "b"}, {"c", "d"}}, {3, 6}},
        Case{"quoted_empty_line", "\"\"\na", {{""}, {"a"}}, {1, 2}},
        Case{"blanks_are_kept", " a , b ", {{" a ", " b "}}, {1}},
        Case{"quoted", "\"a\",\"b\"\n\"c\",d", {{"a", "b"}, {"c", "d"}}, {1, 2}},
        Case{"quoted_separator", "\"a,b\",c", {{"a,b", "c"}}, {1}},
        Case{"doubled_quotes", "\"a \"\"b\"\"\",\"\"\"\"", {{"a \"b\"", "\""}}, {1}},
        Case{"quoted_line_breaks",
             "\"a\r\nb\",c\r\n\"d\ne\rf\",g\nh",
             {{"a\nb", "c"}, {"d\ne\nf", "g"}, {"h"}},
             {1, 3, 6}},
        Case{"quoted_empty_lines", "\"a\n\n\r\n\rb\"\nc", {{"a\n\n\n\nb"}, {"c"}}, {1, 6}},
        Case{"quoted_field_at_the_end", "a,\"b\"", {{"a", "b"}}, {1}},
        Case{"blanks_behind_a_quoted_field", "\"a\" \t,\"b\"  \n\"c\" ", {{"a", "b"}, {"c"}}, {1, 2}},
        Case{"stray_quotes", "a\"b,5\" wide,c\"\n", {{"a\"b", "5\" wide", "c\""}}, {1}},
        Case{"quotes_behind_a_blank", " \"a\"", {{" \"a\""}}, {1}},
        Case{"more_behind_the_closing_quote", "\"Hello\" he said,x", {{"\"Hello\" he said", "x"}}, {1}},
        Case{"more_behind_two_quoted_words", "\"a\" or \"b\",c\nd", {{"\"a\" or \"b\"", "c"}, {"d"}}, {1, 2}},
        Case{"more_behind_a_quoted_line_break", "\"a\nb\"c,d\ne", {{"\"a"}, {"b\"c", "d"}, {"e"}}, {1, 2, 3}},
        Case{"quote_behind_a_closed_field", "\"a\" \"b\"", {{"\"a\" \"b\""}}, {1}},
        Case{"tabs", "a\t\"b\tc\"\td,e", {{"a", "b\tc", "d,e"}}, {1}, tabs},
        Case{"tab_behind_a_quoted_field", "\"a\"\tb", {{"a", "b"}}, {1}, tabs},
        Case{"single_quotes", "'a;''b';\"c\"", {{"a;'b", "\"c\""}}, {1}, single_quotes},
        Case{"no_quotes", "\"a,b\"", {{"\"a", "b\""}}, {1}, no_quotes},
        Case{"comments", "# a,b\n#\"\nc,#d\n\"#e\"\n #f\n#", {{"c", "#d"}, {"#e"}, {" #f"}}, {3, 4, 5}, comments},
        Case{"no_comments", "#a,b", {{"#a", "b"}}, {1}},
        Case{"blanks_as_separators", "a \"b c\" d", {{"a", "b c", "d"}}, {1}, blanks},
        Case{"utf8", "é,\"ü\nж\"", {{"é", "ü\nж"}}, {1}}),
    [](const auto& table) { return std::string(table.param.name); });

TEST(FirstLine, is_what_the_parser_is_told)
{
    std::vector<std::int64_t> lines;
    const TableParser::Sink sink = [&](const TableRow& row) { lines.push_back(row.line); };
    TableParser parser({}, 7);
    parser.add("a\n\nb", sink);
    parser.finish(sink);
    EXPECT_EQ(lines, (Lines{7, 9}));
}

/// Proves that a quotation mark without an end takes no further row away.
class UnclosedQuote : public testing::TestWithParam<std::size_t> {
protected:
    static Table in_pieces(std::string_view text) { return parsed(text, {}, GetParam()); }
};

TEST_P(UnclosedQuote, is_an_ordinary_character_and_told_with_its_line)
{
    const Table table = in_pieces("a,b\nc,\"d\ne,f\r\ng,h\n");
    EXPECT_EQ(table.rows, (Rows{{"a", "b"}, {"c", "\"d"}, {"e", "f"}, {"g", "h"}}));
    EXPECT_EQ(table.lines, (Lines{1, 2, 3, 4}));
    EXPECT_EQ(table.unclosed.count, 1);
    EXPECT_EQ(table.unclosed.first_line, 2);
}

TEST_P(UnclosedQuote, may_have_well_formed_fields_behind_it)
{
    const Table table = in_pieces("a,\"b\nc,\"\"\"\"\n\"\"\nd,\"\"");
    EXPECT_EQ(table.rows, (Rows{{"a", "\"b"}, {"c", "\""}, {""}, {"d", ""}}));
    EXPECT_EQ(table.unclosed.count, 1);
}

TEST_P(UnclosedQuote, may_be_the_last_character)
{
    const Table table = in_pieces("a\n\"");
    EXPECT_EQ(table.rows, (Rows{{"a"}, {"\""}}));
    EXPECT_EQ(table.unclosed.first_line, 2);
}

TEST_P(UnclosedQuote, ends_with_the_text_in_a_doubled_one)
{
    const Table table = in_pieces("\"a\"\"");
    EXPECT_EQ(table.rows, (Rows{{"\"a\"\""}}));
    EXPECT_EQ(table.unclosed.count, 1);
}

TEST_P(UnclosedQuote, is_found_where_a_field_is_longer_than_any_text)
{
    std::string text = "\"a\nb,c\n";
    while (text.size() < 3 * TableParser::longest_quoted)
        text += "a line without any mark\n";
    text += "\"x\",\"y\n";
    const Table table = in_pieces(text);
    EXPECT_EQ(table.unclosed.count, 2);
    EXPECT_EQ(table.unclosed.first_line, 1);
    ASSERT_GT(table.rows.size(), 1000U);
    EXPECT_EQ(table.rows[0], (Fields{"\"a"}));
    EXPECT_EQ(table.rows[1], (Fields{"b", "c"}));
    EXPECT_EQ(table.rows[2], (Fields{"a line without any mark"}));
    EXPECT_EQ(table.rows.back(), (Fields{"x", "\"y"}));
    EXPECT_EQ(table.lines.back(), static_cast<std::int64_t>(table.rows.size()));
}

INSTANTIATE_TEST_SUITE_P(Pieces, UnclosedQuote, testing::Values(1U, 2U, 3U, 16384U, 1'000'000'000U));

TEST(LongField, keeps_its_beginning)
{
    constexpr std::size_t most = TableParser::most_kept;
    const Table table =
        parsed(std::string(most, 'x') + "," + std::string(most + 1, 'y') + ",\"" + std::string(most, 'z') + "z\",end");
    ASSERT_EQ(table.rows.size(), 1U);
    EXPECT_TRUE(table.rows[0] ==
                (Fields{std::string(most, 'x'), std::string(most, 'y'), std::string(most, 'z'), "end"}));
}

TEST(LongField, is_never_cut_inside_a_character)
{
    const std::string text(TableParser::most_kept - 1, 'x');
    EXPECT_TRUE(parsed(text + "éé").rows == (Rows{{text}}));
}

TEST(LongRow, keeps_as_many_fields_as_are_kept)
{
    const std::string commas(TableParser::most_fields - 1, ',');
    const Table fitting = parsed("a" + commas + "b");
    EXPECT_EQ(fitting.rows.at(0).size(), TableParser::most_fields);
    EXPECT_FALSE(fitting.has_more);

    const Table longer = parsed("a" + commas + "b,c\nd");
    EXPECT_EQ(longer.rows.at(0).size(), TableParser::most_fields);
    EXPECT_EQ(longer.rows.at(0).back(), "b");
    EXPECT_TRUE(longer.has_more);
    EXPECT_EQ(longer.rows.at(1), (Fields{"d"}));
}

/// Texts on which a careless parser would go back again and again. They end in a moment, or never.
class HostileTable : public testing::TestWithParam<const char*> {};

TEST_P(HostileTable, is_read_in_linear_time)
{
    std::string text;
    while (text.size() < 300'000)
        text += GetParam();
    const Table table = parsed(text, {}, 16384);
    std::size_t bytes = 0;
    for (const Fields& fields : table.rows) {
        for (const std::string& field : fields)
            bytes += field.size() + 1;
    }
    EXPECT_GT(bytes, 0U);
    EXPECT_LE(bytes, text.size() + 1);
}

INSTANTIATE_TEST_SUITE_P(Texts, HostileTable,
                         testing::Values("\"", ",\"", "\",", "\"\"", "\"\"\"", ",\"\"x", "\"\n", "\"a,", "\" ", "\"\r",
                                         "\"a\"\"b,\"c\n"));

} // namespace
} // namespace cuedrill::decks
