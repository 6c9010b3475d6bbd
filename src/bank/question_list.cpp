#include "bank/question_list.h"

#include "store/records.h"

#include <utility>

namespace cuedrill::bank {
namespace {

/// Whether the shown answer may differ from the record's own one and has to be looked up. Where equal questions are
/// adjacent, ordered by record number, the first of them shows its own answer. A record without a question cannot be
/// looked up.
bool has_other_answer(const ListLines& list, std::size_t place, bool equal_stand_together,
                      const platform::TextCompare& text_compare)
{
    const std::string& question = list.text(place);
    if (question.empty())
        return false;
    return !equal_stand_together || (place > 0 && text_compare.equal(question, list.text(place - 1)));
}

} // namespace

std::optional<QuestionList> read_questions(store::Course& course, const std::string& clause, bool with_answers)
{
    QuestionList questions;
    questions.clause = clause;
    // By text, by level and by number the rows come in the order of an index. By the date of the last show they are
    // sorted: an index of its own would be kept up to date by each verdict, for a list that is seldom asked for.
    const auto rows = course.database().open_recordset("Select * from qa " + clause);
    if (rows->bof() && rows->eof())
        return std::nullopt;
    for (; !rows->eof() && !questions.list.full(); rows->move_next()) {
        std::string question = store::stored_text(rows->field(course.Q_FIELD.text));
        std::string answer = with_answers ? store::stored_text(rows->field(course.A_FIELD.text)) : std::string();
        if (!questions.list.has_room_for(question.size(), answer.size()))
            break;
        questions.list.add(std::move(question), score_of(*rows, course.Q_FIELD), answer.size());
        if (with_answers)
            questions.answers.push_back(std::move(answer));
    }
    questions.complete = rows->eof();
    return questions;
}

void make_lines(QuestionList& questions, store::Course& course, const platform::TextCompare& text_compare)
{
    ListLines& list = questions.list;
    // If the direction has changed since the list was built, the list may be ordered by the answers.
    const bool equal_stand_together = questions.clause == "order by " + course.Q_FIELD.text;
    questions.lines.reserve(list.list_count());
    std::size_t size = 0;
    for (std::size_t place = 0; place < list.list_count(); ++place) {
        std::string line = in_one_line(list.line(place));
        if (!questions.answers.empty()) {
            std::string answer = std::exchange(questions.answers[place], {});
            if (has_other_answer(list, place, equal_stand_together, text_compare)) {
                std::optional<std::string> first = risposta_item_selezionato(course, list.text(place));
                questions.answers_not_found += first ? 0 : 1;
                answer = std::move(first).value_or("");
            }
            answer = in_one_line(std::move(answer));
            line.reserve(line.size() + answer_arrow.size() + answer.size());
            line.append(answer_arrow).append(answer);
        }
        size += list.text(place).size() + line.size();
        // The answer of another record may be longer than the record's own one, which was counted.
        if (size > most_list_text) {
            questions.complete = false;
            list.cut(place);
            return;
        }
        questions.lines.push_back(std::move(line));
    }
}

std::optional<std::string> risposta_item_selezionato(store::Course& course, const std::string& question)
{
    const auto record = store::first_with_text(course.database(), course.Q_FIELD.text, question);
    if (!record)
        return std::nullopt;
    return store::side_of(*record, course.A_FIELD).text;
}

} // namespace cuedrill::bank
