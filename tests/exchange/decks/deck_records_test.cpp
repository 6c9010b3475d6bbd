#include "common/errors.h"
#include "exchange/decks/deck_fixture.h"
#include "exchange/decks/deck_records.h"
#include "platform/icu/icu_text_compare.h"

#include <gtest/gtest.h>
#include <memory>

namespace cuedrill::decks {
namespace {

using exchange::ReadRecord;

/// A deck of rows in memory.
class ListDeck : public Deck {
public:
    ListDeck(std::vector<Kind> kinds, std::vector<Row> rows) : kinds_(std::move(kinds)), rows_(std::move(rows)) {}

    std::string words; ///< what it tells as left out

    [[nodiscard]] const std::vector<Kind>& kinds() const override { return kinds_; }
    [[nodiscard]] Step step() override
    {
        if (given_ == rows_.size())
            return Step::end;
        reading_ = !reading_;
        if (reading_)
            return Step::reading;
        ++given_;
        return Step::row;
    }
    [[nodiscard]] const Row& row() const override { return rows_.at(given_ - 1); }
    [[nodiscard]] std::optional<int> percent() const override { return 42; }
    [[nodiscard]] std::string left_out() const override { return words; }

private:
    std::vector<Kind> kinds_;
    std::vector<Row> rows_;
    std::size_t given_ = 0;
    bool reading_ = false;
};

class DeckRecordsTest : public testing::Test {
protected:
    /// Reads all records of a deck.
    void read(std::vector<Kind> kinds, std::vector<Row> rows, const RecordChoice& choice = {},
              const std::string& words = {})
    {
        auto deck = std::make_unique<ListDeck>(std::move(kinds), std::move(rows));
        deck->words = words;
        source =
            std::make_unique<DeckRecords>(std::move(deck), "rows with two fields separated by ;", text_compare, choice);
        EXPECT_FALSE(source->has_question());
        records.clear();
        for (auto step = source->step(); step != DeckRecords::Step::end; step = source->step()) {
            if (step == DeckRecords::Step::record)
                records.push_back(source->record());
        }
        EXPECT_EQ(source->step(), DeckRecords::Step::end) << "it stays at its end";
        EXPECT_EQ(source->percent(), 42);
    }

    /// Reads rows of one kind with the fields "front", "back" and "remark".
    void read_texts(const Texts& texts, const RecordChoice& choice = {})
    {
        std::vector<Row> rows;
        for (const auto& row : texts)
            rows.push_back({.place = "line " + std::to_string(rows.size() + 2), .kind = 0, .texts = row});
        read({{.name = "", .fields = {"front", "back", "remark"}}}, std::move(rows), choice);
    }

    /// Reads one text as a question.
    exchange::ReadText question_of(const std::string& text, bool truncate = false)
    {
        read_texts({{text, "x", ""}}, {.fields = {}, .truncate = truncate});
        EXPECT_EQ(records.size(), 1U);
        return records.empty() ? exchange::ReadText{} : records[0].question;
    }

    [[nodiscard]] Texts read_records() const
    {
        Texts texts;
        for (const ReadRecord& record : records)
            texts.push_back({record.question.text, record.answer.text});
        return texts;
    }

    static RecordChoice chosen(const std::string& question, const std::string& answer)
    {
        return {.fields = FieldChoice{.question = question, .answer = answer}, .truncate = false};
    }

    platform::icu::IcuTextCompare text_compare;
    std::unique_ptr<DeckRecords> source;
    std::vector<ReadRecord> records;
};

TEST_F(DeckRecordsTest, are_the_first_two_fields)
{
    read_texts({{"Norway?", "Oslo", "x"}, {"Peru?", "Lima", ""}});
    EXPECT_EQ(read_records(), (Texts{{"Norway?", "Oslo"}, {"Peru?", "Lima"}}));
    EXPECT_EQ(records[0].number, 1);
    EXPECT_EQ(records[1].number, 2);
    EXPECT_EQ(records[1].place, "line 3");
    EXPECT_TRUE(source->has_question());
    EXPECT_EQ(source->left_out(), "");
}

TEST_F(DeckRecordsTest, are_the_fields_that_are_chosen)
{
    for (const auto& [question, answer] :
         {std::pair("remark", "front"), std::pair("3", "1"), std::pair("REMARK", "1")}) {
        read_texts({{"a", "b", "c"}}, chosen(question, answer));
        EXPECT_EQ(read_records(), (Texts{{"c", "a"}})) << question;
    }
    read_texts({{"a", "b", "c"}}, chosen("2", "2"));
    EXPECT_EQ(read_records(), (Texts{{"b", "b"}}));
}

TEST_F(DeckRecordsTest, are_of_the_field_with_a_number_as_its_name)
{
    read({{.name = "", .fields = {"2", "1"}}}, {{.place = "", .kind = 0, .texts = {"a", "b"}}}, chosen("1", "2"));
    EXPECT_EQ(read_records(), (Texts{{"b", "a"}}));
}

TEST_F(DeckRecordsTest, are_not_of_rows_without_the_chosen_fields)
{
    const std::vector<Kind> kinds{{.name = "a", .fields = {"Front", "Back"}},
                                  {.name = "b", .fields = {"Text", "Extra"}}};
    const std::vector<Row> rows{{.place = "note 1", .kind = 1, .texts = {"x", "y"}},
                                {.place = "note 2", .kind = 0, .texts = {"a", "b"}}};
    read(kinds, rows, chosen("front", "back"));
    EXPECT_EQ(read_records(), (Texts{{"a", "b"}}));
    EXPECT_EQ(records[0].number, 1);
    EXPECT_EQ(source->left_out(),
              "1 row was left out for want of the fields \"front\" and \"back\". The first is note 1.\r\n");
    read(kinds, rows, chosen("Front", "3"));
    EXPECT_FALSE(source->has_question());
    EXPECT_EQ(source->left_out(),
              "2 rows were left out for want of the fields \"Front\" and \"3\". The first is note 1.\r\n");
    for (const char* other : {"0", "-1", "1x", "99999999999999999999", ""}) {
        read(kinds, rows, chosen(other, "1"));
        EXPECT_TRUE(records.empty()) << other;
    }
}

TEST_F(DeckRecordsTest, need_two_fields)
{
    read({{.name = "", .fields = {"1"}}}, {{.place = "line 1", .kind = 0, .texts = {"a"}}});
    EXPECT_TRUE(records.empty());
    EXPECT_EQ(source->left_out(), "1 row was left out for want of two fields. The first is line 1.\r\n");
    EXPECT_EQ(source->nothing_found(), "No record was found: looked for rows with two fields separated by ;.\r\n");
}

TEST_F(DeckRecordsTest, that_are_not_there_are_told_with_the_chosen_fields)
{
    read_texts({}, chosen("A", "B"));
    EXPECT_EQ(source->nothing_found(), "No record was found: looked for rows with two fields separated by ;, with the "
                                       "fields \"A\" and \"B\".\r\n");
}

TEST_F(DeckRecordsTest, may_lack_a_text_but_not_all)
{
    read_texts({{"a", "", ""}, {" \t\r\n", "", ""}, {"", "b", ""}, {"", "", "c"}});
    EXPECT_EQ(read_records(), (Texts{{"a", ""}, {"", "b"}, {"", ""}}));
    EXPECT_EQ(records[1].number, 2);
    EXPECT_EQ(records[1].place, "line 4");
}

TEST_F(DeckRecordsTest, are_trimmed_and_have_cr_lf)
{
    EXPECT_EQ(question_of(" \t\n a\nb\r\nc\rd\n\n").text, "a\r\nb\r\nc\r\nd");
    EXPECT_EQ(question_of("a\n\nb").text, "a\r\n\r\nb");
    EXPECT_EQ(question_of("a ").text, "a");
}

TEST_F(DeckRecordsTest, have_their_unreadable_characters_counted)
{
    const exchange::ReadText text = question_of("a\xFF\xFF");
    EXPECT_EQ(text.text, "a\uFFFD\uFFFD");
    EXPECT_EQ(text.unreadable, 2U);
}

TEST_F(DeckRecordsTest, are_left_whole_for_the_import_to_refuse)
{
    EXPECT_EQ(question_of(std::string(201, 'x')).text, std::string(201, 'x'));
    EXPECT_EQ(source->left_out(), "");
    EXPECT_EQ(question_of(std::string(70'000, 'x')).cut_off, 70'000U - exchange::CollectedText::most_kept);
}

TEST_F(DeckRecordsTest, are_cut_to_what_a_course_holds_if_that_is_asked_for)
{
    const exchange::ReadText text = question_of(std::string(199, 'x') + "éé", true);
    EXPECT_EQ(text.text, std::string(199, 'x') + "é");
    EXPECT_EQ(text.cut_off, 0U);
    EXPECT_EQ(source->left_out(), "1 text was cut to 200 characters.\r\n");
    EXPECT_EQ(question_of(std::string(70'000, 'x'), true).text, std::string(200, 'x'));
    EXPECT_EQ(question_of(std::string(200, 'x'), true).text, std::string(200, 'x'));
    EXPECT_EQ(source->left_out(), "");
    EXPECT_EQ(question_of(std::string(198, 'x') + "  y", true).text, std::string(198, 'x'));
    EXPECT_EQ(question_of(std::string(199, 'x') + "\ny", true).text, std::string(199, 'x'));

    read_texts({{std::string(201, 'x'), std::string(201, 'y'), ""}}, {.fields = {}, .truncate = true});
    EXPECT_EQ(source->left_out(), "2 texts were cut to 200 characters.\r\n");
}

TEST_F(DeckRecordsTest, are_cut_in_the_form_that_is_stored)
{
    std::string decomposed;
    for (int i = 0; i < 200; ++i)
        decomposed += "e\xCC\x81";
    EXPECT_EQ(question_of(decomposed, true).text, decomposed);
    EXPECT_EQ(source->left_out(), "");
}

TEST_F(DeckRecordsTest, tell_what_the_deck_has_left_out)
{
    read({{.name = "", .fields = {"1"}}}, {{.place = "line 1", .kind = 0, .texts = {"a"}}}, {},
         "2 pictures were left out.\n\r\n1 thing was read as another.");
    EXPECT_EQ(source->left_out(), "2 pictures were left out.\r\n1 thing was read as another.\r\n"
                                  "1 row was left out for want of two fields. The first is line 1.\r\n");
}

TEST(FieldChoiceOfAText, is_what_stands_around_the_comma)
{
    const FieldChoice names = field_choice(" Front , Back side ");
    EXPECT_EQ(names.question, "Front");
    EXPECT_EQ(names.answer, "Back side");
    EXPECT_EQ(field_choice("3,1").question, "3");
}

TEST(FieldChoiceOfAText, that_names_not_two_fields_is_refused)
{
    for (const char* text : {"", "a", "a,", ",b", " , ", "a,b,c"}) {
        expect_error(
            [&] { static_cast<void>(field_choice(text)); },
            "\"" + std::string(text) +
                "\" does not name two fields. Name them, or give their numbers, with a comma between them, the "
                "field of the question first.");
    }
}

} // namespace
} // namespace cuedrill::decks
