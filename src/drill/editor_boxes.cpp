#include "drill/editor_boxes.h"

#include <exception>

namespace cuedrill::drill {

RecordTexts EditorBoxes::typed_texts() const
{
    return {m_form1.Text_q.text(), m_form1.Text_a.text()};
}

RecordTexts EditorBoxes::loaded_texts() const
{
    return {m_state.loaded_question, m_state.loaded_answer};
}

// A text that is right already is left alone, and with it the caret and what the user can undo.
void EditorBoxes::put_question(const std::string& text)
{
    if (m_form1.Text_q.text() != text)
        m_form1.Text_q.set_text(text);
}

void EditorBoxes::put_answer(const std::string& text)
{
    if (m_form1.Text_a.text() != text)
        m_form1.Text_a.set_text(text);
}

void EditorBoxes::empty_boxes()
{
    m_form1.Text_q.clear();
    m_form1.Text_a.clear();
}

void EditorBoxes::tell_unsaved(Unsaved texts)
{
    m_status.show_until_question(
        texts == Unsaved::surely ? "The changes are not saved." : "It is not known whether the changes are saved.", 0);
    m_key_pause.begin(KeyPause::Keys::escape);
}

void EditorBoxes::open_editor()
{
    m_layout.RelayoutWindow();
    m_form1.Text_q.set_focus();
    m_status.ShowStatus(m_edit_flags.edit_mode
                            ? "Saving starts this record's history again."
                            : "Type the question and its answer, then press Save. Escape leaves without saving.",
                        0);
}

void EditorBoxes::redisplay()
{
    m_layout.RelayoutWindow();
    m_status.reset_status();
}

void EditorBoxes::show_saved_record()
{
    const RecordTexts saved = typed_texts();
    try {
        refresh_counts_or_withdraw(m_statistics, m_view);
        m_view.show_record_and_answer();
    } catch (const std::exception&) {
        put_question(saved.question);
        put_answer(saved.answer);
        m_status.ShowStatus("Saved.", status_seconds);
        throw;
    }
    m_status.ShowStatus("Saved.", status_seconds);
    m_last_list.rebuild_shown_list();
}

} // namespace cuedrill::drill
