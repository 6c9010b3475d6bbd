#include "exchange/decks/deck_fixture.h"
#include "exchange/decks/mnemosyne_text_deck.h"
#include "platform/icu/icu_text_conversions.h"

#include <gtest/gtest.h>

namespace cuedrill::decks {
namespace {

const platform::icu::IcuTextConversions conversions;

struct Read {
    std::vector<Row> rows;
    std::string left_out;
};

Read read(const std::string& bytes, std::optional<Encoding> encoding = {})
{
    MnemosyneTextDeck deck(file_of(bytes), conversions, encoding);
    std::vector<Row> rows = rows_of(deck);
    return {std::move(rows), deck.left_out()};
}

TEST(CardsOfLines, have_a_question_and_an_answer)
{
    MnemosyneTextDeck deck(file_of("Norway?\tOslo\r\n\r\nPeru?\tLima"), conversions, {});
    ASSERT_EQ(deck.kinds().size(), 2U);
    EXPECT_EQ(deck.kinds()[0].fields, (Names{"question", "answer"}));
    EXPECT_EQ(deck.kinds()[1].fields, (Names{"word", "meaning", "pronunciation"}));
    const std::vector<Row> rows = rows_of(deck);
    EXPECT_EQ(texts_of(rows), (Texts{{"Norway?", "Oslo"}, {"Peru?", "Lima"}}));
    EXPECT_EQ(places_of(rows), (Names{"line 1", "line 3"}));
    EXPECT_EQ(rows[0].kind, 0U);
    EXPECT_EQ(deck.left_out(), "");
    EXPECT_EQ(deck.percent(), std::nullopt);
}

TEST(CardsOfLines, may_be_words_with_their_pronunciation)
{
    const Read deck = read("猫\tneko\tcat\na\tb\n");
    EXPECT_EQ(texts_of(deck.rows), (Texts{{"猫", "cat", "neko"}, {"a", "b"}}));
    EXPECT_EQ(deck.rows[0].kind, 1U);
    EXPECT_EQ(deck.rows[1].kind, 0U);
}

TEST(CardsOfLines, have_line_breaks_in_two_ways)
{
    EXPECT_EQ(texts_of(read("a\\nb\tc<br>d<br/><br>e\n").rows), (Texts{{"a\nb", "c\nd\n\ne"}}));
}

TEST(CardsOfLines, are_plain_texts)
{
    const Read deck = read("<b>a</b> &amp; b\t<img src=\"c.png\">d\n");
    EXPECT_EQ(texts_of(deck.rows), (Texts{{"a & b", "d"}}));
    EXPECT_EQ(deck.left_out, "1 picture or sound was left out.\n");
}

TEST(CardsOfLines, have_quotation_marks_as_ordinary_characters)
{
    EXPECT_EQ(texts_of(read("\"a\tb\"\n\"c\"\t\"\"\n").rows), (Texts{{"\"a", "b\""}, {"\"c\"", "\"\""}}));
}

TEST(CardsOfLines, may_lack_a_text)
{
    EXPECT_EQ(texts_of(read("a\t\n\tb\n").rows), (Texts{{"a", ""}, {"", "b"}}));
}

TEST(CardsOfLines, that_are_none_are_told)
{
    const Read one = read("a\tb\nalone\nc\td\n");
    EXPECT_EQ(texts_of(one.rows), (Texts{{"a", "b"}, {"c", "d"}}));
    EXPECT_EQ(one.left_out, "Line 2 was left out, because it has neither two nor three texts separated by TAB.\n");
    EXPECT_EQ(
        read("a\tb\nalone\nc\td\te\tf\n").left_out,
        "2 lines were left out, because they have neither two nor three texts separated by TAB. The first is line "
        "2.\n");
}

TEST(CardsOfLines, are_read_in_the_encoding_that_is_said)
{
    EXPECT_EQ(texts_of(read("\xED\xCF\t\xCF\n", Encoding::koi8_r).rows), (Texts{{"Мо", "о"}}));
}

TEST(CardsOfLines, that_cannot_be_read_say_why)
{
    expect_error([] { MnemosyneTextDeck(std::make_unique<MemoryFile>("a\tb", 0), conversions, {}); },
                 "The disk cannot be read.");
}

} // namespace
} // namespace cuedrill::decks
