#include "exchange/decks/anki_text_deck.h"
#include "exchange/decks/deck_fixture.h"
#include "platform/icu/icu_text_conversions.h"

#include <gtest/gtest.h>

namespace cuedrill::decks {
namespace {

const platform::icu::IcuTextConversions conversions;

/// A text export that is read to its end.
struct Read {
    std::vector<Row> rows;
    std::vector<Kind> kinds;
    std::string left_out;
};

Read read(const std::string& bytes)
{
    AnkiTextDeck deck(file_of(bytes), conversions, {});
    const std::vector<Row> rows = rows_of(deck);
    return {rows, deck.kinds(), deck.left_out()};
}

Names names_of(const std::vector<Kind>& kinds)
{
    Names names;
    for (const Kind& kind : kinds)
        names.push_back(kind.name);
    return names;
}

struct SeparatorCase {
    const char* name;
    const char* value;
    char separator;
};

class SaidSeparator : public testing::TestWithParam<SeparatorCase> {};

TEST_P(SaidSeparator, is_that_of_the_rows)
{
    const std::string separator(1, GetParam().separator);
    const AnkiTextHead head = read_anki_text_head("#separator:" + std::string(GetParam().value) + "\na");
    EXPECT_EQ(head.shape.separator, GetParam().separator);
    EXPECT_EQ(texts_of(read("#separator:" + std::string(GetParam().value) + "\na" + separator + "b\n").rows),
              (Texts{{"a", "b"}}));
}

INSTANTIATE_TEST_SUITE_P(Heads, SaidSeparator,
                         testing::Values(SeparatorCase{"tab", "tab", '\t'}, SeparatorCase{"comma", "Comma", ','},
                                         SeparatorCase{"semicolon", "SEMICOLON", ';'},
                                         SeparatorCase{"space", "space", ' '}, SeparatorCase{"pipe", "pipe", '|'},
                                         SeparatorCase{"colon", " colon ", ':'}, SeparatorCase{"itself", ";", ';'},
                                         SeparatorCase{"tab_itself", "\t", '\t'},
                                         SeparatorCase{"colon_itself", ":", ':'},
                                         SeparatorCase{"blank_itself", " ", ' '}),
                         [](const auto& value) { return std::string(value.param.name); });

TEST(TextHead, is_what_the_first_lines_say)
{
    const std::string lines =
        "#columns:id;Front;\"Back;side\";Tags\r\n#separator:semicolon\r\n#html:TRUE\r\n# a remark\r\n"
        "#Tags Column:4\r\n#guid column: 1 \r\n#deck column:6\r\n#notetype column:5\r\n"
        "#if matches:keep both\r\n";
    const AnkiTextHead head = read_anki_text_head(lines + "a;b\r\n#html:false\r\n");
    EXPECT_EQ(head.shape, (TableShape{.separator = ';', .quote = '"', .comment = '#'}));
    EXPECT_TRUE(head.is_html);
    EXPECT_EQ(head.columns, (Names{"id", "Front", "Back;side", "Tags"}));
    EXPECT_EQ(head.left_out, (std::set<std::size_t>{0, 3, 4, 5}));
    EXPECT_EQ(head.kind_column, 4U);
    EXPECT_EQ(head.size, lines.size());
    EXPECT_EQ(head.lines, 9);
}

TEST(TextHead, may_be_missing)
{
    for (const char* text : {"", "a\tb\n", "\n#html:true\n"}) {
        const AnkiTextHead head = read_anki_text_head(text);
        EXPECT_EQ(head.shape.separator, '\t');
        EXPECT_FALSE(head.is_html);
        EXPECT_EQ(head.size, 0U);
        EXPECT_EQ(head.lines, 0);
    }
}

TEST(TextHead, may_be_all_of_the_text)
{
    const AnkiTextHead head = read_anki_text_head("#notetype:Basic\r#html:false");
    EXPECT_EQ(head.kind, "Basic");
    EXPECT_FALSE(head.is_html);
    EXPECT_EQ(head.size, 27U);
    EXPECT_EQ(head.lines, 2);
}

struct Wrong {
    const char* line;
    const char* words;
};

class WrongHead : public testing::TestWithParam<Wrong> {};

TEST_P(WrongHead, is_told_with_its_line)
{
    expect_error([] { static_cast<void>(read("#remark:\n" + std::string(GetParam().line) + "\na\tb\n")); },
                 GetParam().words);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, WrongHead,
    testing::Values(Wrong{"#separator:", "Line 2 says \"\" for \"separator\", which has no such value."},
                    Wrong{"#separator:tabs", "Line 2 says \"tabs\" for \"separator\", which has no such value."},
                    Wrong{"#separator:\"", "Line 2 says \"\"\" for \"separator\", which has no such value."},
                    Wrong{"#html:yes", "Line 2 says \"yes\" for \"html\", which has no such value."},
                    Wrong{"#tags column:0", "Line 2 says \"0\" for \"tags column\", which has no such value."},
                    Wrong{"#deck column:x", "Line 2 says \"x\" for \"deck column\", which has no such value."},
                    Wrong{"#guid column:1x", "Line 2 says \"1x\" for \"guid column\", which has no such value."},
                    Wrong{"#notetype column:1001",
                          "Line 2 says \"1001\" for \"notetype column\", which has no such value."},
                    Wrong{"#tags column:99999999999999999999",
                          "Line 2 says \"99999999999999999999\" for \"tags column\", which has no such value."}));

TEST(TextExport, has_its_notes_with_their_lines)
{
    const Read deck =
        read("#separator:tab\n#html:false\nNorway?\tOslo\n\"Peru\n?\"\t<b>Lima</b>\n# no note\n\"# 1\"\tx\n");
    EXPECT_EQ(texts_of(deck.rows), (Texts{{"Norway?", "Oslo"}, {"Peru\n?", "<b>Lima</b>"}, {"# 1", "x"}}));
    EXPECT_EQ(places_of(deck.rows), (Names{"line 3", "line 4", "line 7"}));
    ASSERT_EQ(deck.kinds.size(), 1U);
    EXPECT_EQ(deck.kinds[0].name, "");
    EXPECT_EQ(deck.kinds[0].fields, (Names{"1", "2"}));
    EXPECT_EQ(deck.left_out, "");
}

TEST(TextExport, of_html_has_plain_texts)
{
    const Read deck = read("#html:true\n\"<div>a</div>b &amp; <img src=\"\"x.png\"\">\"\t{{c1::c::d}}[sound:e.mp3]\n");
    EXPECT_EQ(texts_of(deck.rows), (Texts{{"a\nb &", "c"}}));
    EXPECT_EQ(deck.left_out, "2 pictures and sounds were left out.\n1 cloze deletion was read as its text.\n");
}

TEST(TextExport, leaves_out_the_columns_that_are_no_fields)
{
    const Read deck =
        read("#guid column:1\n#deck column:3\n#tags column:5\nid1\ta\tMy deck\tb\tt1 t2\nid2\tc\tMy deck\td\n");
    EXPECT_EQ(deck.kinds[0].fields, (Names{"1", "2"}));
    EXPECT_EQ(texts_of(deck.rows), (Texts{{"a", "b"}, {"c", "d"}}));
}

TEST(TextExport, has_the_names_of_its_columns)
{
    const Read deck =
        read("#separator:comma\n#columns:Id,Front,Back,Tags\n#guid column:1\n#tags column:4\nx,a,b,t\ny,c\n"
             "z,d,e,t,more\n");
    EXPECT_EQ(deck.kinds[0].fields, (Names{"Front", "Back"}));
    EXPECT_EQ(texts_of(deck.rows), (Texts{{"a", "b"}, {"c", ""}, {"d", "e"}}));
}

TEST(TextExport, has_a_kind_for_each_note_type)
{
    const Read deck = read("#notetype column:1\nBasic\ta\tb\nCloze\tc\td\nBasic\te\tf\tg\n");
    EXPECT_EQ(names_of(deck.kinds), (Names{"Basic", "Cloze"}));
    EXPECT_EQ(deck.kinds[0].fields, (Names{"1", "2", "3"}));
    EXPECT_EQ(deck.kinds[1].fields, (Names{"1", "2", "3"}));
    ASSERT_EQ(deck.rows.size(), 3U);
    EXPECT_EQ(deck.rows[1].kind, 1U);
    EXPECT_EQ(deck.rows[2].kind, 0U);
    EXPECT_EQ(texts_of(deck.rows), (Texts{{"a", "b", ""}, {"c", "d", ""}, {"e", "f", "g"}}));
}

TEST(TextExport, knows_its_kinds_from_the_beginning)
{
    AnkiTextDeck deck(file_of("#notetype column:3\n#columns:Front\tBack\tType\na\tb\tBasic\nc\td\tCloze\n"),
                      conversions, {});
    EXPECT_EQ(names_of(deck.kinds()), (Names{"Basic", "Cloze"}));
    EXPECT_EQ(deck.kinds()[1].fields, (Names{"Front", "Back"}));
}

TEST(TextExport, gets_the_kinds_that_come_later)
{
    std::string text = "#notetype column:1\n";
    while (text.size() < 100'000)
        text += "Basic\ta\tb\n";
    AnkiTextDeck deck(file_of(text + "Late\tc\td\n"), conversions, {});
    EXPECT_EQ(names_of(deck.kinds()), (Names{"Basic"}));
    EXPECT_EQ(rows_of(deck).back().kind, 1U);
    EXPECT_EQ(names_of(deck.kinds()), (Names{"Basic", "Late"}));
}

TEST(TextExport, of_too_many_note_types_is_refused)
{
    std::string text = "#notetype column:1\n";
    for (std::size_t i = 0; i < AnkiTextDeck::most_kinds; ++i)
        text += "type " + std::to_string(i) + "\ta\tb\n";
    EXPECT_EQ(read(text).kinds.size(), AnkiTextDeck::most_kinds);
    expect_error([&] { static_cast<void>(read(text + "one more\ta\tb\n")); },
                 "line 202: The column of note types has more than 200 of them.");
    const std::string far(100'000, 'x');
    AnkiTextDeck deck(file_of(text + "type 1\t" + far + "\tb\none more\ta\tb\n"), conversions, {});
    expect_error([&] { static_cast<void>(rows_of(deck)); },
                 "line 203: The column of note types has more than 200 of them.");
}

TEST(TextExport, may_be_of_one_note_type)
{
    EXPECT_EQ(names_of(read("#notetype:Basic\na\tb\n").kinds), (Names{"Basic"}));
    EXPECT_EQ(names_of(read("#notetype:Basic\n").kinds), (Names{"Basic"}));
    EXPECT_EQ(names_of(read("").kinds), (Names{""}));
}

TEST(TextExport, tells_of_quotation_marks_without_an_end)
{
    EXPECT_EQ(read("#html:false\na\t\"b\nc\td\n").left_out,
              "A quotation mark in line 2 has no end and was read as an ordinary character.\n");
}

TEST(TextExport, that_cannot_be_read_says_why)
{
    expect_error([] { AnkiTextDeck(std::make_unique<MemoryFile>("a\tb", 0), conversions, {}); },
                 "The disk cannot be read.");
}

} // namespace
} // namespace cuedrill::decks
