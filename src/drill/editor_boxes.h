#pragma once

#include "drill/drill_state.h"
#include "drill/edit_flags.h"
#include "drill/editor_view.h"
#include "drill/key_pause.h"
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
                KeyPause& key_pause)
        : m_form1(form1), m_state(state), m_edit_flags(edit_flags), m_view(view), m_layout(layout), m_status(status),
          m_statistics(statistics), m_last_list(last_list), m_key_pause(key_pause)
    {
    }

    [[nodiscard]] RecordTexts typed_texts() const override;
    [[nodiscard]] RecordTexts loaded_texts() const override;
    void put_question(const std::string& text) override;
    void put_answer(const std::string& text) override;
    void empty_boxes() override;
    void show_answer_for_editing() override { m_view.show_answer_for_editing(); }
    void open_editor() override;
    void go_to_question() override { m_form1.Text_q.set_focus(); }
    void go_to_answer() override { m_form1.Text_a.set_focus(); }
    void redisplay() override;
    void tell_unsaved(Unsaved texts) override;
    void pause_keys() override { m_key_pause.begin(KeyPause::Keys::all); }
    void show_saved_record() override;

private:
    platform::Form1& m_form1;
    const DrillState& m_state;
    const EditFlags& m_edit_flags;
    QuestionView& m_view;
    WindowLayout& m_layout;
    StatusLine& m_status;
    Statistics& m_statistics;
    LastList& m_last_list;
    KeyPause& m_key_pause;
};

} // namespace cuedrill::drill
