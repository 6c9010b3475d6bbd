#pragma once

#include "drill/record_editor.h"
#include "drill/scoring_fixture.h"
#include "fakes/course_builder.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>

namespace cuedrill::drill {

/// Two boxes without a window.
class FakeEditorView : public EditorView {
public:
    explicit FakeEditorView(const EditFlags& edit_flags) : flags(edit_flags) {}

    [[nodiscard]] RecordTexts typed_texts() const override { return typed; }
    [[nodiscard]] RecordTexts loaded_texts() const override { return loaded; }
    void put_question(const std::string& text) override { typed.question = text; }
    void put_answer(const std::string& text) override { typed.answer = text; }
    void empty_boxes() override { emptied = std::exchange(typed, {}); }
    void show_answer_for_editing() override { typed.answer = loaded.answer; }
    void open_editor() override
    {
        open = flags.editing();
        go_to_question();
    }
    void go_to_question() override { caret = "question"; }
    void go_to_answer() override { caret = "answer"; }
    void redisplay() override
    {
        open = flags.editing();
        told_unsaved.reset();
    }
    void tell_unsaved(Unsaved texts) override { told_unsaved = texts; }
    void pause_keys() override { ++key_pauses; }
    void show_saved_record() override
    {
        ++saves_shown;
        open = flags.editing();
    }

    const EditFlags& flags;
    RecordTexts typed;
    RecordTexts loaded;
    bool open = false; ///< for typing, as it was last drawn
    std::string caret; ///< where it was last put
    int saves_shown = 0;
    std::optional<Unsaved> told_unsaved;
    RecordTexts emptied; ///< what an undo brings back
    int key_pauses = 0;
};

/// The first of three records is the current one; the third repeats its answer. What is said about questions and
/// answers holds in the direction of the parameter.
class RecordEditorTest : public ScoringFixture {
protected:
    void open_course(bool inverted)
    {
        fakes::CourseBuilder builder;
        builder.question("France?", "Paris").level(2).attempts(4).fails(1).tested_ago(one_day);
        builder.question("Italy?", "Rome");
        builder.question("Capital of France?", "Paris");
        open_with_current(builder);
        course.params.invert = inverted;
        course.set_side_fields();
        view.loaded = inverted ? RecordTexts{"Paris", "France?"} : RecordTexts{"France?", "Paris"};
        view.typed = {view.loaded.question, ""};
        before = file();
    }

    void begin_new(const std::string& question, const std::string& answer)
    {
        editor.begin_new_record();
        view.typed = {question, answer};
    }

    void begin_change(const std::string& question, const std::string& answer)
    {
        editor.begin_edit();
        view.typed = {question, answer};
    }

    void expect_open(const std::string& question, const std::string& answer)
    {
        EXPECT_TRUE(editor.editing());
        EXPECT_TRUE(view.open);
        EXPECT_EQ(view.typed.question, question);
        EXPECT_EQ(view.typed.answer, answer);
        EXPECT_EQ(view.saves_shown, 0);
    }

    void expect_left(const std::string& question, const std::string& answer)
    {
        EXPECT_FALSE(editor.editing());
        EXPECT_FALSE(view.open);
        EXPECT_EQ(view.typed.question, question);
        EXPECT_EQ(view.typed.answer, answer);
        EXPECT_EQ(view.saves_shown, 0);
    }

    /// The texts of a record, as columns.
    void expect_texts(std::size_t index, const std::string& q, const std::string& a) const
    {
        const auto rows = file().qa;
        ASSERT_GT(rows.size(), index);
        EXPECT_EQ(rows.at(index).q, q);
        EXPECT_EQ(rows.at(index).a, a);
    }

    static std::string many(const std::string& text, int times)
    {
        std::string result;
        for (int i = 0; i < times; ++i)
            result += text;
        return result;
    }

    EditFlags flags;
    bank::RecordBank bank{course};
    FakeEditorView view{flags};
    RecordEditor editor{
        course, flags, bank, view, {desktop, engine.text_compare, display, statistics, scoring, selection}};
    fakes::CourseContents before;
};

class Straight : public RecordEditorTest {
protected:
    void SetUp() override { open_course(false); }
};

} // namespace cuedrill::drill
