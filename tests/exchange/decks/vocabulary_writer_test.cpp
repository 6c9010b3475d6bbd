#include "common/errors.h"
#include "exchange/decks/read_deck.h"
#include "exchange/decks/vocabulary_deck.h"
#include "exchange/decks/vocabulary_writer.h"
#include "exchange/decks/xml_escaping.h"
#include "fakes/fake_files.h"
#include "platform/archive/packing.h"
#include "platform/qt_xml/qt_xml.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cuedrill::decks {
namespace {

using Texts = std::vector<std::pair<std::string, std::string>>; ///< question and answer of each record

/// Rows with the columns "q" and "a".
class MemoryRows : public platform::Recordset {
public:
    explicit MemoryRows(const Texts& texts) : texts_(texts) {}

    [[nodiscard]] bool bof() const override { return texts_.empty(); }
    [[nodiscard]] bool eof() const override { return place_ == texts_.size(); }
    void move_first() override { place_ = 0; }
    void move_next() override { ++place_; }
    [[nodiscard]] platform::Value field(std::string_view column) const override { return field(column == "a" ? 1 : 0); }
    [[nodiscard]] platform::Value field(int column) const override
    {
        const auto& [question, answer] = texts_.at(place_);
        return column == 0 ? question : answer;
    }

private:
    const Texts& texts_;
    std::size_t place_ = 0;
};

class VocabularyWriter : public testing::Test {
protected:
    std::string written(const Texts& texts)
    {
        const auto file = files.begin_replacement("/animals.kvtml");
        MemoryRows rows(texts);
        result = write_vocabulary(*file, rows, form);
        file->finish();
        EXPECT_EQ(result.count, static_cast<std::int64_t>(texts.size()));
        return files.files.at("/animals.kvtml");
    }

    /// The texts that a reader gets back.
    Texts returned(const Texts& texts)
    {
        const std::string bytes = written(texts);
        const ReadDeck deck = read_deck(
            [&] { return std::make_unique<VocabularyDeck>(packing::file_of(bytes), platform::qt_xml::QtXml()); });
        EXPECT_EQ(deck.failure, "");
        EXPECT_EQ(deck.left_out, "");
        Texts back;
        for (const Row& row : deck.rows)
            back.emplace_back(row.texts.at(0), row.texts.at(1));
        return back;
    }

    void expect_unchanged(const Texts& texts)
    {
        EXPECT_EQ(returned(texts), texts);
        EXPECT_EQ(result.changed, 0);
        EXPECT_EQ(result.lines, "");
    }

    fakes::FakeFiles files;
    VocabularyForm form{.course_title = "Animals & <plants>",
                        .written = common::DateTime::from_day_number(46341.25),
                        .question_language = "Fran\xC3\xA7"
                                             "ais",
                        .answer_language = "<unknown>"};
    WrittenVocabulary result;
};

TEST_F(VocabularyWriter, writes_the_title_two_languages_and_the_entries)
{
    EXPECT_EQ(written({{"chat", "cat"}}),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<!DOCTYPE kvtml PUBLIC \"kvtml2.dtd\" \"http://edu.kde.org/kvtml/kvtml2.dtd\">\n"
              "<kvtml version=\"2.0\">\n"
              "  <information>\n"
              "    <generator>Cuedrill</generator>\n"
              "    <title>Animals &amp; &lt;plants&gt;</title>\n"
              "    <date>2026-11-15</date>\n"
              "  </information>\n"
              "  <identifiers>\n"
              "    <identifier id=\"0\">\n"
              "      <name>Fran\xC3\xA7"
              "ais</name>\n"
              "    </identifier>\n"
              "    <identifier id=\"1\">\n"
              "      <name>&lt;unknown&gt;</name>\n"
              "    </identifier>\n"
              "  </identifiers>\n"
              "  <entries>\n"
              "    <entry id=\"0\">\n"
              "      <translation id=\"0\">\n"
              "        <text>chat</text>\n"
              "      </translation>\n"
              "      <translation id=\"1\">\n"
              "        <text>cat</text>\n"
              "      </translation>\n"
              "    </entry>\n"
              "  </entries>\n"
              "</kvtml>\n");
}

TEST_F(VocabularyWriter, writes_texts_that_come_back_as_they_were)
{
    expect_unchanged({{"Norway?", "Oslo"}, {"Peru?", "Lima"}});
    expect_unchanged({{" blanks \t", "  "}, {"one\r\ntwo\r\n", "\n\nlines\r of every\n\rkind"}});
    expect_unchanged({{"R&D &amp; <b>bold</b> ]]> \"quoted\" 'so' <!-- -->", "&#13;"}});
    expect_unchanged(
        {{"Z\xC3\xBCrich \xE6\xBC\xA2\xE5\xAD\x97 \xF0\x9F\x8E\xB2", "\xC2\x85 \xE2\x80\xA8 \xEF\xBF\xBD \x7F"}});
    expect_unchanged({{"", "only an answer"}, {"only a question", ""}});
    expect_unchanged({{std::string(40'000, 'x'), std::string(10'000, '\n')}});
}

TEST_F(VocabularyWriter, writes_every_character_that_xml_can_hold)
{
    Texts texts;
    for (char32_t code = 1; code < 0x11000; ++code) {
        const bool is_surrogate = code >= 0xD800 && code < 0xE000;
        const bool is_control = code < 0x20 && code != '\t' && code != '\n' && code != '\r';
        if (is_surrogate || is_control || code == 0xFFFE || code == 0xFFFF)
            continue;
        std::string character;
        if (code < 0x80) {
            character = static_cast<char>(code);
        } else if (code < 0x800) {
            character = {static_cast<char>(0xC0U | code >> 6U), static_cast<char>(0x80U | (code & 0x3FU))};
        } else if (code < 0x10000) {
            character = {static_cast<char>(0xE0U | code >> 12U), static_cast<char>(0x80U | (code >> 6U & 0x3FU)),
                         static_cast<char>(0x80U | (code & 0x3FU))};
        } else {
            character = {static_cast<char>(0xF0U | code >> 18U), static_cast<char>(0x80U | (code >> 12U & 0x3FU)),
                         static_cast<char>(0x80U | (code >> 6U & 0x3FU)), static_cast<char>(0x80U | (code & 0x3FU))};
        }
        if (texts.empty() || texts.back().first.size() > 1000)
            texts.emplace_back("", "x");
        texts.back().first += character;
    }
    expect_unchanged(texts);
}

TEST_F(VocabularyWriter, replaces_what_xml_cannot_hold_and_tells)
{
    const std::string mark = "\xEF\xBF\xBD";
    EXPECT_EQ(returned({{"a\x01"
                         "b\x1F",
                         "fine"},
                        {"fine", "also"},
                        {std::string("N\0L", 3), "\xEF\xBF\xBE \xEF\xBF\xBF"},
                        {"\xFF half a \xC3", "\xED\xA0\x80"}}),
              (Texts{{"a" + mark + "b" + mark, "fine"},
                     {"fine", "also"},
                     {"N" + mark + "L", mark + " " + mark},
                     {mark + " half a " + mark, mark + mark + mark}}));
    EXPECT_EQ(result.changed, 3);
    EXPECT_TRUE(result.lines.starts_with("Question 1: It has characters that the format cannot hold. \"a\x01"
                                         "b\x1F\"\r\n"))
        << result.lines;
    EXPECT_NE(result.lines.find("Question 3: "), std::string::npos);
    EXPECT_NE(result.lines.find("Question 4: "), std::string::npos);
    EXPECT_EQ(result.lines.find("Question 2: "), std::string::npos);
}

TEST_F(VocabularyWriter, writes_a_course_without_records)
{
    EXPECT_EQ(returned({}), Texts());
}

TEST_F(VocabularyWriter, passes_on_that_the_file_cannot_be_written)
{
    files.write_failure = "There is no room.";
    const auto file = files.begin_replacement("/animals.kvtml");
    const Texts texts{{"chat", "cat"}};
    MemoryRows rows(texts);
    try {
        write_vocabulary(*file, rows, form);
        FAIL() << "nothing was thrown";
    } catch (const common::Error& error) {
        EXPECT_STREQ(error.what(), "There is no room.");
    }
}

} // namespace
} // namespace cuedrill::decks
