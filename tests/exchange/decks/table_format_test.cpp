#include "exchange/decks/deck_fixture.h"
#include "exchange/decks/table_format.h"

#include <gtest/gtest.h>

namespace cuedrill::decks {
namespace {

TableFormat recognised(std::string_view sample, std::string_view name = "words.csv", const TableOptions& options = {})
{
    return recognise_table(sample, true, name, options);
}

struct Separated {
    const char* name;
    std::string text;
    char separator;
    const char* file = "words.csv";
};

class Separator : public testing::TestWithParam<Separated> {};

TEST_P(Separator, is_recognised)
{
    EXPECT_EQ(recognised(GetParam().text, GetParam().file).shape.separator, GetParam().separator);
}

INSTANTIATE_TEST_SUITE_P(Tables, Separator,
                         testing::Values(Separated{"comma", "a,b\nc,d\n", ','},
                                         Separated{"semicolon", "a;b\nc;d\n", ';'},
                                         Separated{"tab", "a\tb\nc\td\n", '\t'}, Separated{"bar", "a|b\nc|d\n", '|'},
                                         Separated{"one_row", "a;b", ';'}, Separated{"empty", "", ','},
                                         Separated{"one_field", "a\nb\n", ','},
                                         Separated{"commas_in_some_texts", "a, b;c\nd;e\nf;g, h, i\n", ';'},
                                         Separated{"commas_in_all_texts", "a, b;c\nd;e, f\n", ';'},
                                         Separated{"semicolons_in_some_texts", "a; b,c\nd,e\nf,g\n", ','},
                                         Separated{"commas_in_numbers", "Rome;2,8\nParis;2,1\n", ';'},
                                         Separated{"quoted_separators", "\"a;b\",c\n\"d;e\",f\n", ','},
                                         Separated{"quoted_line_breaks", "\"a\nb;\nc\",d\n\"e\",f\n", ','},
                                         Separated{"sentences_with_tabs", "a, b?\tc\nd, e?\tf\n", '\t'},
                                         Separated{"more_rows_alike", "a,b\nc,d\ne,f\ng;h\n", ','},
                                         Separated{"tsv_with_commas", "a,b\nc,d\n", ',', "words.tsv"},
                                         Separated{"tsv_with_one_tab", "a,b\tc\nd,e\n", '\t', "words.TSV"},
                                         Separated{"tab_file_without_any", "a\nb\n", '\t', "words.tab"},
                                         Separated{"tabs_in_a_csv", "a\tb\nc\td\n", '\t', "words.csv"}),
                         [](const auto& table) { return std::string(table.param.name); });

TEST(SaidSeparator, is_not_looked_for)
{
    EXPECT_EQ(recognised("a,b\nc,d\n", "x.csv", {.separator = ';'}).shape.separator, ';');
    EXPECT_EQ(recognised("sep=|\na,b\n", "x.csv", {.separator = ','}).shape.separator, ',');
    EXPECT_EQ(recognised("a,b\n", "x.tsv", {.separator = ':'}).shape.separator, ':');
}

TEST(SaidQuote, is_that_of_the_table)
{
    EXPECT_EQ(recognised("a,b\n").shape.quote, '"');
    EXPECT_EQ(recognised("'a;b','c'\n'd;e','f'\n", "x.csv", {.quote = '\''}).shape,
              (TableShape{.separator = ',', .quote = '\'', .comment = '\0'}));
    EXPECT_EQ(recognised("\"a,b\n", "x.csv", {.quote = '\0'}).shape.quote, '\0');
}

struct FirstLine {
    const char* name;
    std::string text;
    char separator;
    std::size_t skipped;
};

class SeparatorLine : public testing::TestWithParam<FirstLine> {};

TEST_P(SeparatorLine, names_the_separator_and_is_no_row)
{
    const TableFormat format = recognised(GetParam().text);
    EXPECT_EQ(format.shape.separator, GetParam().separator);
    EXPECT_EQ(format.skipped, GetParam().skipped);
    EXPECT_EQ(format.first_line, GetParam().skipped == 0 ? 1 : 2);
}

INSTANTIATE_TEST_SUITE_P(
    Tables, SeparatorLine,
    testing::Values(FirstLine{"semicolon", "sep=;\na,b;c\nd,e\n", ';', 6}, FirstLine{"cr_lf", "SEP=|\r\na,b", '|', 7},
                    FirstLine{"cr", "sep=,\ra;b", ',', 6}, FirstLine{"tab", "sep=\t\na,b", '\t', 6},
                    FirstLine{"alone", "sep=;", ';', 5}, FirstLine{"two_characters", "sep=;;\na,b\nc,d", ',', 0},
                    FirstLine{"none", "sep=\na;b\nc;d", ';', 0}, FirstLine{"quote", "sep=\"\na,b\nc,d", ',', 0},
                    FirstLine{"a_text", "sep=a,b\nc,d", ',', 0}),
    [](const auto& line) { return std::string(line.param.name); });

struct FirstRow {
    const char* name;
    std::string text;
    bool is_header;
};

class Header : public testing::TestWithParam<FirstRow> {};

TEST_P(Header, is_recognised)
{
    EXPECT_EQ(recognised(GetParam().text).has_header, GetParam().is_header);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Header,
    testing::Values(FirstRow{"usual_names", "question,answer\na,b\n", true},
                    FirstRow{"usual_names_alone", "question,answer\n", true},
                    FirstRow{"capitals_and_blanks", " Front , BACK \na,b\n", true},
                    FirstRow{"further_names", "number,Question,Answer,remarks\n1,a,b,c\n", true},
                    FirstRow{"german", "Vorderseite;Rückseite\na;b\n", true},
                    FirstRow{"french", "question;réponse\na;b\n", true},
                    FirstRow{"spanish", "Pregunta;Respuesta\na;b\n", true},
                    FirstRow{"two_languages", "word;Wort\nhouse;Haus\n", false},
                    FirstRow{"one_usual_name", "question,b\nc,d\n", false},
                    FirstRow{"no_names", "Norway,Oslo\nPeru,Lima\n", false},
                    FirstRow{"one_field", "question\nanswer\n", false}, FirstRow{"empty", "", false},
                    FirstRow{"empty_field", "question,answer,\na,b,c\n", false},
                    FirstRow{"the_same_twice", "question,answer,Answer\na,b,c\n", false},
                    FirstRow{"long_name", "question,answer," + std::string(41, 'x') + "\na,b,c\n", false},
                    FirstRow{"name_as_long_as_may_be", "question,answer," + std::string(40, 'x') + "\na,b,c\n", true},
                    FirstRow{"over_numbers", "country,people\na,1\nb,2.5\nc,-3 %\n", true},
                    FirstRow{"over_two_numbers", "country,people\na,1\nb,2\n", false},
                    FirstRow{"over_numbers_and_a_text", "country,people\na,1\nb,2\nc,x\n", false},
                    FirstRow{"over_numbers_and_a_missing_one", "country,people\na,1\nb\nc,3\n", false},
                    FirstRow{"number_over_numbers", "x,7\na,1\nb,2\nc,3\n", false},
                    FirstRow{"a_question_over_numbers", "How old?,none\na,1\nb,2\nc,3\n", false}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(SaidHeader, is_not_looked_for)
{
    EXPECT_TRUE(recognised("a,b\nc,d\n", "x.csv", {.has_header = true}).has_header);
    EXPECT_FALSE(recognised("question,answer\nc,d\n", "x.csv", {.has_header = false}).has_header);
    EXPECT_TRUE(recognised("", "x.csv", {.has_header = true}).names.empty());
}

TEST(NamesOfFields, are_those_of_the_header)
{
    EXPECT_EQ(recognised(" question , Answer\na,b,c\n").names, (Names{"question", "Answer"}));
    EXPECT_EQ(recognised("\"a\nb\",,\xFF\n", "x.csv", {.has_header = true}).names, (Names{"a b", "2", "\uFFFD"}));
}

TEST(NamesOfFields, are_the_numbers_of_the_longest_row_without_a_header)
{
    EXPECT_EQ(recognised("a,b\nc,d,e\nf\n").names, (Names{"1", "2", "3"}));
    EXPECT_TRUE(recognised("").names.empty());
}

TEST(Sample, that_is_not_whole_has_no_last_row)
{
    EXPECT_EQ(recognise_table("a;b\nc;d\ne,f,g,h", false, "x.csv", {}).names, (Names{"1", "2"}));
    EXPECT_EQ(recognise_table("a;b", false, "x.csv", {}).names, (Names{"1", "2"})) << "there is no other row";
}

TEST(SeparatorInWords, is_its_name_or_itself)
{
    EXPECT_EQ(name_of_separator('\t'), "TAB");
    EXPECT_EQ(name_of_separator(' '), "blank");
    EXPECT_EQ(name_of_separator(';'), ";");
}

} // namespace
} // namespace cuedrill::decks
