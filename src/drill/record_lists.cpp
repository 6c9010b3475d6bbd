#include "drill/record_lists.h"

#include "common/errors.h"
#include "common/text.h"

#include <utility>

namespace cuedrill::drill {
namespace {

/// The word, shortened so that it fits into a message box.
std::string shown_word(std::string_view word)
{
    constexpr std::size_t most_characters = 50;
    const std::string_view beginning = common::first_code_points(word, most_characters);
    return std::string(beginning) + (beginning.size() < word.size() ? "..." : "");
}

/// Whether the database engine has rejected the statement itself, as opposed to failing to read the course.
bool is_refused_statement(const common::Error& error)
{
    const auto* const refusal = dynamic_cast<const platform::DatabaseError*>(&error);
    return refusal != nullptr && refusal->kind() == platform::DatabaseErrorKind::other;
}

} // namespace

void RecordLists::attach()
{
    list_.attach([this](const std::string& line) { listav_click(line); });
}

void RecordLists::m_show_all()
{
    list_all("order by cnt", false);
}

void RecordLists::m_show_all_alphabetically()
{
    list_all("order by " + course_.Q_FIELD.text, false);
}

void RecordLists::m_all_q_and_a()
{
    list_all("order by " + course_.Q_FIELD.text, true);
}

void RecordLists::m_show_sort_by_score()
{
    list_all("order by " + course_.Q_FIELD.successes, false);
}

void RecordLists::m_show_sort_last_show()
{
    list_all("order by " + course_.Q_FIELD.date_last_show, false);
}

void RecordLists::m_history()
{
    list_all("order by " + course_.Q_FIELD.date_last_show + " desc", false);
}

void RecordLists::list_all(const std::string& clause, bool with_answers)
{
    if (list_.build_question_list(clause, with_answers))
        return;
    tell("Database empty.");
    if (editor_.ask_to_save())
        end_of_program_.end_program();
}

void RecordLists::find_text(bool in_questions)
{
    const auto entered = desktop_.input_box({.prompt = "String?", .default_text = last_search_string_});
    const std::string text(common::trim_blanks(text_compare_.nfc(entered.value_or(""))));
    if (text.empty())
        return;
    last_search_string_ = text;
    std::optional<bank::FoundRecords> found = search(in_questions, text);
    if (!found)
        return;
    const std::size_t count = found->list.list_count();
    if (count == 0) {
        tell("No records found.");
        return;
    }
    if (!found->complete)
        tell(list_not_complete);
    list_.show_found(std::move(found->list), in_questions ? find_question : find_answer, in_questions);
    status_.show_about_list(std::to_string(count) + (in_questions ? " questions found." : " answers found."), 0);
}

/// std::nullopt if the search failed; the user has been told.
std::optional<bank::FoundRecords> RecordLists::search(bool in_questions, const std::string& text)
{
    try {
        const platform::BusyPointer busy(desktop_);
        return bank::search(course_, in_questions ? course_.Q_FIELD : course_.A_FIELD, text);
    } catch (const common::Error& error) {
        const bool malformed = is_refused_statement(error) && text.find('[') != std::string::npos;
        warn("The search was given up.", store::words_about(error, course_),
             malformed ? "To find [ itself, type [[]." : "");
        return std::nullopt;
    }
}

void RecordLists::list_similar()
{
    const std::string question(common::trim_blanks(state_.shown.loaded_question()));
    if (question.empty())
        return;
    bank::SimilarQuestions similar = find_similar(question);
    tell_missing(similar);
    const std::size_t count = similar.list.list_count();
    list_.show_found(std::move(similar.list), similar_list, true);
    tell_similar_count(count, similar.complete);
}

bank::SimilarQuestions RecordLists::find_similar(const std::string& question)
{
    const platform::BusyPointer busy(desktop_);
    return bank::similar_questions(course_, question, text_compare_, clock_);
}

void RecordLists::tell_missing(const bank::SimilarQuestions& similar)
{
    if (similar.stop)
        warn("The list ends at the word \"" + shown_word(similar.stop->word) + "\".", similar.stop->reason,
             bank::has_apostrophe(similar.stop->word) ? "Find, Find question finds it." : "");
    else if (!similar.complete)
        tell(list_not_complete);
}

void RecordLists::tell_similar_count(std::size_t count, bool complete)
{
    std::string text =
        std::to_string(count) + " lines: questions with a word of this one, marked by *. Click one to see it.";
    if (!complete)
        text = std::to_string(count) + " lines: questions with a word of this one; the list is not complete.";
    else if (count == 0)
        text = "No other question has a word of this one.";
    status_.show_about_list(text, 0);
}

void RecordLists::listav_click(const std::string& line)
{
    const bool had_changes = editor_.has_changes();
    if (!editor_.ask_to_save())
        return;
    const std::optional<std::int64_t> cnt = bank::record_of_line(course_, list_.side(), line);
    if (!cnt) {
        tell("nomatch in listav_click.");
        // The text of a line cannot be found if the record's text contains the marks or line breaks that lines use.
        // Searching for the record's other text may find it. The status line is left alone if it reports on typed
        // texts, which matters more.
        if (!had_changes)
            status_.show_about_list(list_.find_in_questions() ? "Use Find, Find answer to reach it."
                                                              : "Use Find, Find question to reach it.",
                                    0);
        return;
    }
    display_.ask(common::to_int16(*cnt, "record number"));
}

void RecordLists::tell(const std::string& text)
{
    desktop_.message_box({.text = text});
}

void RecordLists::warn(const std::string& what_failed, const std::string& reason, const std::string& advice)
{
    std::string text = what_failed;
    text.append("\r\n\r\n").append(reason);
    if (!advice.empty())
        text.append("\r\n\r\n").append(advice);
    desktop_.message_box({.text = text, .icon = platform::BoxIcon::exclamation});
}

} // namespace cuedrill::drill
