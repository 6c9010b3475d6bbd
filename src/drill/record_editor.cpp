#include "drill/record_editor.h"

#include "bank/compared_text.h"
#include "common/errors.h"
#include "common/text.h"
#include "store/course_transaction.h"

namespace cuedrill::drill {
namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;

} // namespace

void RecordEditor::begin_new_record()
{
    // The direction of the course decides which box is stored in which column.
    store::settle(course_);
    save_is_unknown_ = false;
    flags_ = {.new_mode = true, .edit_mode = false};
    // Without a current record the boxes hold unsaved texts; emptying them this way can be undone.
    if (!state_.shown.is_question())
        boxes_.empty_boxes();
    else
        services_.display.withdraw_question();
    boxes_.open_editor();
}

void RecordEditor::begin_edit()
{
    if (!state_.shown.is_question())
        return;
    save_is_unknown_ = false;
    flags_ = {.new_mode = false, .edit_mode = true};
    boxes_.show_answer_for_editing();
    boxes_.open_editor();
}

/// The text in the form in which it is stored: in NFC, like every text that enters the program, and without surrounding
/// blanks.
std::string RecordEditor::entered(const std::string& text) const
{
    return std::string(common::trim_blanks(services_.text_compare.nfc(text)));
}

SaveResult RecordEditor::save_record()
{
    return save(Rejection::leaves_editor);
}

SaveResult RecordEditor::save(Rejection rejection)
{
    const RecordTexts texts = entered_texts();
    try {
        if (const std::optional<common::Int16> cnt = saved_after_all(texts))
            return finish_save(*cnt);
        const auto saved = bank_.save(draft_of(texts), forget_verdict(state_.shown.current_cnt()));
        if (const auto* const refusal = std::get_if<bank::Refusal>(&saved))
            return reject(*refusal, texts, rejection);
        return finish_save(std::get<common::Int16>(saved));
    } catch (const store::RecordGone& error) {
        return keep_as_new(texts, error, rejection);
    } catch (const common::Error& error) {
        if (dynamic_cast<const store::OutcomeUnknown*>(&error) != nullptr)
            save_is_unknown_ = true;
        tell_refusal(texts, error);
        return SaveResult::refused;
    }
}

/// The texts in the form in which they are stored; the boxes are updated to show that form. If the question is empty,
/// the answer stays as it was typed.
RecordTexts RecordEditor::entered_texts()
{
    RecordTexts texts = boxes_.typed_texts();
    texts.question = entered(texts.question);
    boxes_.put_question(texts.question);
    if (bank::is_blank(texts.question))
        return texts;
    texts.answer = entered(texts.answer);
    boxes_.put_answer(texts.answer);
    return texts;
}

bank::Draft RecordEditor::draft_of(const RecordTexts& texts) const
{
    bank::Draft draft{texts.question, texts.answer, std::nullopt, state_.shown.loaded_question(),
                      state_.shown.loaded_answer()};
    if (!flags_.new_mode)
        draft.changed = state_.shown.current_cnt();
    return draft;
}

/// Ends editing after the texts were stored in the record `cnt`.
SaveResult RecordEditor::finish_save(common::Int16 cnt)
{
    save_is_unknown_ = false;
    flags_.clear();
    services_.kept.drop_draft();
    course_.forget_last_verdict_on(cnt);
    show_saved(cnt);
    return SaveResult::saved;
}

SaveResult RecordEditor::reject(const bank::Refusal& refusal, const RecordTexts& texts, Rejection rejection)
{
    services_.desktop.message_box({.text = refusal.words});
    // The editor always stays open for a missing answer or a duplicate question.
    const bool about_answer = refusal.about == bank::WhichText::answer;
    const bool is_missing = bank::is_blank(about_answer ? texts.answer : texts.question);
    if (is_missing != about_answer && rejection == Rejection::leaves_editor) {
        leave_editor();
        boxes_.pause_keys();
    } else if (about_answer) {
        boxes_.go_to_answer();
    } else {
        boxes_.go_to_question();
    }
    return SaveResult::rejected;
}

/// Finds out whether a save of unknown outcome was stored. If it was, the boxes become an edit of that record, so that
/// a new record is not stored twice or refused as a duplicate of itself.
/// @return the record, if it has exactly these texts; std::nullopt if something is left to save.
std::optional<common::Int16> RecordEditor::saved_after_all(const RecordTexts& texts)
{
    if (!save_is_unknown_ || bank::is_blank(texts.question) || bank::is_blank(texts.answer))
        return std::nullopt;
    const std::optional<common::Int16> cnt = bank_.stored_after_all();
    const bool saved = cnt && bank_.has_new_texts(*cnt, texts.question, texts.answer);
    save_is_unknown_ = false;
    if (cnt) {
        services_.display.take_for_record(*cnt);
        flags_ = {.new_mode = false, .edit_mode = true};
    }
    return saved ? cnt : std::nullopt;
}

/// Offers to save the texts as a new record, because another program has deleted the old one.
SaveResult RecordEditor::keep_as_new(const RecordTexts& texts, const store::RecordGone& error, Rejection rejection)
{
    const auto answer = services_.desktop.message_box(
        {.text = std::string(error.what()) + "\r\n\r\nDo you want to save the texts as a new question and answer?",
         .buttons = BoxButtons::yes_no,
         .icon = BoxIcon::question,
         .must_be_answered = true});
    if (answer != BoxAnswer::yes)
        return SaveResult::refused;
    course_.record_count = course_.count_records();
    begin_new_record();
    boxes_.put_question(texts.question);
    boxes_.put_answer(texts.answer);
    return save(rejection);
}

/// Shows the saved record. The record is stored, so an error here must not be reported as a failed save.
void RecordEditor::show_saved(common::Int16 cnt)
{
    try {
        boxes_.show_saved_record(cnt);
    } catch (const common::Error& error) {
        services_.desktop.message_box(
            {.text = "The question and its answer are saved, but they cannot be shown now.\r\n\r\n" +
                     store::words_about(error, course_),
             .icon = BoxIcon::exclamation});
    }
}

/// Callback for a change whose outcome is unknown. It is called if the change turns out to be stored: the record's last
/// verdict can no longer be undone.
std::function<void()> RecordEditor::forget_verdict(common::Int16 cnt)
{
    return [this, cnt] { course_.forget_last_verdict_on(cnt); };
}

bool RecordEditor::ask_to_save()
{
    if (has_changes() && is_saving_wanted())
        return save(Rejection::keeps_editor) == SaveResult::saved;
    if (flags_.editing())
        leave_editor();
    return true;
}

SaveResult RecordEditor::offer_to_save()
{
    return flags_.editing() && is_saving_wanted() ? save_record() : SaveResult::saved;
}

bool RecordEditor::is_saving_wanted()
{
    return services_.desktop.message_box({.text = "Do you want to save the changes?",
                                          .buttons = BoxButtons::yes_no,
                                          .icon = BoxIcon::question,
                                          .must_be_answered = true}) == BoxAnswer::yes;
}

bool RecordEditor::has_changes() const
{
    if (!flags_.editing())
        return false;
    if (save_is_unknown_)
        return true;
    const RecordTexts typed = boxes_.typed_texts();
    const RecordTexts loaded = flags_.new_mode ? RecordTexts{} : boxes_.loaded_texts();
    const auto differ = [this](const std::string& a, const std::string& b) {
        return bank::comparable_text(a, services_.text_compare) != bank::comparable_text(b, services_.text_compare);
    };
    return differ(typed.question, loaded.question) || differ(typed.answer, loaded.answer);
}

void RecordEditor::leave_editor()
{
    const bool unsaved = has_changes();
    const bool kept = keep_unsaved_texts();
    if (unsaved) {
        // The texts belong to no record, so nothing can be judged or edited.
        const RecordTexts texts = boxes_.typed_texts();
        services_.display.withdraw_question();
        boxes_.put_question(texts.question);
        boxes_.put_answer(texts.answer);
    }
    flags_.clear();
    boxes_.redisplay();
    if (unsaved)
        boxes_.tell_unsaved(certainty());
    if (kept)
        services_.kept.tell_unsaved(certainty());
}

void RecordEditor::close_editor()
{
    const bool kept = keep_unsaved_texts();
    flags_.clear();
    boxes_.redisplay();
    if (kept)
        services_.kept.tell_unsaved(certainty());
}

void RecordEditor::forget()
{
    keep_unsaved_texts();
    flags_.clear();
}

/// Every way of leaving the editor without saving comes here, while the typed texts are still in the boxes.
/// @return whether there were unsaved texts, and they are kept.
bool RecordEditor::keep_unsaved_texts()
{
    if (has_unsaved_texts())
        return services_.kept.keep_unsaved(boxes_.typed_texts(), certainty());
    services_.kept.drop_draft();
    return false;
}

void RecordEditor::write_draft()
{
    if (flags_.editing())
        services_.kept.note_typed(boxes_.typed_texts(), certainty(), [this] { return has_unsaved_texts(); });
}

/// Whether something would be lost with the boxes: they differ from the record, and are not merely emptied.
bool RecordEditor::has_unsaved_texts() const
{
    const RecordTexts typed = boxes_.typed_texts();
    return has_changes() && !(bank::is_blank(typed.question) && bank::is_blank(typed.answer));
}

void RecordEditor::delete_record()
{
    const auto answer = services_.desktop.message_box(
        {.text = "Are you sure you want to delete question \"" + boxes_.typed_texts().question + "\" and its asnwer?",
         .buttons = BoxButtons::yes_no,
         .icon = BoxIcon::exclamation,
         .default_button = BoxAnswer::no});
    if (answer != BoxAnswer::yes)
        return;
    const common::Int16 cnt = state_.shown.current_cnt();
    if (cnt == 0 || course_.record_count == 0) {
        services_.display.withdraw_question();
        return;
    }
    try {
        bank_.delete_record(cnt, forget_verdict(cnt));
    } catch (const store::RecordGone&) {
        services_.display.withdraw_question();
        course_.record_count = course_.count_records();
        services_.statistics.refresh_counts();
        throw;
    } catch (const store::OutcomeUnknown&) {
        services_.display.withdraw_question();
        throw;
    }
    course_.forget_last_verdict_on(cnt);
    services_.kept.tell_deleted();
    services_.display.leave_list();
    services_.display.withdraw_question();
    services_.statistics.refresh_counts();
    services_.selection.next_question();
}

void RecordEditor::tell_refusal(const RecordTexts& texts, const common::Error& error)
{
    const auto* const of_engine = dynamic_cast<const platform::DatabaseError*>(&error);
    std::string text;
    if (of_engine != nullptr && of_engine->kind() == platform::DatabaseErrorKind::constraint)
        text = bank::too_long(texts.question, texts.answer);
    if (save_is_unknown_)
        text = "It is not known whether the question and its answer are saved. Save again to find out.\r\n\r\n" +
               store::words_about(error, course_);
    if (text.empty())
        text = "The question and its answer are not saved.\r\n\r\n" + store::words_about(error, course_);
    services_.desktop.message_box({.text = text, .icon = BoxIcon::exclamation});
    if (!bank::too_long(texts.question, {}).empty())
        boxes_.go_to_question();
    else if (!bank::too_long({}, texts.answer).empty())
        boxes_.go_to_answer();
}

} // namespace cuedrill::drill
