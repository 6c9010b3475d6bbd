#pragma once

#include "bank/record_lists.h"
#include "common/errors.h"
#include "record_editor_fixture.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace cuedrill::bank {

using Lines = std::vector<std::string>;

/// A window that holds a list and no more.
class FakeListScreen : public ListScreen {
public:
    explicit FakeListScreen(const store::Course& open_course) : course(open_course) {}

    void set_for_list(std::vector<std::string> new_lines) override
    {
        lines = std::move(new_lines);
        shown = true;
        ++lists_shown;
    }
    void replace_list(std::vector<std::string> new_lines) override
    {
        lines = std::move(new_lines);
        ++lists_replaced;
    }
    [[nodiscard]] bool list_shown() const override { return shown; }
    [[nodiscard]] std::string loaded_question() const override { return question; }
    void show_chosen_record() override
    {
        chosen.push_back(course.current_cnt);
        shown = false;
    }

    const store::Course& course;
    Lines lines;
    bool shown = false;
    int lists_shown = 0;
    int lists_replaced = 0;
    std::string question;              ///< on display
    std::vector<common::Int16> chosen; ///< numbers of the records that were put on display
};

/// Has the list built anew after each save, as the main window does.
class FakeEditorBesideList : public FakeEditorView {
public:
    FakeEditorBesideList(const EditFlags& edit_flags, RecordLists& lists) : FakeEditorView(edit_flags), m_lists(lists)
    {
    }

    void show_saved_record() override
    {
        FakeEditorView::show_saved_record();
        m_lists.rebuild_shown_list();
    }

private:
    RecordLists& m_lists;
};

/// Lists of a course that the test describes. "Question" and "asked" go by the direction of the test.
class RecordListsTest : public scheduler::DrillFixture {
protected:
    /// A record of the course to be opened, to be described on either side.
    struct NewRecord {
        fakes::QuestionBuilder asked;
        fakes::QuestionBuilder answered;
    };

    NewRecord add(const std::string& question, const std::string& answer = "answer")
    {
        fakes::QuestionBuilder q_side =
            inverted ? builder.question(answer, question) : builder.question(question, answer);
        fakes::QuestionBuilder a_side = q_side;
        a_side.inverted();
        return inverted ? NewRecord{a_side, q_side} : NewRecord{q_side, a_side};
    }

    void open_course()
    {
        open(builder);
        course.params.invert = inverted;
        course.set_side_fields();
    }

    /// Opens the course with more records: "item 1", "item 2" ... on both sides.
    void open_course_with_items(int count)
    {
        open_course();
        database.execute("Insert into qa (q, a) with recursive numbers (n) as (select 1 union all select n + 1 from "
                         "numbers where n < " +
                         std::to_string(count) + ") select 'item ' || n, 'item ' || n from numbers");
        database.forget();
    }

    /// Answers the input box of a search; nothing is Cancel.
    void find_question(std::optional<std::string> text)
    {
        desktop.expect_input("String?", std::move(text));
        lists.m_find_q();
    }
    void find_answer(std::optional<std::string> text)
    {
        desktop.expect_input("String?", std::move(text));
        lists.m_find_a();
    }

    void begin_new(const std::string& question, const std::string& answer)
    {
        editor.begin_new_record();
        view.typed = {question, answer};
    }

    void expect_question_about_saving(platform::BoxAnswer answer)
    {
        desktop.expect_box_like({.text = "Do you want to save the changes?",
                                 .buttons = platform::BoxButtons::yes_no,
                                 .icon = platform::BoxIcon::question,
                                 .must_be_answered = true},
                                answer);
    }

    void expect_warning(const std::string& text)
    {
        desktop.expect_box_like({.text = text, .icon = platform::BoxIcon::exclamation}, platform::BoxAnswer::ok);
    }

    /// What is told when a planned failure has kept the course from being read.
    [[nodiscard]] std::string unreadable() const
    {
        return "The course " + course.db_path + " could not be read or written.\r\n\r\nThe disk is full.";
    }

    /// Why the database does not run the statement, in its own words.
    [[nodiscard]] std::string refusal_of(const std::string& sql)
    {
        try {
            static_cast<void>(engine.database.open_recordset(sql));
        } catch (const platform::DatabaseError& error) {
            return error.what();
        }
        ADD_FAILURE() << "Not refused: " << sql;
        return {};
    }

    void expect_status(const std::string& text) const
    {
        ASSERT_FALSE(status.texts.empty());
        EXPECT_EQ(status.texts.back().text, text);
        EXPECT_EQ(status.texts.back().seconds, 0);
    }

    /// The list built last, as recalling it shows it.
    [[nodiscard]] Lines recalled()
    {
        lists.recall_find_list();
        return screen.lines;
    }

    bool inverted = false;
    fakes::CourseBuilder builder;
    FakeListScreen screen{course};
    EditFlags flags;
    RecordBank bank{course, flags, desktop};
    FakeEditorBesideList view{flags, lists};
    RecordEditor editor{
        course, flags, bank, view, {desktop, engine.text_compare, display, statistics, scoring, selection}};
    RecordLists lists{course, bank, screen, {desktop, engine.text_compare, status, editor, end_of_program, clock}};
};

/// The same in both directions; the parameter is whether the course is inverted.
class EitherDirectionLists : public RecordListsTest, public testing::WithParamInterface<bool> {
protected:
    void SetUp() override { inverted = GetParam(); }

    /// Name of a column on the side that is asked.
    [[nodiscard]] std::string asked_column(const std::string& ending = "") const
    {
        return (inverted ? "a" : "q") + ending;
    }
};

inline std::string direction_name(const testing::TestParamInfo<bool>& is_inverted)
{
    return is_inverted.param ? "inverted" : "straight";
}

} // namespace cuedrill::bank
