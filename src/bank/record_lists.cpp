#include "bank/record_lists.h"

#include "bank/search_text.h"
#include "common/errors.h"
#include "common/text.h"

#include <utility>

namespace cuedrill::bank {
namespace {

using platform::BoxIcon;

constexpr const char* select_questions = "select_questions";
constexpr const char* find_question = "find_question";
constexpr const char* find_answer = "find_answer";
constexpr const char* similar_list = "list_similar";

/// The level of the row on one side.
common::Int16 score_of(const platform::Recordset& row, const store::SideFields& side)
{
    return store::nz_int16(row.field(side.successes), "score");
}

/// Whether the engine has refused what it was asked, not failed to read the course.
bool is_refused_statement(const common::Error& error)
{
    const auto* const refusal = dynamic_cast<const platform::DatabaseError*>(&error);
    return refusal != nullptr && refusal->kind() == platform::DatabaseErrorKind::other;
}

} // namespace

void RecordLists::m_show_all()
{
    build_question_list("order by cnt", false);
}

void RecordLists::m_show_all_alphabetically()
{
    build_question_list("order by " + m_course.Q_FIELD.text, false);
}

void RecordLists::m_all_q_and_a()
{
    build_question_list("order by " + m_course.Q_FIELD.text, true);
}

void RecordLists::m_show_sort_by_score()
{
    build_question_list("order by " + m_course.Q_FIELD.successes, false);
}

void RecordLists::m_show_sort_last_show()
{
    build_question_list("order by " + m_course.Q_FIELD.date_last_show, false);
}

void RecordLists::m_history()
{
    build_question_list("order by " + m_course.Q_FIELD.date_last_show + " desc", false);
}

/// Lists all questions in the order of `clause`. With answers, the order must bring equal questions together. An empty
/// course ends the program.
/// @throws platform::DatabaseError, common::OverflowError; the list shown before stays then.
void RecordLists::build_question_list(const std::string& clause, bool with_answers)
{
    std::optional<QuestionList> questions = read_questions(clause, with_answers);
    if (!questions) {
        tell("Database empty.");
        if (m_services.editor.ask_to_save())
            m_services.end_of_program.end_program();
        return;
    }
    m_screen.set_for_list(question_lines(*questions));
    keep_questions(std::move(*questions), clause, with_answers);
}

void RecordLists::rebuild_shown_list()
{
    if (!m_screen.list_shown() || m_last_list_kind != select_questions)
        return;
    try {
        std::optional<QuestionList> questions = read_questions(m_last_list_clause, m_last_list_with_answers);
        if (!questions)
            return;
        m_screen.replace_list(question_lines(*questions));
        keep_questions(std::move(*questions), std::string(m_last_list_clause), m_last_list_with_answers);
    } catch (const common::Error& error) {
        tell_failure("The list is not up to date.", error);
    }
}

/// Nothing when the course has no records. Tells when it has more than a list can hold.
std::optional<RecordLists::QuestionList> RecordLists::read_questions(const std::string& clause, bool with_answers)
{
    QuestionList questions;
    bool complete = true;
    {
        const platform::BusyPointer busy(m_services.desktop);
        const auto rows = m_course.database().open_recordset("Select * from qa " + clause);
        if (rows->bof() && rows->eof())
            return std::nullopt;
        for (; !rows->eof() && !questions.list.full(); rows->move_next()) {
            questions.list.add(store::stored_text(rows->field(m_course.Q_FIELD.text)),
                               score_of(*rows, m_course.Q_FIELD));
            if (with_answers)
                questions.answers.push_back(store::stored_text(rows->field(m_course.A_FIELD.text)));
        }
        complete = rows->eof();
    }
    if (!complete)
        tell("Too many items found, the list is not complete.");
    return questions;
}

/// The answer beside a question is that of the first record with it, which a click on the line finds. Equal questions
/// stand together, so it has to be looked up for those only that repeat the one before. A record without a question
/// could not be looked up. Uses up the answers.
std::vector<std::string> RecordLists::question_lines(QuestionList& questions)
{
    std::vector<std::string> lines;
    lines.reserve(questions.list.list_count());
    for (std::size_t place = 0; place < questions.list.list_count(); ++place) {
        lines.push_back(in_one_line(questions.list.line(place)));
        if (questions.answers.empty())
            continue;
        const std::string& question = questions.list.text(place);
        const bool repeated =
            place > 0 && !question.empty() && m_services.text_compare.equal(question, questions.list.text(place - 1));
        if (repeated)
            questions.answers[place] = risposta_item_selezionato(question);
        lines.back() += answer_arrow;
        lines.back() += in_one_line(std::move(questions.answers[place]));
    }
    return lines;
}

/// The answer of the first record with this question.
std::string RecordLists::risposta_item_selezionato(const std::string& question)
{
    const std::optional<FoundRecord> record = m_bank.find(m_course.Q_FIELD.text, question);
    if (!record) {
        tell("nomatch in function 'risposta_item_selezionato'.");
        return {};
    }
    return record->answer;
}

void RecordLists::keep_questions(QuestionList questions, const std::string& clause, bool with_answers)
{
    m_list = std::move(questions.list);
    m_last_list_kind = select_questions;
    m_last_list_clause = clause;
    m_last_list_with_answers = with_answers;
    m_find_in_questions = true;
    show_question_count();
}

void RecordLists::show_question_count()
{
    m_services.status.ShowStatus(
        std::to_string(m_list.list_count()) + " questions (the number on the left is the question score)", 0);
}

/// What the lines of the list shown before mean counts again when no other list takes its place.
void RecordLists::find(bool in_questions)
{
    const bool before = std::exchange(m_find_in_questions, in_questions);
    if (!find_text())
        m_find_in_questions = before;
}

/// Returns whether something was found and is listed.
bool RecordLists::find_text()
{
    const auto entered = m_services.desktop.input_box({.prompt = "String?", .default_text = m_last_search_string});
    const std::string text(common::trim_blanks(m_services.text_compare.nfc(entered.value_or(""))));
    if (text.empty())
        return false;
    m_last_search_string = text;
    ListLines found;
    try {
        found = search(text);
    } catch (const common::Error& error) {
        const bool malformed = is_refused_statement(error) && text.find('[') != std::string::npos;
        tell_failure("The search was given up.", error, malformed ? "To find [ itself, type [[]." : "");
        return false;
    }
    if (found.list_count() == 0) {
        tell("No records found.");
        return false;
    }
    m_list = std::move(found);
    m_last_list_kind = m_find_in_questions ? find_question : find_answer;
    m_screen.set_for_list(m_list.lines());
    m_services.status.ShowStatus(
        std::to_string(m_list.list_count()) + (m_find_in_questions ? " questions found." : " answers found."), 0);
    return true;
}

ListLines RecordLists::search(const std::string& text)
{
    const platform::BusyPointer busy(m_services.desktop);
    const store::SideFields& side = m_find_in_questions ? m_course.Q_FIELD : m_course.A_FIELD;
    ListLines found;
    const auto rows = m_course.database().open_recordset("Select * from qa where " + side.text + " like '*" +
                                                         escape_like(text) + "*' order by " + side.text);
    for (; !rows->eof(); rows->move_next())
        found.add(store::stored_text(rows->field(side.text)), score_of(*rows, side));
    return found;
}

void RecordLists::list_similar()
{
    const std::string question(common::trim_blanks(m_screen.loaded_question()));
    if (question.empty())
        return;
    ListLines found;
    bool complete = true;
    for (const std::string_view word : words_of(question)) {
        try {
            collect_similar(question, word, found);
        } catch (const common::Error& error) {
            tell_failure("The list ends at the word \"" + std::string(word) + "\".", error);
            complete = false;
            break;
        }
    }
    m_list = std::move(found);
    m_last_list_kind = similar_list;
    m_find_in_questions = true;
    m_screen.set_for_list(m_list.lines());
    show_similar_count(complete);
}

void RecordLists::show_similar_count(bool complete)
{
    const std::string count = std::to_string(m_list.list_count());
    std::string text = count + " lines: questions with a word of this one, marked by *. Click one to see it.";
    if (!complete)
        text = count + " lines: questions with a word of this one; the list is not complete.";
    else if (m_list.list_count() == 0)
        text = "No other question has a word of this one.";
    m_services.status.ShowStatus(text, 0);
}

/// Adds the other questions that have the word, which stands in the pattern as it is. An apostrophe would end the
/// pattern, and the rest of the word be run.
void RecordLists::collect_similar(const std::string& question, std::string_view word, ListLines& found)
{
    if (word.find('\'') != std::string_view::npos)
        throw common::Error("A word with an apostrophe cannot be looked for.");
    const platform::BusyPointer busy(m_services.desktop);
    const store::SideFields& side = m_course.Q_FIELD;
    const auto rows = m_course.database().open_recordset("Select * from qa where " + side.text + " like '*" +
                                                         std::string(word) + "*' ");
    for (; !rows->eof(); rows->move_next()) {
        const std::string other = store::stored_text(rows->field(side.text));
        if (m_services.text_compare.equal(common::trim_blanks(other), question))
            continue;
        if (auto marked = marked_word(other, word, m_services.text_compare))
            found.add(std::move(*marked), score_of(*rows, side));
    }
}

void RecordLists::recall_find_list()
{
    m_screen.set_for_list(m_list.lines());
    m_services.status.ShowStatus("Lines of the last list: " + std::to_string(m_list.list_count()), 0);
}

void RecordLists::listav_click(const std::string& line)
{
    if (!m_services.editor.ask_to_save())
        return;
    const store::SideFields& side = m_find_in_questions ? m_course.Q_FIELD : m_course.A_FIELD;
    const std::optional<FoundRecord> record = m_bank.find(side.text, text_of_line(line));
    if (!record) {
        tell("nomatch in listav_click.");
        return;
    }
    m_course.current_cnt = store::nz_int16(record->cnt, "record number");
    m_screen.show_chosen_record();
}

void RecordLists::forget_list()
{
    m_list = {};
    m_last_list_kind.clear();
}

void RecordLists::tell(const std::string& text)
{
    m_services.desktop.message_box({.text = text});
}

void RecordLists::tell_failure(const std::string& what_failed, const common::Error& error, const std::string& advice)
{
    std::string text = what_failed;
    text.append("\r\n\r\n").append(store::words_about(error, m_course));
    if (!advice.empty())
        text.append("\r\n\r\n").append(advice);
    m_services.desktop.message_box({.text = text, .icon = BoxIcon::exclamation});
}

} // namespace cuedrill::bank
