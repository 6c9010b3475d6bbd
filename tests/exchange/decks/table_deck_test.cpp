#include "exchange/decks/deck_fixture.h"
#include "exchange/decks/table_deck.h"
#include "platform/icu/icu_text_conversions.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace cuedrill::decks {
namespace {

const platform::icu::IcuTextConversions conversions;

/// A table that is read to its end.
struct Read {
    std::vector<Row> rows;
    std::vector<Kind> kinds;
    std::string left_out;
};

Read read(const std::string& bytes, const TableOptions& options = {}, const std::string& name = "words.csv")
{
    TableDeck deck(file_of(bytes), conversions, name, options);
    const std::vector<Row> rows = rows_of(deck);
    return {rows, deck.kinds(), deck.left_out()};
}

TEST(TableDeck, has_a_kind_with_the_names_of_its_header)
{
    TableDeck deck(file_of("question,answer\nNorway?,Oslo\r\n\"Peru\n?\",Lima"), conversions, "words.csv", {});
    ASSERT_EQ(deck.kinds().size(), 1U);
    EXPECT_EQ(deck.kinds()[0].name, "");
    EXPECT_EQ(deck.kinds()[0].fields, (Names{"question", "answer"}));
    const std::vector<Row> rows = rows_of(deck);
    EXPECT_EQ(texts_of(rows), (Texts{{"Norway?", "Oslo"}, {"Peru\n?", "Lima"}}));
    EXPECT_EQ(places_of(rows), (Names{"line 2", "line 3"}));
    EXPECT_EQ(deck.left_out(), "The first row was read as the names of the fields: \"question\" \"answer\"\n");
}

TEST(TableDeck, does_not_tell_of_a_header_that_was_said)
{
    EXPECT_EQ(read("question,answer\na,b\n", {.has_header = true}).left_out, "");
    const Read without = read("question,answer\na,b\n", {.has_header = false});
    EXPECT_EQ(texts_of(without.rows), (Texts{{"question", "answer"}, {"a", "b"}}));
    EXPECT_EQ(without.left_out, "");
}

TEST(TableDeck, without_a_header_has_numbers_as_names)
{
    const Read table = read("Norway;Oslo\nPeru;Lima\n");
    EXPECT_EQ(table.kinds[0].fields, (Names{"1", "2"}));
    EXPECT_EQ(texts_of(table.rows), (Texts{{"Norway", "Oslo"}, {"Peru", "Lima"}}));
    EXPECT_EQ(places_of(table.rows), (Names{"line 1", "line 2"}));
}

TEST(TableDeck, gets_more_fields_with_longer_rows_behind_its_beginning)
{
    std::string text;
    while (text.size() < 100'000)
        text += "Norway,Oslo\n";
    TableDeck deck(file_of(text + "a,b,c\nd\n"), conversions, "words.csv", {});
    EXPECT_EQ(deck.kinds()[0].fields, (Names{"1", "2"}));
    const std::vector<Row> rows = rows_of(deck);
    EXPECT_EQ(deck.kinds()[0].fields, (Names{"1", "2", "3"}));
    EXPECT_EQ(rows[rows.size() - 3].texts, (Names{"Norway", "Oslo"}));
    EXPECT_EQ(rows[rows.size() - 2].texts, (Names{"a", "b", "c"}));
    EXPECT_EQ(rows[rows.size() - 1].texts, (Names{"d", "", ""}));
    EXPECT_EQ(deck.left_out(), "");
}

TEST(TableDeck, fills_up_short_rows_and_skips_those_without_any_text)
{
    const Read table = read("question,answer,remark\na\n,,\n \t, ,\nb,c\n");
    EXPECT_EQ(texts_of(table.rows), (Texts{{"a", "", ""}, {"b", "c", ""}}));
    EXPECT_EQ(places_of(table.rows), (Names{"line 2", "line 5"}));
}

TEST(TableDeck, tells_of_rows_longer_than_its_header)
{
    const std::string header = "The first row was read as the names of the fields: \"question\" \"answer\"\n";
    EXPECT_EQ(read("question,answer\na,b,,\n").left_out, header) << "nothing is lost";
    const Read one = read("question,answer\na,b\nc,d,e\n");
    EXPECT_EQ(texts_of(one.rows), (Texts{{"a", "b"}, {"c", "d"}}));
    EXPECT_EQ(one.left_out, header + "1 row has more fields than the table has names; the rest was left out. The first "
                                     "is in line 3.\n");
    EXPECT_EQ(read("question,answer\na,b,c\nd,e,,f\n").left_out,
              header + "2 rows have more fields than the table has names; the rest was left out. The first is in line "
                       "2.\n");
}

TEST(TableDeck, tells_of_rows_with_more_fields_than_are_kept)
{
    EXPECT_EQ(read("a" + std::string(1000, ',') + "b\n").left_out,
              "1 row has more fields than the table has names; the rest was left out. The first is in line 1.\n");
}

TEST(TableDeck, tells_of_quotation_marks_without_an_end)
{
    const Read one = read("a,b\nc,\"d\ne,f\n");
    EXPECT_EQ(texts_of(one.rows), (Texts{{"a", "b"}, {"c", "\"d"}, {"e", "f"}}));
    EXPECT_EQ(one.left_out, "A quotation mark in line 2 has no end and was read as an ordinary character.\n");
    std::string two = "\"a,b\n";
    while (two.size() < 300'000)
        two += "c,d\n";
    EXPECT_EQ(read(two + "e,\"f\n").left_out,
              "2 quotation marks have no end and were read as ordinary characters, the first in line 1.\n");
}

TEST(TableDeck, counts_the_line_that_names_the_separator)
{
    const Read table = read("sep=;\r\nquestion;answer\r\na,b;c\r\n");
    EXPECT_EQ(table.kinds[0].fields, (Names{"question", "answer"}));
    EXPECT_EQ(texts_of(table.rows), (Texts{{"a,b", "c"}}));
    EXPECT_EQ(places_of(table.rows), (Names{"line 3"}));
}

TEST(TableDeck, is_read_in_the_encoding_that_is_said)
{
    EXPECT_EQ(texts_of(read("\xCC\xEE;\xEE\xCC\n", {.encoding = Encoding::windows_1251}).rows), (Texts{{"Мо", "оМ"}}));
    const std::string utf_16("\xFF\xFE"
                             "a\0,\0b\0\n\0c\0,\0d\0",
                             16);
    EXPECT_EQ(texts_of(read(utf_16).rows), (Texts{{"a", "b"}, {"c", "d"}}));
}

TEST(TableDeck, has_names_in_the_encoding_of_the_whole_file)
{
    std::string text = "Begriff;\xC3\x9C"
                       "bersetzung\n";
    while (text.size() < 100'000)
        text += "a;b\n";
    TableDeck deck(file_of(text + "c;\xE9\n"), conversions, "words.csv", {});
    EXPECT_EQ(deck.kinds()[0].fields, (Names{"Begriff", "Übersetzung"}));
    EXPECT_EQ(rows_of(deck).back().texts, (Names{"c", "\xFF"}));
}

TEST(TableDeck, of_nothing_has_no_rows)
{
    for (const char* text : {"", "\n\n", "question,answer\n", ",\n", "sep=;", "\xEF\xBB\xBF"})
        EXPECT_TRUE(read(text).rows.empty()) << text;
}

TEST(TableDeck, says_how_far_it_is)
{
    std::string text;
    while (text.size() < 2'000'000)
        text += "a,b\n";
    TableDeck deck(file_of(text), conversions, "words.csv", {});
    std::vector<int> percents;
    std::size_t rows = 0;
    for (auto step = deck.step(); step != Deck::Step::end; step = deck.step()) {
        percents.push_back(deck.percent().value_or(-1));
        rows += step == Deck::Step::row ? 1U : 0U;
    }
    EXPECT_EQ(rows, text.size() / 4);
    EXPECT_EQ(percents.front(), 0);
    EXPECT_EQ(percents.back(), 100);
    EXPECT_TRUE(std::is_sorted(percents.begin(), percents.end()));
}

TEST(TableDeck, gives_the_rows_before_a_failure)
{
    std::string text = "é,b\n";
    while (text.size() < 200'000)
        text += "a,b\n";
    TableDeck deck(std::make_unique<MemoryFile>(text, 3), conversions, "words.csv", {});
    std::size_t found = 0;
    expect_error(
        [&] {
            for (auto step = deck.step(); step != Deck::Step::end; step = deck.step())
                found += step == Deck::Step::row ? 1U : 0U;
        },
        "The disk cannot be read.");
    EXPECT_EQ(found, 1 + (2U * 16384 - 5) / 4);
}

} // namespace
} // namespace cuedrill::decks
