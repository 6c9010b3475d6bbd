#include "drill/drill_fixture.h"
#include "drill/question_import.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cuedrill::drill {
namespace {

using Texts = std::vector<std::pair<std::string, std::string>>;

/// Imports decks of other programs into a course that is empty at first.
class DeckImport : public DrillFixture {
protected:
    void SetUp() override
    {
        builder.text_param("course_title", "Capitals");
        desktop.expect_box("You have passed level 5 for all questions."); // true of a course without questions
        start();
        desktop.boxes.clear();
    }

    void import(const std::string& name, std::string_view bytes)
    {
        user([&] { logic->question_import.import_file(folder.write(name, bytes)); });
    }

    void expect_end(int count, const std::string& details = "")
    {
        desktop.expect_box_like(
            {.text = std::to_string(count) + " questions and answers insterted.", .details = details},
            platform::BoxAnswer::ok);
    }

    [[nodiscard]] Texts texts() const
    {
        Texts found;
        for (const fakes::QaRow& row : fakes::read_course(path).qa)
            found.emplace_back(row.q, row.a);
        return found;
    }
};

TEST_F(DeckImport, of_two_columns_asks_nothing_more)
{
    expect_end(2);
    import("words.csv", "one,uno\n\"two, three\",\"dos\ntres\"\n");
    EXPECT_EQ(texts(), (Texts{{"one", "uno"}, {"two, three", "dos\r\ntres"}}));
}

TEST_F(DeckImport, of_more_columns_has_two_chosen)
{
    desktop.expect_columns({"No", "Question", "Answer"}, platform::ChosenColumns{.first = 1, .second = 2});
    expect_end(2, "The first row was read as the names of the fields: \"No\" \"Question\" \"Answer\"\r\n");
    import("words.CSV", "No;Question;Answer\n1;one;uno\n2;two;dos\n");
    EXPECT_EQ(texts(), (Texts{{"one", "uno"}, {"two", "dos"}}));
    ASSERT_EQ(desktop.columns_boxes.size(), 1U);
    EXPECT_EQ(desktop.columns_boxes[0].rows,
              (std::vector<std::vector<std::string>>{{"1", "one", "uno"}, {"2", "two", "dos"}}));
}

TEST_F(DeckImport, shows_five_records_at_most)
{
    desktop.expect_columns({"1", "2", "3"}, platform::ChosenColumns{.first = 2, .second = 0});
    expect_end(7);
    import("words.tsv", "a\tb\tc\na\tb\tc\na\tb\tc\na\tb\tc\na\tb\tc\na\tb\tc\na\tb\tc\n");
    EXPECT_EQ(desktop.columns_boxes.at(0).rows.size(), 5U);
    EXPECT_EQ(texts().at(6), (std::pair<std::string, std::string>("c", "a")));
}

TEST_F(DeckImport, does_nothing_after_a_cancel)
{
    desktop.expect_columns({"1", "2", "3"}, std::nullopt);
    import("words.csv", "a,b,c\nd,e,f\n");
    EXPECT_TRUE(texts().empty());
}

TEST_F(DeckImport, without_a_record_says_what_was_looked_for)
{
    user([&] {
        desktop.expect_box("0 questions and answers insterted.");
        logic->question_import.import_file(folder.write("words.csv", "\n\n"));
    });
    EXPECT_NE(desktop.boxes.at(0).details.find("rows with two fields separated by"), std::string::npos)
        << desktop.boxes.at(0).details;
}

TEST_F(DeckImport, names_the_place_of_what_is_refused)
{
    expect_end(2);
    desktop.expect_box("Refused, and not stored: 1");
    import("words.csv", "one,uno\n" + std::string(201, 'a') + ",dos\n");
    EXPECT_NE(desktop.boxes.back().details.find("line 2"), std::string::npos) << desktop.boxes.back().details;
    EXPECT_EQ(texts(), (Texts{{"one", "uno"}}));
}

TEST_F(DeckImport, tells_of_an_empty_text_with_its_place)
{
    desktop.expect_box("line 2: Answer to question 2  is empty. Record not inserted.");
    expect_end(1);
    import("words.csv", "one,uno\ntwo,\n");
    EXPECT_EQ(texts(), (Texts{{"one", "uno"}}));
}

TEST_F(DeckImport, stops_with_the_reason_when_the_file_cannot_be_read)
{
    const std::string missing = folder.file("none.csv");
    desktop.expect_box("The import has stopped.\r\n\r\nCannot read " + missing +
                       ": No such file or directory.\r\n\r\n0 questions and answers are stored.");
    user([&] { logic->question_import.import_file(missing); });
}

TEST_F(DeckImport, reads_every_other_file_as_a_question_text)
{
    desktop.expect_box("0 questions and answers insterted.");
    import("words.txt", "one,uno\n");
    EXPECT_TRUE(texts().empty());
}

} // namespace
} // namespace cuedrill::drill
