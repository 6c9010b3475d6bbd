#include "adapters/deck_adapters.h"
#include "common/date_time.h"
#include "common/text.h"
#include "exchange/decks/deck_fixture.h"
#include "exchange/decks/deck_opening.h"
#include "exchange/decks/deck_records.h"
#include "exchange/decks/table_writer.h"
#include "exchange/importer_fixture.h"
#include "fakes/fake_files.h"
#include "store/records.h"

#include <gtest/gtest.h>
#include <memory>
#include <utility>

namespace cuedrill::decks {
namespace {

using exchange::ImportFixture;
using QuestionsAndAnswers = exchange::Texts;

/// Writes the records of a real course, and reads them back.
class WrittenTable : public ImportFixture {
protected:
    void insert(const QuestionsAndAnswers& texts)
    {
        for (const auto& [question, answer] : texts)
            store::insert_record(database, store::next_cnt(database), {.q = question, .a = answer});
    }

    std::string written(const TableForm& form = {})
    {
        const auto rows = database.open_recordset("Select * from qa order by cnt");
        const auto file = memory.begin_replacement("/a.csv");
        count = write_table(*file, *rows, form);
        file->finish();
        return memory.files.at("/a.csv");
    }

    /// The texts of the rows that the file gives when it is read as a table.
    Texts read_back(const std::string& bytes)
    {
        memory.files["/a.csv"] = bytes;
        return texts_of(rows_of(*open_deck("/a.csv", {}, memory, tools.tools()).deck));
    }

    /// Imports the file into the course.
    exchange::Outcome import_table(const std::string& bytes, const RecordChoice& choice = {})
    {
        memory.files["/a.csv"] = bytes;
        exchange::Importer importer(course, clock, engine.text_compare, [&] {
            OpenedDeck opened = open_deck("/a.csv", {}, memory, tools.tools());
            return std::make_unique<DeckRecords>(std::move(opened.deck), opened.looked_for, engine.text_compare,
                                                 choice);
        });
        return import_with(importer);
    }

    fakes::FakeFiles memory;
    adapters::DeckAdapters tools;
    std::int64_t count = 0;
};

TEST_F(WrittenTable, has_a_header_and_a_row_for_each_record)
{
    insert({{"Norway?", "Oslo"}, {"Perú?", "Lima"}});
    EXPECT_EQ(written(), "question,answer\r\nNorway?,Oslo\r\nPerú?,Lima\r\n");
    EXPECT_EQ(count, 2);
}

TEST_F(WrittenTable, of_an_empty_course_is_a_header)
{
    EXPECT_EQ(written(), "question,answer\r\n");
    EXPECT_EQ(count, 0);
}

TEST_F(WrittenTable, has_quotation_marks_where_they_are_needed)
{
    insert({{"a,b", "c\"d"}, {"e\r\nf", "g\nh"}, {"i\rj", " k"}, {"l ", "\tm"}, {"n\t", "o p;q|r#"}, {"", ""}});
    EXPECT_EQ(written(), "question,answer\r\n\"a,b\",\"c\"\"d\"\r\n\"e\r\nf\",\"g\nh\"\r\n\"i\rj\",\" k\"\r\n"
                         "\"l \",\"\tm\"\r\n\"n\t\",o p;q|r#\r\n,\r\n");
}

TEST_F(WrittenTable, may_have_tabs_between_its_fields)
{
    insert({{"a,b", "c\td"}});
    EXPECT_EQ(written({.separator = '\t'}), "question\tanswer\r\na,b\t\"c\td\"\r\n");
}

TEST_F(WrittenTable, may_have_the_numbers_of_the_records)
{
    insert({{"a", "b"}, {"c", "d"}});
    database.execute("Delete from qa where cnt = 1");
    EXPECT_EQ(written({.numbered = true}), "number,question,answer\r\n2,c,d\r\n");
}

TEST_F(WrittenTable, may_have_all_columns_of_both_directions)
{
    insert({{"a", "b"}, {"c", "d"}});
    const auto day = [](int hour) {
        return std::to_string(common::DateTime::from_fields(
                                  {.year = 2026, .month = 11, .day = 5, .hour = hour, .minute = 47, .second = 9})
                                  .day_number());
    };
    database.execute("Update qa set q_attempts = 1, q_fails = 2, q_successes = 3, q_date_last_test = " + day(5) +
                     ", q_date_last_show = " + day(6) +
                     ", a_attempts = 4, a_fails = -5, a_successes = 6, a_date_last_test = " + day(7) +
                     ", a_date_last_show = " + day(8) + " where cnt = 1");
    database.execute("Update qa set q_attempts = null where cnt = 2");
    EXPECT_EQ(written({.numbered = true, .statistics = true}),
              "number,question,answer,question_attempts,question_fails,question_level,question_last_test,"
              "question_last_show,answer_attempts,answer_fails,answer_level,answer_last_test,answer_last_show\r\n"
              "1,a,b,1,2,3,2026-11-05 05:47:09,2026-11-05 06:47:09,4,-5,6,2026-11-05 07:47:09,2026-11-05 08:47:09\r\n"
              "2,c,d,,0,0,,,0,0,0,,\r\n");
}

TEST_F(WrittenTable, on_a_full_disk_is_not_finished)
{
    insert({{"a", "b"}});
    memory.write_failure = "There is no room.";
    expect_error([&] { static_cast<void>(written()); }, "There is no room.");
    EXPECT_FALSE(memory.files.contains("/a.csv"));
}

/// Texts that a reader could take for something else.
const Texts awkward{{"a,b", "c;d"},
                    {"\"", "\"\""},
                    {"\"quoted\"", "say \"hi\""},
                    {"one\r\ntwo", "three\r\n\r\nfour"},
                    {"tab\there", "bar|here"},
                    {"sep=;", "#no comment"},
                    {"<b>bold</b>", "&amp;"},
                    {"\\n", "'single'"},
                    {"é€𝄞", "日本"},
                    {"=1+2", "-"},
                    {"question", "answer"},
                    {"x", ""},
                    {"", "y"}};

class RoundTrip : public WrittenTable, public testing::WithParamInterface<char> {
protected:
    void insert_awkward()
    {
        for (const auto& texts : awkward)
            insert({{texts[0], texts[1]}});
    }
};

/// `texts` with LF as line end, as a deck has it.
Texts as_read(Texts texts)
{
    for (auto& row : texts) {
        for (std::string& text : row)
            text = common::replace_all(text, "\r\n", "\n");
    }
    return texts;
}

TEST_P(RoundTrip, gives_back_the_texts)
{
    insert_awkward();
    EXPECT_EQ(read_back(written({.separator = GetParam()})), as_read(awkward));
}

TEST_P(RoundTrip, gives_back_blanks_at_the_ends)
{
    const Texts texts{{" a", "b "}, {"\tc", "d\t"}, {"\r\ne", "f\r\n"}};
    for (const auto& row : texts)
        insert({{row[0], row[1]}});
    EXPECT_EQ(read_back(written({.separator = GetParam()})), as_read(texts));
}

TEST_P(RoundTrip, of_an_import_stores_the_same_texts)
{
    QuestionsAndAnswers texts;
    for (const auto& row : awkward) {
        if (!row[0].empty() && !row[1].empty())
            texts.emplace_back(row[0], row[1]);
    }
    insert(texts);
    const std::string bytes = written({.separator = GetParam()});
    database.execute("Delete from qa");
    const exchange::Outcome outcome = import_table(bytes);
    EXPECT_EQ(outcome.failure, "");
    EXPECT_EQ(outcome.lines, "");
    EXPECT_EQ(stored(), texts);
}

TEST_P(RoundTrip, of_all_columns_needs_the_names_of_the_fields)
{
    insert({{"a", "b"}});
    const std::string bytes = written({.separator = GetParam(), .numbered = true, .statistics = true});
    database.execute("Delete from qa");
    EXPECT_EQ(import_table(bytes, {.fields = FieldChoice{.question = "Question", .answer = "Answer"}}).failure, "");
    EXPECT_EQ(stored(), (QuestionsAndAnswers{{"a", "b"}}));
}

INSTANTIATE_TEST_SUITE_P(Separators, RoundTrip, testing::Values(',', '\t', ';', '|'));

/// What an import tells about the rows of a table.
class ImportedTable : public WrittenTable {};

TEST_F(ImportedTable, is_told_by_its_lines)
{
    const exchange::Outcome outcome =
        import_table("question,answer\na,b\n" + std::string(201, 'x') + ",c\n\"d\n\",e\n\xC3,f\ng,\n");
    EXPECT_EQ(outcome.lines, "line 3: The question has 201 characters; 200 fit. \"" + std::string(201, 'x') + "\"\r\n");
    EXPECT_EQ(stored(), (QuestionsAndAnswers{{"a", "b"}, {"d", "e"}, {"Ã", "f"}}));
    EXPECT_EQ(outcome.empty, (decltype(outcome.empty){{5, exchange::EmptyRecord::Lacks::answer}}));
}

TEST_F(ImportedTable, may_have_its_texts_cut)
{
    const exchange::Outcome outcome =
        import_table("a,b\n" + std::string(201, 'x') + ",c\n", {.fields = {}, .truncate = true});
    EXPECT_EQ(outcome.lines, "");
    EXPECT_EQ(stored(), (QuestionsAndAnswers{{"a", "b"}, {std::string(200, 'x'), "c"}}));
}

} // namespace
} // namespace cuedrill::decks
