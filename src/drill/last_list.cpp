#include "drill/last_list.h"

#include "common/errors.h"

#include <utility>

namespace cuedrill::drill {

bool LastList::build_question_list(const std::string& clause, bool with_answers)
{
    std::optional<bank::QuestionList> questions = list_questions(clause, with_answers);
    if (!questions)
        return false;
    set_for_list(std::move(questions->lines), line_on_display(questions->list, true));
    keep_questions(std::move(*questions), with_answers);
    return true;
}

void LastList::rebuild_shown_list()
{
    if (!state_.list_shown() || last_list_kind_ != select_questions)
        return;
    try {
        std::optional<bank::QuestionList> questions = list_questions(last_list_clause_, last_list_with_answers_);
        if (!questions)
            return;
        listav_.replace_lines(std::move(questions->lines), line_on_display(questions->list, true));
        keep_questions(std::move(*questions), last_list_with_answers_);
    } catch (const common::Error& error) {
        desktop_.message_box({.text = "The list is not up to date.\r\n\r\n" + store::words_about(error, course_),
                              .icon = platform::BoxIcon::exclamation});
    }
}

/// std::nullopt if the course has no records. Shows a box if the list is incomplete.
std::optional<bank::QuestionList> LastList::list_questions(const std::string& clause, bool with_answers)
{
    std::optional<bank::QuestionList> questions = read_questions(clause, with_answers);
    if (!questions)
        return std::nullopt;
    bank::make_lines(*questions, course_, text_compare_);
    for (int i = 0; i < questions->answers_not_found; ++i)
        desktop_.message_box({.text = "nomatch in function 'risposta_item_selezionato'."});
    if (!questions->complete)
        desktop_.message_box({.text = list_not_complete});
    return questions;
}

std::optional<bank::QuestionList> LastList::read_questions(const std::string& clause, bool with_answers)
{
    const platform::BusyPointer busy(desktop_);
    return bank::read_questions(course_, clause, with_answers);
}

void LastList::keep_questions(bank::QuestionList questions, bool with_answers)
{
    keep(std::move(questions.list), select_questions, true);
    last_list_clause_ = std::move(questions.clause);
    last_list_with_answers_ = with_answers;
    status_.show_about_list(
        std::to_string(list_.list_count()) + " questions (the number on the left is the question score)", 0);
}

void LastList::show_found(bank::ListLines found, const char* kind, bool of_questions)
{
    keep(std::move(found), kind, of_questions);
    set_for_list(list_.lines(), line_on_display(list_, find_in_questions()));
}

void LastList::keep(bank::ListLines list, const char* kind, bool of_questions)
{
    list_ = std::move(list);
    last_list_kind_ = kind;
    column_ = (of_questions ? course_.Q_FIELD : course_.A_FIELD).text;
}

void LastList::recall_find_list()
{
    set_for_list(list_.lines(), line_on_display(list_, find_in_questions()));
    status_.show_about_list("Lines of the last list: " + std::to_string(list_.list_count()), 0);
}

/// The first line with the text of the record on display. A line holds no record number, and a click on it searches for
/// its text, too: of records with the same text, all lines lead to the first record.
std::optional<std::size_t> LastList::line_on_display(const bank::ListLines& list, bool of_questions) const
{
    if (!state_.shown.is_question())
        return std::nullopt;
    for (std::size_t place = 0; place < list.list_count(); ++place) {
        if (of_questions ? list.text(place) == state_.shown.loaded_question()
                         : store::shown_answer(list.text(place)) == state_.shown.loaded_answer())
            return place;
    }
    return std::nullopt;
}

/// Shows the lines in the shared area.
void LastList::set_for_list(std::vector<std::string> lines, std::optional<std::size_t> on_display)
{
    listav_.set_lines(std::move(lines));
    listav_.mark_line(on_display);
    state_.shared_place = SharedPlace::list;
    state_.list_built = true;
    layout_.RelayoutWindow();
    // While a record is being edited, the focus stays in its text box.
    if (!edit_flags_.editing())
        listav_.set_focus();
}

void LastList::forget_list()
{
    list_ = {};
    last_list_kind_.clear();
    state_.list_built = false;
}

} // namespace cuedrill::drill
