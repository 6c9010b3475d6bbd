#pragma once

#include <string>

namespace cuedrill::drill {

/// The two texts of a record, the asked side first.
struct RecordTexts {
    std::string question;
    std::string answer;
};

/// What is known of texts that are left in the boxes: whether they are really not saved.
enum class Unsaved { surely, perhaps };

/// The two text boxes of the main window, as the editing of records sees them.
class EditorView {
public:
    virtual ~EditorView() = default;

    /// What stands in the boxes.
    [[nodiscard]] virtual RecordTexts typed_texts() const = 0;
    /// The texts of the current record as they were put on display.
    [[nodiscard]] virtual RecordTexts loaded_texts() const = 0;
    virtual void put_question(const std::string& text) = 0;
    virtual void put_answer(const std::string& text) = 0;

    /// Empties both boxes. An undo in each brings back what stood there.
    virtual void empty_boxes() = 0;

    /// Puts the answer of the current record into its box, to be changed.
    virtual void show_answer_for_editing() = 0;
    /// Makes the boxes ready to be typed in, with what stands in them, and puts the caret into the question.
    virtual void open_editor() = 0;
    /// Puts the caret into the question or the answer, where something is to be mended.
    virtual void go_to_question() = 0;
    virtual void go_to_answer() = 0;
    /// Repaints the window for the present editing flags; the texts stay.
    virtual void redisplay() = 0;
    /// Tells that what stands in the boxes was not saved, or may not have been, and keeps Escape from ending the
    /// program for a second.
    virtual void tell_unsaved(Unsaved texts) = 0;
    /// Keeps the keys from running commands for a second: who was typing a moment ago may still be at it.
    virtual void pause_keys() = 0;
    /// Shows the current record, its answer too, and the counts as they are in the course now. Where the course cannot
    /// be read, the texts stay in the boxes, no question is on display, and the user is told that they are saved.
    virtual void show_saved_record() = 0;
};

} // namespace cuedrill::drill
