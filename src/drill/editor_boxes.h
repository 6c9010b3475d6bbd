#pragma once

#include "common/int16.h"
#include "drill/display.h"
#include "drill/drill_state.h"
#include "drill/edit_flags.h"
#include "drill/key_policy.h"
#include "drill/last_list.h"
#include "drill/statistics.h"
#include "drill/status_line.h"
#include "drill/window_layout.h"
#include "platform/form1.h"

#include <string>

namespace cuedrill::drill {

/// The two texts of a record; `question` is the side that is asked.
struct RecordTexts {
    std::string question;
    std::string answer;
};

/// Whether texts left in the boxes are unsaved for certain, or the outcome of the save is unknown.
enum class Unsaved { surely, perhaps };

/// The two text boxes of the main window, used as an editor for records.
class EditorBoxes {
public:
    EditorBoxes(platform::Form1& form1, const DrillState& state, const EditFlags& edit_flags, Display& display,
                WindowLayout& layout, StatusLine& status, Statistics& statistics, LastList& last_list,
                KeyPolicy& key_policy)
        : form1_(form1), state_(state), edit_flags_(edit_flags), display_(display), layout_(layout), status_(status),
          statistics_(statistics), last_list_(last_list), key_policy_(key_policy)
    {
    }

    /// The texts in the boxes.
    [[nodiscard]] RecordTexts typed_texts() const;
    /// The texts of the current record as they were loaded.
    [[nodiscard]] RecordTexts loaded_texts() const;
    void put_question(const std::string& text);
    void put_answer(const std::string& text);

    /// Empties both boxes. The user can undo this in each box.
    void empty_boxes();

    /// Shows the answer of the current record for editing.
    void show_answer_for_editing() { display_.show_answer_for_editing(); }

    /// Makes the boxes editable, with their present texts, and puts the cursor into the question.
    void open_editor();

    /// Puts the cursor into the question or the answer, for the user to correct it.
    void go_to_question() { form1_.Text_q.set_focus(); }
    void go_to_answer() { form1_.Text_a.set_focus(); }

    /// Repaints the window for the current editing flags. The texts stay.
    void redisplay();

    /// Shows in the status line that the texts in the boxes were not saved, or may not have been. For a second Escape
    /// is ignored, so that it does not end the program.
    void tell_unsaved(Unsaved texts);

    /// Ignores the command keys for a second, because the user may still be typing.
    void pause_keys() { key_policy_.pause(KeyPolicy::Paused::all); }

    /// Shows the saved record with its answer, and the current counts. If the course cannot be read, the texts stay in
    /// the boxes, no question is on display, and the status line says that they are saved.
    /// @throws platform::DatabaseError
    void show_saved_record(common::Int16 cnt);

private:
    platform::Form1& form1_;
    const DrillState& state_;
    const EditFlags& edit_flags_;
    Display& display_;
    WindowLayout& layout_;
    StatusLine& status_;
    Statistics& statistics_;
    LastList& last_list_;
    KeyPolicy& key_policy_;
};

} // namespace cuedrill::drill
