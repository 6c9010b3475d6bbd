#pragma once

#include "common/int16.h"
#include "drill/drill_fixture.h"

#include <optional>
#include <string>
#include <vector>

namespace cuedrill::drill {

using Lines = std::vector<std::string>;

/// Lists of a course that the test describes. "Question" and "asked" depend on the direction of the test.
class RecordListsTest : public DrillFixture {
protected:
    RecordListsTest();
    ~RecordListsTest() override;

    /// A record of the course; each side can be described.
    struct NewRecord {
        fakes::QuestionBuilder asked;
        fakes::QuestionBuilder answered;
    };

    NewRecord add(const std::string& question, const std::string& answer = "answer");

    /// Starts the program on the course. No question is on display.
    void open_course();
    /// Starts the program on the course with more records: "item 1", "item 2" ... on both sides.
    void open_course_with_items(int count);
    /// Changes the course as another program would.
    void change_course(const std::string& sql) { engine.database.execute(sql); }

    /// Puts a record on display.
    void show(common::Int16 cnt);
    /// Types the two texts of a new record.
    void begin_new(const std::string& question, const std::string& answer);

    /// Answers the input box of a search; std::nullopt means Cancel.
    void find_question(std::optional<std::string> text);
    void find_answer(std::optional<std::string> text);

    /// Clicks on a line of the list that is shown.
    void click(std::size_t place);
    /// Clicks on a line with this text.
    void click_line(const std::string& line);

    void expect_question_about_saving(platform::BoxAnswer answer);
    void expect_warning(const std::string& text);
    /// The message after a planned failure to read the course.
    [[nodiscard]] std::string unreadable() const;
    /// The database's own error message for the statement.
    [[nodiscard]] std::string refusal_of(const std::string& sql);

    /// Expects this text in the status line, without a time limit.
    void expect_status(const std::string& text);
    /// Expects that a record is on display and the list is closed.
    void expect_chosen(common::Int16 cnt);

    [[nodiscard]] const Lines& lines() const { return form1.listav.lines; }
    [[nodiscard]] bool list_shown() const { return form1.listav.is_visible; }
    /// How often a new list was shown, and how often the lines of a list were replaced.
    [[nodiscard]] std::ptrdiff_t lists_shown() const { return times_begun("listav.lines="); }
    [[nodiscard]] std::ptrdiff_t lists_replaced() const { return times_begun("listav.replaced_lines="); }
    /// The list built last, as recalled by the command.
    [[nodiscard]] Lines recalled();

    [[nodiscard]] fakes::CourseContents file() const { return fakes::read_course(path); }

    /// Name of a column on the side that is asked.
    [[nodiscard]] std::string asked_column(const std::string& ending = "") const
    {
        return (inverted ? "a" : "q") + ending;
    }

    bool inverted = false;

private:
    [[nodiscard]] std::ptrdiff_t times_begun(std::string_view noted) const;
};

/// The same test in both directions; the parameter is whether the course is inverted.
class EitherDirectionLists : public RecordListsTest, public testing::WithParamInterface<bool> {
protected:
    void SetUp() override { inverted = GetParam(); }
};

std::string direction_name(const testing::TestParamInfo<bool>& is_inverted);

} // namespace cuedrill::drill
