#pragma once

#include "drill/record_editor.h"
#include "drill/scoring_fixture.h"
#include "fakes/course_builder.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>

namespace cuedrill::drill {

/// The editor as the user sees and uses it.
class SeenEditor {
public:
    SeenEditor(fakes::FakeForm1& form1, const DrillState& state, KeyPolicy& key_policy)
        : form1_(form1), state_(state), key_policy_(key_policy)
    {
    }

    [[nodiscard]] RecordTexts typed() const { return {form1_.Text_q.text_value, form1_.Text_a.text_value}; }
    void type(const RecordTexts& texts)
    {
        form1_.Text_q.text_value = texts.question;
        form1_.Text_a.text_value = texts.answer;
    }
    [[nodiscard]] RecordTexts loaded() const { return {state_.shown.loaded_question(), state_.shown.loaded_answer()}; }
    /// The texts that undo in the boxes restores.
    [[nodiscard]] RecordTexts emptied() const
    {
        return {form1_.Text_q.cleared.value_or(""), form1_.Text_a.cleared.value_or("")};
    }
    [[nodiscard]] bool open() const { return !form1_.Text_q.locked; }
    [[nodiscard]] std::string caret() const
    {
        return form1_.Text_q.has_focus() ? "question" : form1_.Text_a.has_focus() ? "answer" : "";
    }
    [[nodiscard]] std::string status() const { return form1_.screen.P_status.text; }
    [[nodiscard]] bool keys_rest() { return !key_policy_.counts({platform::Key::character, "+"}, false); }

private:
    fakes::FakeForm1& form1_;
    const DrillState& state_;
    KeyPolicy& key_policy_;
};

/// The first of three records is the current one; the third repeats its answer. "Question" and "answer" depend on the
/// direction, which is the parameter.
class RecordEditorTest : public ScoringFixture {
protected:
    RecordEditorTest();
    ~RecordEditorTest() override;

    void open_course(bool inverted);

    void begin_new(const std::string& question, const std::string& answer);
    void begin_change(const std::string& question, const std::string& answer);

    void expect_open(const std::string& question, const std::string& answer);
    void expect_left(const std::string& question, const std::string& answer);

    /// The texts of a record, as columns.
    void expect_texts(std::size_t index, const std::string& q, const std::string& a) const;

    static std::string many(const std::string& text, int times);

    static constexpr const char* saved = "Saved.";
    static constexpr const char* surely_unsaved = "The changes are not saved.";
    static constexpr const char* perhaps_unsaved = "It is not known whether the changes are saved.";

    bank::RecordBank& bank;
    RecordEditor& editor;
    SeenEditor view;
    fakes::CourseContents before;
};

class Straight : public RecordEditorTest {
protected:
    void SetUp() override { open_course(false); }
};

} // namespace cuedrill::drill
