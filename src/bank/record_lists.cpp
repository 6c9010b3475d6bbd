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

constexpr const char* list_not_complete = "Too many items found, the list is not complete.";

/// How long words are looked for, in seconds. Records of the length that a course gives them take a part of it.
constexpr double longest_comparison = 2;

/// A word as a box shows it: one without an end would leave no room for the box.
std::string shown_word(std::string_view word)
{
    constexpr std::size_t most_characters = 50;
    const std::string_view beginning = common::first_code_points(word, most_characters);
    return std::string(beginning) + (beginning.size() < word.size() ? "..." : "");
}

/// The level of the row on one side.
common::Int16 score_of(const platform::Recordset& row, const store::SideFields& side)
{
    return store::nz_int16(row.field(side.successes), "score");
}

bool has_apostrophe(std::string_view word)
{
    return word.find('\'') != std::string_view::npos;
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

/// Lists all questions in the order of `clause`. An empty course ends the program.
/// @throws platform::DatabaseError, common::OverflowError; the list shown before stays then.
void RecordLists::build_question_list(const std::string& clause, bool with_answers)
{
    std::optional<QuestionList> questions = list_questions(clause, with_answers);
    if (!questions) {
        tell("Database empty.");
        if (m_services.editor.ask_to_save())
            m_services.end_of_program.end_program();
        return;
    }
    m_screen.set_for_list(std::move(questions->lines));
    keep_questions(std::move(*questions), clause, with_answers);
}

void RecordLists::rebuild_shown_list()
{
    if (!m_screen.list_shown() || m_last_list_kind != select_questions)
        return;
    try {
        std::optional<QuestionList> questions = list_questions(m_last_list_clause, m_last_list_with_answers);
        if (!questions)
            return;
        m_screen.replace_list(std::move(questions->lines));
        keep_questions(std::move(*questions), std::string(m_last_list_clause), m_last_list_with_answers);
    } catch (const common::Error& error) {
        tell_failure("The list is not up to date.", error);
    }
}

/// Nothing when the course has no records. Tells when it has more than a list can hold.
std::optional<RecordLists::QuestionList> RecordLists::list_questions(const std::string& clause, bool with_answers)
{
    std::optional<QuestionList> questions = read_questions(clause, with_answers);
    if (!questions)
        return std::nullopt;
    // The list may have been built in the other direction, and the order be that of the answers now.
    make_lines(*questions, clause == "order by " + m_course.Q_FIELD.text);
    if (!questions->complete)
        tell(list_not_complete);
    return questions;
}

std::optional<RecordLists::QuestionList> RecordLists::read_questions(const std::string& clause, bool with_answers)
{
    QuestionList questions;
    const platform::BusyPointer busy(m_services.desktop);
    const auto rows = m_course.database().open_recordset("Select * from qa " + clause);
    if (rows->bof() && rows->eof())
        return std::nullopt;
    for (; !rows->eof() && !questions.list.full(); rows->move_next()) {
        std::string question = store::stored_text(rows->field(m_course.Q_FIELD.text));
        std::string answer = with_answers ? store::stored_text(rows->field(m_course.A_FIELD.text)) : std::string();
        if (!questions.list.has_room_for(question.size(), answer.size()))
            break;
        questions.list.add(std::move(question), score_of(*rows, m_course.Q_FIELD), answer.size());
        if (with_answers)
            questions.answers.push_back(std::move(answer));
    }
    questions.complete = rows->eof();
    return questions;
}

/// The answer beside a question is that of the first record with it, which a click on the line finds. Uses up the
/// answers.
void RecordLists::make_lines(QuestionList& questions, bool equal_stand_together)
{
    ListLines& list = questions.list;
    questions.lines.reserve(list.list_count());
    std::size_t size = 0;
    for (std::size_t place = 0; place < list.list_count(); ++place) {
        std::string line = in_one_line(list.line(place));
        if (!questions.answers.empty()) {
            std::string answer = std::exchange(questions.answers[place], {});
            if (has_other_answer(list, place, equal_stand_together))
                answer = risposta_item_selezionato(list.text(place));
            answer = in_one_line(std::move(answer));
            line.reserve(line.size() + answer_arrow.size() + answer.size());
            line.append(answer_arrow).append(answer);
        }
        size += list.text(place).size() + line.size();
        // An answer of another record than its own may be a long one.
        if (size > most_list_text) {
            questions.complete = false;
            list.cut(place);
            return;
        }
        questions.lines.push_back(std::move(line));
    }
}

/// Whether the answer beside a question may be another one than that of its own record, and has to be looked up. Where
/// equal questions stand together, in the order of their numbers, the first one has its own. A record without a
/// question could not be looked up.
bool RecordLists::has_other_answer(const ListLines& list, std::size_t place, bool equal_stand_together) const
{
    const std::string& question = list.text(place);
    if (question.empty())
        return false;
    return !equal_stand_together || (place > 0 && m_services.text_compare.equal(question, list.text(place - 1)));
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
    bool complete = true;
    try {
        found = search(text, complete);
    } catch (const common::Error& error) {
        const bool malformed = is_refused_statement(error) && text.find('[') != std::string::npos;
        tell_failure("The search was given up.", error, malformed ? "To find [ itself, type [[]." : "");
        return false;
    }
    if (found.list_count() == 0) {
        tell("No records found.");
        return false;
    }
    if (!complete)
        tell(list_not_complete);
    m_list = std::move(found);
    m_last_list_kind = m_find_in_questions ? find_question : find_answer;
    m_screen.set_for_list(m_list.lines());
    m_services.status.ShowStatus(
        std::to_string(m_list.list_count()) + (m_find_in_questions ? " questions found." : " answers found."), 0);
    return true;
}

ListLines RecordLists::search(const std::string& text, bool& complete)
{
    const platform::BusyPointer busy(m_services.desktop);
    const store::SideFields& side = m_find_in_questions ? m_course.Q_FIELD : m_course.A_FIELD;
    ListLines found;
    const auto rows = m_course.database().open_recordset("Select * from qa where " + side.text + " like '*" +
                                                         escape_like(text) + "*' order by " + side.text);
    for (; !rows->eof(); rows->move_next()) {
        std::string listed = store::stored_text(rows->field(side.text));
        if (!found.has_room_for(listed.size()))
            break;
        found.add(std::move(listed), score_of(*rows, side));
    }
    complete = rows->eof();
    return found;
}

void RecordLists::list_similar()
{
    const std::string question(common::trim_blanks(m_screen.loaded_question()));
    if (question.empty())
        return;
    bool complete = true;
    m_list = similar_to(question, complete);
    m_last_list_kind = similar_list;
    m_find_in_questions = true;
    m_screen.set_for_list(m_list.lines());
    show_similar_count(complete);
}

ListLines RecordLists::similar_to(const std::string& question, bool& complete)
{
    const double until = m_services.clock.steady_seconds() + longest_comparison;
    ListLines found;
    for (const std::string_view word : words_of(question)) {
        try {
            complete = collect_similar(question, word, until, found);
            if (!complete)
                tell(list_not_complete);
        } catch (const common::Error& error) {
            tell_failure("The list ends at the word \"" + shown_word(word) + "\".", error,
                         has_apostrophe(word) ? "Find, Find question finds it." : "");
            complete = false;
        }
        if (!complete)
            break;
    }
    return found;
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
/// pattern, and the rest of the word be run. Returns whether there was room for all of their texts.
bool RecordLists::collect_similar(const std::string& question, std::string_view word, double until, ListLines& found)
{
    if (has_apostrophe(word))
        throw common::Error("A word with an apostrophe cannot be looked for.");
    const auto check_time = [&] {
        if (m_services.clock.steady_seconds() >= until)
            throw common::Error("Looking for more words would take too long.");
    };
    check_time();
    const platform::BusyPointer busy(m_services.desktop);
    const store::SideFields& side = m_course.Q_FIELD;
    const auto rows = m_course.database().open_recordset("Select * from qa where " + side.text + " like '*" +
                                                         std::string(word) + "*' ");
    for (; !rows->eof(); rows->move_next()) {
        check_time();
        const std::string other = store::stored_text(rows->field(side.text));
        if (m_services.text_compare.equal(common::trim_blanks(other), question))
            continue;
        auto marked = marked_word(other, word, m_services.text_compare);
        if (!marked)
            continue;
        if (!found.has_room_for(marked->size()))
            return false;
        found.add(std::move(*marked), score_of(*rows, side));
    }
    return true;
}

void RecordLists::recall_find_list()
{
    m_screen.set_for_list(m_list.lines());
    m_services.status.ShowStatus("Lines of the last list: " + std::to_string(m_list.list_count()), 0);
}

void RecordLists::listav_click(const std::string& line)
{
    const bool had_changes = m_services.editor.has_changes();
    if (!m_services.editor.ask_to_save())
        return;
    const store::SideFields& side = m_find_in_questions ? m_course.Q_FIELD : m_course.A_FIELD;
    const std::optional<FoundRecord> record = m_bank.find(side.text, text_of_line(line));
    if (!record) {
        tell("nomatch in listav_click.");
        // What became of the typed texts is told already, and matters more.
        if (!had_changes)
            show_the_other_way();
        return;
    }
    m_course.current_cnt = common::to_int16(record->cnt, "record number");
    m_screen.show_chosen_record();
}

/// Marks and line breaks of a text cannot be told from those of its line. The other text of the record may have none.
void RecordLists::show_the_other_way()
{
    m_services.status.ShowStatus(
        m_find_in_questions ? "Use Find, Find answer to reach it." : "Use Find, Find question to reach it.", 0);
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
