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

/// The column that holds no text twice.
constexpr const char* column_without_duplicates = "q";

/// A text of nothing but line ends would be a question that nobody sees.
bool is_empty(const std::string& text)
{
    return common::trim_blanks_and_line_ends(text).empty();
}

} // namespace

void RecordEditor::begin_new_record()
{
    save_is_unknown_ = false;
    flags_ = {.new_mode = true, .edit_mode = false};
    // What stands in the boxes without a current record was typed and not saved.
    if (course_.current_cnt == 0)
        view_.empty_boxes();
    else
        services_.display.withdraw_question();
    view_.open_editor();
}

void RecordEditor::begin_edit()
{
    if (course_.current_cnt == 0)
        return;
    save_is_unknown_ = false;
    flags_ = {.new_mode = false, .edit_mode = true};
    view_.show_answer_for_editing();
    view_.open_editor();
}

/// A text as it is stored: composed, like every text that enters the program, and without blanks around it.
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
    RecordTexts texts = view_.typed_texts();
    texts.question = entered(texts.question);
    view_.put_question(texts.question);
    if (is_empty(texts.question))
        return reject("The question is empty. No saving performed.", rejection, &EditorView::go_to_question);
    texts.answer = entered(texts.answer);
    view_.put_answer(texts.answer);
    if (is_empty(texts.answer))
        return reject("The answer is empty. No saving performed.", Rejection::keeps_editor, &EditorView::go_to_answer);
    try {
        if (!is_saved_after_all(texts)) {
            if (question_is_taken(texts))
                return reject("Question is already in database.", Rejection::keeps_editor, &EditorView::go_to_question);
            if (answer_is_taken(texts))
                return reject("Answer is already in database.", rejection, &EditorView::go_to_answer);
            store(texts);
        }
    } catch (const store::RecordGone& error) {
        return keep_as_new(texts, error, rejection);
    } catch (const common::Error& error) {
        if (dynamic_cast<const store::OutcomeUnknown*>(&error) != nullptr)
            save_is_unknown_ = true;
        tell_refusal(texts, error);
        return SaveResult::refused;
    }
    save_is_unknown_ = false;
    flags_.clear();
    course_.forget_last_verdict_on(course_.current_cnt);
    show_saved();
    return SaveResult::saved;
}

SaveResult RecordEditor::reject(const char* text, Rejection rejection, void (EditorView::*go_to_text)())
{
    services_.desktop.message_box({.text = text});
    if (rejection == Rejection::keeps_editor) {
        (view_.*go_to_text)();
    } else {
        leave_editor();
        view_.pause_keys();
    }
    return SaveResult::rejected;
}

/// Finds out what has become of a save of unknown outcome. Where it is stored, what stands in the boxes is a change of
/// that record from now on, so that a new one is not saved twice, nor refused for its own sake.
/// @return whether the record has these very texts already, so that nothing is left to be saved.
bool RecordEditor::is_saved_after_all(const RecordTexts& texts)
{
    if (!save_is_unknown_)
        return false;
    const std::optional<common::Int16> cnt = bank_.stored_after_all();
    const bool saved = cnt && bank_.has_new_texts(*cnt, texts.question, texts.answer);
    save_is_unknown_ = false;
    if (cnt) {
        course_.current_cnt = *cnt;
        flags_ = {.new_mode = false, .edit_mode = true};
    }
    return saved;
}

/// Offers to keep the texts of a record that another program has deleted.
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
    view_.put_question(texts.question);
    view_.put_answer(texts.answer);
    return save(rejection);
}

/// The record is stored, so an error here must not look like one of saving.
void RecordEditor::show_saved()
{
    try {
        view_.show_saved_record();
    } catch (const common::Error& error) {
        services_.desktop.message_box(
            {.text = "The question and its answer are saved, but they cannot be shown now.\r\n\r\n" +
                     store::words_about(error, course_),
             .icon = BoxIcon::exclamation});
    }
}

/// Whether a text is no longer the one that was loaded, but for its case.
bool RecordEditor::is_changed(const std::string& text, const std::string& loaded) const
{
    return flags_.new_mode || !bank::same_text(text, loaded, services_.text_compare);
}

bool RecordEditor::question_is_taken(const RecordTexts& texts)
{
    return course_.Q_FIELD.text == column_without_duplicates &&
           is_changed(texts.question, view_.loaded_texts().question) && another_has(texts.question);
}

/// In an inverted course the column without duplicates is shown as the answer.
bool RecordEditor::answer_is_taken(const RecordTexts& texts)
{
    return course_.A_FIELD.text == column_without_duplicates && is_changed(texts.answer, view_.loaded_texts().answer) &&
           another_has(texts.answer);
}

/// Whether another record than the one that is being changed has the text. It may have it itself already, where a save
/// was stored whose outcome was unknown.
bool RecordEditor::another_has(const std::string& text)
{
    const std::optional<bank::FoundRecord> found = bank_.find(column_without_duplicates, text);
    return found && (flags_.new_mode || found->cnt != std::int64_t{course_.current_cnt});
}

void RecordEditor::store(const RecordTexts& texts)
{
    if (flags_.new_mode)
        course_.current_cnt = bank_.insert_record(texts.question, texts.answer);
    else
        bank_.change_record(course_.current_cnt, texts.question, texts.answer, forget_verdict(course_.current_cnt));
}

/// For a change that turns out later to be stored: its record has no verdict to be undone.
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
    const RecordTexts typed = view_.typed_texts();
    const RecordTexts loaded = flags_.new_mode ? RecordTexts{} : view_.loaded_texts();
    const auto differ = [this](const std::string& a, const std::string& b) {
        return bank::comparable_text(a, services_.text_compare) != bank::comparable_text(b, services_.text_compare);
    };
    return differ(typed.question, loaded.question) || differ(typed.answer, loaded.answer);
}

void RecordEditor::leave_editor()
{
    const bool unsaved = has_changes();
    if (unsaved) {
        // The texts are no record, so there is nothing to be judged or changed.
        const RecordTexts texts = view_.typed_texts();
        services_.display.withdraw_question();
        view_.put_question(texts.question);
        view_.put_answer(texts.answer);
    }
    close_editor();
    if (unsaved)
        view_.tell_unsaved(save_is_unknown_ ? Unsaved::perhaps : Unsaved::surely);
}

void RecordEditor::close_editor()
{
    flags_.clear();
    view_.redisplay();
}

void RecordEditor::delete_record()
{
    const auto answer = services_.desktop.message_box(
        {.text = "Are you sure you want to delete question \"" + view_.typed_texts().question + "\" and its asnwer?",
         .buttons = BoxButtons::yes_no,
         .icon = BoxIcon::exclamation,
         .default_button = BoxAnswer::no});
    if (answer != BoxAnswer::yes)
        return;
    const common::Int16 cnt = course_.current_cnt;
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
    services_.display.clear_answer_state();
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
        view_.go_to_question();
    else if (!bank::too_long({}, texts.answer).empty())
        view_.go_to_answer();
}

} // namespace cuedrill::drill
