#include "drill/editor_boxes.h"

#include <exception>

namespace cuedrill::drill {

RecordTexts EditorBoxes::typed_texts() const
{
    return {form1_.Text_q.text(), form1_.Text_a.text()};
}

RecordTexts EditorBoxes::loaded_texts() const
{
    return {state_.shown.loaded_question(), state_.shown.loaded_answer()};
}

// Setting a text resets the cursor and the undo history, so it is done only if the text differs.
void EditorBoxes::put_question(const std::string& text)
{
    if (form1_.Text_q.text() != text)
        form1_.Text_q.set_text(text);
}

void EditorBoxes::put_answer(const std::string& text)
{
    if (form1_.Text_a.text() != text)
        form1_.Text_a.set_text(text);
}

void EditorBoxes::empty_boxes()
{
    form1_.Text_q.clear();
    form1_.Text_a.clear();
}

void EditorBoxes::tell_unsaved(Unsaved texts)
{
    status_.show_until_question(
        texts == Unsaved::surely ? "The changes are not saved." : "It is not known whether the changes are saved.", 0);
    key_policy_.pause(KeyPolicy::Paused::escape);
}

void EditorBoxes::open_editor()
{
    layout_.RelayoutWindow();
    form1_.Text_q.set_focus();
    form1_.window.announce(edit_flags_.edit_mode ? "You are changing this question." : "New question. Question box.");
    status_.ShowStatus(edit_flags_.edit_mode
                           ? "Saving starts this record's history again."
                           : "Type the question and its answer, then press Save. Escape leaves without saving.",
                       0);
}

void EditorBoxes::redisplay()
{
    layout_.RelayoutWindow();
    status_.reset_status();
}

void EditorBoxes::show_saved_record(common::Int16 cnt)
{
    const RecordTexts saved = typed_texts();
    try {
        refresh_counts_or_withdraw(statistics_, display_);
        display_.show_record_and_answer(cnt);
    } catch (const std::exception&) {
        put_question(saved.question);
        put_answer(saved.answer);
        status_.ShowStatus("Saved.", status_seconds);
        throw;
    }
    status_.ShowStatus("Saved.", status_seconds);
    last_list_.rebuild_shown_list();
}

} // namespace cuedrill::drill
