#include "exchange/decks/read_deck.h"
#include "exchange/decks/vocabulary_deck.h"
#include "platform/archive/packing.h"
#include "platform/qt_xml/qt_xml.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>

namespace cuedrill::decks {
namespace {

using Fields = std::vector<std::string>;

std::unique_ptr<Deck> opened(const std::string& bytes)
{
    return std::make_unique<VocabularyDeck>(packing::file_of(bytes), platform::qt_xml::QtXml());
}

ReadDeck read(const std::string& bytes)
{
    return read_deck([&] { return opened(bytes); });
}

std::string failure(const std::string& bytes)
{
    return read(bytes).failure;
}

const std::string languages = "<identifiers>\n"
                              "<identifier id=\"0\"><name>English</name><locale>en</locale></identifier>\n"
                              "<identifier id=\"1\"><name>Deutsch</name><locale>de</locale></identifier>\n"
                              "</identifiers>\n";

std::string vocabulary(const std::string& entries, const std::string& head = languages)
{
    return "<?xml version=\"1.0\"?>\n<!DOCTYPE kvtml PUBLIC \"kvtml2.dtd\" \"http://example.org/kvtml2.dtd\">\n"
           "<kvtml version=\"2.0\">\n<information><title>Animals</title></information>\n" +
           head + "<entries>\n" + entries + "</entries>\n</kvtml>\n";
}

std::string translation(int id, std::string_view contents)
{
    return "<translation id=\"" + std::to_string(id) + "\">" + std::string(contents) + "</translation>";
}

std::string entry(const std::string& english, const std::string& german)
{
    return "<entry id=\"0\">" + translation(0, "<text>" + english + "</text>") +
           translation(1, "<text>" + german + "</text>") + "</entry>\n";
}

std::string lines(const std::string& bytes)
{
    const ReadDeck deck = read(bytes);
    EXPECT_EQ(deck.failure, "");
    return lines_of(deck.rows);
}

TEST(VocabularyDeck, gives_the_entries_in_their_order)
{
    const ReadDeck deck = read(vocabulary(entry("bear", "B\xC3\xA4r") + entry("cat", "Katze")));
    EXPECT_EQ(deck.failure, "");
    ASSERT_EQ(deck.kinds.size(), 1U);
    EXPECT_EQ(deck.kinds[0].name, "");
    EXPECT_EQ(deck.kinds[0].fields, (Fields{"English", "Deutsch"}));
    EXPECT_EQ(lines_of(deck.rows), "entry 1: bear | B\xC3\xA4r\nentry 2: cat | Katze\n");
    EXPECT_EQ(deck.left_out, "");
}

TEST(VocabularyDeck, has_all_languages_as_fields)
{
    const ReadDeck deck = read(
        vocabulary("<entry>" + translation(7, "<text>oso</text>") + translation(0, "<text>bear</text>") + "</entry>",
                   "<identifiers><identifier id=\"0\"><locale>en</locale></identifier><identifier id=\"3\"/>"
                   "<identifier "
                   "id=\"7\"><name>espa\xC3\xB1ol</name><article><singular><definite>el</definite></singular></article>"
                   "</identifier></identifiers>"));
    ASSERT_EQ(deck.kinds.size(), 1U);
    EXPECT_EQ(deck.kinds[0].fields, (Fields{"en", "2", "espa\xC3\xB1ol"})) << "a name, or a locale, or a number";
    EXPECT_EQ(lines_of(deck.rows), "entry 1: bear |  | oso\n");
}

TEST(VocabularyDeck, keeps_texts_as_they_are)
{
    EXPECT_EQ(lines(vocabulary(entry(" R&amp;D &lt;b&gt;\n<![CDATA[<i>]]> ", "one&#13;&#10;two"))),
              "entry 1:  R&D <b>\n<i>  | one\r\ntwo\n");
}

TEST(VocabularyDeck, counts_an_entry_without_text_but_leaves_it_out)
{
    EXPECT_EQ(lines(vocabulary("<entry id=\"0\"/>" + entry(" ", "\n") + entry("cat", ""))), "entry 3: cat | \n");
}

TEST(VocabularyDeck, has_only_entries_from_the_list_of_entries)
{
    const std::string file = vocabulary(entry("cat", "Katze"));
    const std::string end = "</kvtml>\n";
    EXPECT_EQ(lines(file.substr(0, file.size() - end.size()) +
                    "<lessons><container><name>Lesson 1</name><entry id=\"0\"/></container></lessons>" + end),
              "entry 1: cat | Katze\n");
}

TEST(VocabularyDeck, tells_what_it_has_left_out)
{
    const std::string more = "<comment>a pet</comment><example>The cat sleeps.</example><pronunciation/>"
                             "<image>cat.png</image><sound>cat.ogg</sound><grade><currentgrade>3</currentgrade></grade>"
                             "<conjugation><tense>past</tense><text>no</text></conjugation>";
    const ReadDeck deck =
        read(vocabulary("<entry>" + translation(0, more + "<text>cat</text>") + translation(1, more) +
                        translation(5, "<text>gato</text>") + translation(0, "<text>kitten</text>") + "</entry>"));
    EXPECT_EQ(lines_of(deck.rows), "entry 1: cat | \n");
    EXPECT_EQ(deck.left_out, "4 pictures and sounds were left out.\n4 comments and examples were left out.\n"
                             "2 texts were left out, because their language is not named or has a text already.\n");
    EXPECT_EQ(read(vocabulary("<entry>" + translation(0, "<text>cat</text><image>cat.png</image><comment>a</comment>") +
                              translation(9, "<text>gato</text>") + "</entry>"))
                  .left_out,
              "1 picture or sound was left out.\n1 comment or example was left out.\n"
              "1 text was left out, because its language is not named or has a text already.\n");
}

TEST(VocabularyDeck, gives_the_entries_before_a_damage)
{
    const ReadDeck deck =
        read(vocabulary(entry("bear", "B\xC3\xA4r") + entry("cat", "Katze") + "<entry>\n</translation>"));
    EXPECT_EQ(lines_of(deck.rows), "entry 1: bear | B\xC3\xA4r\nentry 2: cat | Katze\n");
    EXPECT_EQ(deck.failure, "The file is damaged at line 13: Opening and ending tag mismatch.");
}

TEST(VocabularyDeck, gives_the_whole_entries_of_a_file_whose_end_is_missing)
{
    const std::string file = vocabulary(entry("bear", "B\xC3\xA4r") + entry("cat", "Katze"));
    std::size_t most_rows = 0;
    for (std::size_t length = 0; length + 1 < file.size(); ++length) {
        const ReadDeck deck = read(file.substr(0, length));
        EXPECT_NE(deck.failure, "") << length;
        EXPECT_GE(deck.rows.size(), most_rows) << length;
        most_rows = deck.rows.size();
    }
    EXPECT_EQ(most_rows, 2U);
}

TEST(VocabularyDeck, refuses_the_first_edition_of_the_format)
{
    const std::string words = "The file is in the format KVTML 1. Only KVTML 2 can be read.";
    EXPECT_EQ(failure("<kvtml title=\"Animals\"><e><o l=\"en\">cat</o><t l=\"de\">Katze</t></e></kvtml>"), words);
    EXPECT_EQ(failure("<kvtml version=\"1.0\"/>"), words);
}

TEST(VocabularyDeck, refuses_other_files)
{
    EXPECT_EQ(failure("<html><body/></html>"), "The file is not a vocabulary in the format KVTML.");
    EXPECT_TRUE(failure("Norway;Oslo\n").starts_with("The file is damaged at line 1: "));
}

TEST(VocabularyDeck, refuses_a_file_without_languages)
{
    const std::string words = "The vocabulary names no language.";
    EXPECT_EQ(failure("<kvtml version=\"2.0\"/>"), words);
    EXPECT_EQ(failure(vocabulary(entry("cat", "Katze"), "<identifiers/>")), words);
}

TEST(VocabularyDeck, has_a_limit_on_its_languages)
{
    std::string head;
    for (std::size_t i = 0; i < VocabularyDeck::most_languages; ++i)
        head += "<identifier id=\"" + std::to_string(i) + "\"/>";
    EXPECT_EQ(failure(vocabulary("", "<identifiers>" + head + "</identifiers>")), "");
    EXPECT_EQ(failure(vocabulary("", "<identifiers>" + head + "<identifier id=\"more\"/></identifiers>")),
              "The vocabulary has more than 100 languages.");
}

TEST(VocabularyDeck, takes_no_language_from_behind_the_entries)
{
    const std::string file = vocabulary(entry("cat", "Katze"));
    const ReadDeck deck = read(file.substr(0, file.find("</kvtml>")) + languages + "</kvtml>");
    EXPECT_EQ(deck.failure, "");
    EXPECT_EQ(deck.kinds[0].fields, (Fields{"English", "Deutsch"}));
}

TEST(VocabularyDeck, says_how_much_of_a_long_file_was_read)
{
    std::string entries;
    for (int i = 0; i < 20'000; ++i)
        entries += entry("cat", "Katze");
    const auto deck = opened(vocabulary(entries));
    EXPECT_LE(deck->percent().value_or(100), 5);
    int last = 0;
    for (Deck::Step step = deck->step(); step != Deck::Step::end; step = deck->step()) {
        ASSERT_TRUE(deck->percent().has_value());
        ASSERT_GE(*deck->percent(), last);
        last = *deck->percent();
    }
    EXPECT_EQ(last, 100);
    EXPECT_EQ(opened(vocabulary(entry("cat", "Katze")))->percent(), std::nullopt) << "a short file";
}

} // namespace
} // namespace cuedrill::decks
