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

/// The two texts of a record, the asked side first.
struct RecordTexts {
    std::string question;
    std::string answer;
};

/// What is known of texts that are left in the boxes: whether they are really not saved.
enum class Unsaved { surely, perhaps };

/// The two text boxes of the main window as an editor of records.
class EditorBoxes {
public:
    EditorBoxes(platform::Form1& form1, const DrillState& state, const EditFlags& edit_flags, Display& display,
                WindowLayout& layout, StatusLine& status, Statistics& statistics, LastList& last_list,
                KeyPolicy& key_policy)
        : form1_(form1), state_(state), edit_flags_(edit_flags), display_(display), layout_(layout), status_(status),
          statistics_(statistics), last_list_(last_list), key_policy_(key_policy)
    {
    }

    /// What stands in the boxes.
    [[nodiscard]] RecordTexts typed_texts() const;
    /// The texts of the current record as they were put on display.
    [[nodiscard]] RecordTexts loaded_texts() const;
    void put_question(const std::string& text);
    void put_answer(const std::string& text);

    /// Empties both boxes. An undo in each brings back what stood there.
    void empty_boxes();

    /// Puts the answer of the current record into its box, to be changed.
    void show_answer_for_editing() { display_.show_answer_for_editing(); }

    /// Makes the boxes ready to be typed in, with what stands in them, and puts the caret into the question.
    void open_editor();

    /// Put the caret into the question or the answer, where something is to be mended.
    void go_to_question() { form1_.Text_q.set_focus(); }
    void go_to_answer() { form1_.Text_a.set_focus(); }

    /// Repaints the window for the present editing flags; the texts stay.
    void redisplay();

    /// Tells that what stands in the boxes was not saved, or may not have been, and keeps Escape from ending the
    /// program for a second.
    void tell_unsaved(Unsaved texts);

    /// Keeps the keys from running commands for a second: who was typing a moment ago may still be at it.
    void pause_keys() { key_policy_.pause(KeyPolicy::Paused::all); }

    /// Shows the record, its answer too, and the counts as they are in the course now. Where the course cannot be read,
    /// the texts stay in the boxes, no question is on display, and the user is told that they are saved.
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
