#include "common/errors.h"
#include "exchange/import_words.h"
#include "exchange/importer_fixture.h"

#include <chrono>
#include <memory>
#include <utility>

namespace cuedrill::exchange {
namespace {

using Lacks = EmptyRecord::Lacks;

/// Gives records of a list, with a step of reading before each.
class ListSource : public RecordSource {
public:
    explicit ListSource(std::vector<ReadRecord> records) : records_(std::move(records)) {}

    [[nodiscard]] Step step() override
    {
        if (given_ == records_.size())
            return Step::end;
        reading_ = !reading_;
        if (reading_)
            return Step::reading;
        ++given_;
        return Step::record;
    }
    [[nodiscard]] const ReadRecord& record() const override { return records_.at(given_ - 1); }
    [[nodiscard]] bool has_question() const override { return given_ != 0; }
    [[nodiscard]] std::optional<int> percent() const override { return static_cast<int>(given_); }
    [[nodiscard]] std::string nothing_found() const override { return "No record was found.\r\n"; }
    [[nodiscard]] std::string left_out() const override { return "2 pictures were left out.\r\n"; }

private:
    std::vector<ReadRecord> records_;
    std::size_t given_ = 0;
    bool reading_ = false;
};

ReadRecord record(std::int64_t number, const std::string& question, const std::string& answer)
{
    return {.number = number,
            .question = {.text = question},
            .answer = {.text = answer},
            .place = "line " + std::to_string(number + 1)};
}

/// Proves that the importer takes records from any source, and names their places where they have some.
class ImportedSource : public ImportFixture {
protected:
    [[nodiscard]] Importer importer_of_records(std::vector<ReadRecord> records)
    {
        return {course, clock, engine.text_compare,
                [records = std::move(records)] { return std::make_unique<ListSource>(records); }};
    }
};

TEST_F(ImportedSource, gives_its_records_to_the_course)
{
    Importer importer = importer_of_records({record(1, "Norway?", "Oslo"), record(2, "Peru?", "Lima")});
    const Outcome outcome = import_with(importer);
    EXPECT_EQ(stored(), (Texts{{"Norway?", "Oslo"}, {"Peru?", "Lima"}}));
    EXPECT_EQ(outcome.progress.percent, 2);
    EXPECT_EQ(outcome.failure, "");
    EXPECT_EQ(end_details(importer), "2 pictures were left out.\r\n");
}

TEST_F(ImportedSource, is_opened_by_the_first_step)
{
    int opened = 0;
    Importer importer(course, clock, engine.text_compare, [&] {
        ++opened;
        return std::make_unique<ListSource>(std::vector{record(1, "a", "b")});
    });
    EXPECT_EQ(opened, 0);
    EXPECT_EQ(importer.source(), nullptr);
    EXPECT_EQ(end_details(importer), "");
    EXPECT_EQ(import_with(importer).failure, "");
    EXPECT_EQ(opened, 1);
}

TEST_F(ImportedSource, that_cannot_be_opened_stops_the_import)
{
    Importer importer(course, clock, engine.text_compare,
                      []() -> std::unique_ptr<RecordSource> { throw common::Error("It is damaged."); });
    EXPECT_EQ(import_with(importer).failure, "It is damaged.");
    EXPECT_EQ(end_details(importer), "");
}

TEST_F(ImportedSource, tells_what_it_has_looked_for_if_it_has_nothing)
{
    Importer importer = importer_of_records({});
    EXPECT_FALSE(import_with(importer).progress.has_question);
    EXPECT_EQ(end_details(importer), "No record was found.\r\n2 pictures were left out.\r\n");
}

TEST_F(ImportedSource, has_the_places_of_its_records_in_the_report)
{
    Importer importer = importer_of_records({record(1, "a", std::string(201, 'x')), record(2, "c", "d")});
    ReadRecord unreadable = record(4, "e", "f");
    unreadable.question.unreadable = 1;
    Importer other = importer_of_records({unreadable});
    EXPECT_EQ(import_with(importer).lines,
              "line 2: The answer has 201 characters; 200 fit. \"" + std::string(201, 'x') + "\"\r\n");
    EXPECT_EQ(import_with(other).lines, "line 5: 1 character of the question could not be read. \"e\"\r\n");
}

TEST(EmptyWords, name_the_place_where_there_is_one)
{
    EXPECT_EQ(empty_words({.number = 5, .lacks = Lacks::question, .place = "line 12"}),
              "line 12: Question 5  is empty. Record not inserted.");
    EXPECT_EQ(empty_words({.number = 5, .lacks = Lacks::answer, .place = {}}),
              "Answer to question 5  is empty. Record not inserted.");
}

TEST_F(ImportedSource, has_the_place_in_the_message_about_an_empty_text)
{
    Importer importer = importer_of_records({record(1, "a", "")});
    const Progress progress = importer.step(std::chrono::hours(1));
    ASSERT_TRUE(progress.empty);
    EXPECT_EQ(empty_words(*progress.empty), "line 2: Answer to question 1  is empty. Record not inserted.");
}

} // namespace
} // namespace cuedrill::exchange
