#include "drill/last_list.h"

#include "common/errors.h"

#include <utility>

namespace cuedrill::drill {

bool LastList::build_question_list(const std::string& clause, bool with_answers)
{
    std::optional<bank::QuestionList> questions = list_questions(clause, with_answers);
    if (!questions)
        return false;
    set_for_list(std::move(questions->lines));
    keep_questions(std::move(*questions), with_answers);
    return true;
}

void LastList::rebuild_shown_list()
{
    if (!m_state.list_shown() || m_last_list_kind != select_questions)
        return;
    try {
        std::optional<bank::QuestionList> questions = list_questions(m_last_list_clause, m_last_list_with_answers);
        if (!questions)
            return;
        m_listav.replace_lines(std::move(questions->lines));
        keep_questions(std::move(*questions), m_last_list_with_answers);
    } catch (const common::Error& error) {
        m_desktop.message_box({.text = "The list is not up to date.\r\n\r\n" + store::words_about(error, m_course),
                               .icon = platform::BoxIcon::exclamation});
    }
}

/// Nothing when the course has no records. Tells what is missing in the list.
std::optional<bank::QuestionList> LastList::list_questions(const std::string& clause, bool with_answers)
{
    std::optional<bank::QuestionList> questions = read_questions(clause, with_answers);
    if (!questions)
        return std::nullopt;
    bank::make_lines(*questions, m_course, m_text_compare);
    for (int i = 0; i < questions->answers_not_found; ++i)
        m_desktop.message_box({.text = "nomatch in function 'risposta_item_selezionato'."});
    if (!questions->complete)
        m_desktop.message_box({.text = list_not_complete});
    return questions;
}

std::optional<bank::QuestionList> LastList::read_questions(const std::string& clause, bool with_answers)
{
    const platform::BusyPointer busy(m_desktop);
    return bank::read_questions(m_course, clause, with_answers);
}

void LastList::keep_questions(bank::QuestionList questions, bool with_answers)
{
    keep(std::move(questions.list), select_questions, true);
    m_last_list_clause = std::move(questions.clause);
    m_last_list_with_answers = with_answers;
    m_status.show_about_list(
        std::to_string(m_list.list_count()) + " questions (the number on the left is the question score)", 0);
}

void LastList::show_found(bank::ListLines found, const char* kind, bool of_questions)
{
    keep(std::move(found), kind, of_questions);
    set_for_list(m_list.lines());
}

void LastList::keep(bank::ListLines list, const char* kind, bool of_questions)
{
    m_list = std::move(list);
    m_last_list_kind = kind;
    m_find_in_questions = of_questions;
}

void LastList::recall_find_list()
{
    set_for_list(m_list.lines());
    m_status.show_about_list("Lines of the last list: " + std::to_string(m_list.list_count()), 0);
}

/// Shows the lines in the place of statistics and hints.
void LastList::set_for_list(std::vector<std::string> lines)
{
    m_listav.set_lines(std::move(lines));
    m_state.shared_place = SharedPlace::list;
    m_state.list_built = true;
    m_layout.RelayoutWindow();
    // Who is typing a record goes on typing it.
    if (!m_edit_flags.editing())
        m_listav.set_focus();
}

void LastList::forget_list()
{
    m_list = {};
    m_last_list_kind.clear();
}

} // namespace cuedrill::drill
