#pragma once

#include "drill/drill_state.h"
#include "drill/edit_flags.h"
#include "drill/editor_view.h"
#include "drill/key_policy.h"
#include "drill/last_list.h"
#include "drill/question_view.h"
#include "drill/statistics.h"
#include "drill/status_line.h"
#include "drill/window_layout.h"
#include "platform/form1.h"

#include <string>

namespace cuedrill::drill {

/// The two text boxes of the main window as an editor of records.
class EditorBoxes : public EditorView {
public:
    EditorBoxes(platform::Form1& form1, const DrillState& state, const EditFlags& edit_flags, QuestionView& view,
                WindowLayout& layout, StatusLine& status, Statistics& statistics, LastList& last_list,
                KeyPolicy& key_policy)
        : form1_(form1), state_(state), edit_flags_(edit_flags), view_(view), layout_(layout), status_(status),
          statistics_(statistics), last_list_(last_list), key_policy_(key_policy)
    {
    }

    [[nodiscard]] RecordTexts typed_texts() const override;
    [[nodiscard]] RecordTexts loaded_texts() const override;
    void put_question(const std::string& text) override;
    void put_answer(const std::string& text) override;
    void empty_boxes() override;
    void show_answer_for_editing() override { view_.show_answer_for_editing(); }
    void open_editor() override;
    void go_to_question() override { form1_.Text_q.set_focus(); }
    void go_to_answer() override { form1_.Text_a.set_focus(); }
    void redisplay() override;
    void tell_unsaved(Unsaved texts) override;
    void pause_keys() override { key_policy_.pause(KeyPolicy::Paused::all); }
    void show_saved_record() override;

private:
    platform::Form1& form1_;
    const DrillState& state_;
    const EditFlags& edit_flags_;
    QuestionView& view_;
    WindowLayout& layout_;
    StatusLine& status_;
    Statistics& statistics_;
    LastList& last_list_;
    KeyPolicy& key_policy_;
};

} // namespace cuedrill::drill
