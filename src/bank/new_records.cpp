#include "bank/new_records.h"

#include "common/errors.h"
#include "common/text.h"
#include "platform/database.h"
#include "store/schema.h"

#include <utility>

namespace cuedrill::bank {

std::string too_long_text(std::string_view what, std::size_t characters)
{
    if (characters <= store::longest_text)
        return {};
    return "The " + std::string(what) + " has " + std::to_string(characters) + " characters; " +
           std::to_string(store::longest_text) + " fit.";
}

std::string too_long(const std::string& question, const std::string& answer)
{
    const std::string about_question = too_long_text("question", common::code_points(question));
    const std::string about_answer = too_long_text("answer", common::code_points(answer));
    return about_question + (about_question.empty() || about_answer.empty() ? "" : " ") + about_answer;
}

std::variant<common::Int16, Refusal> NewRecords::Write_QA(const std::string& question, const std::string& answer)
{
    if (question.empty())
        return Refusal{"Question empty. Record not inserted."};
    if (answer.empty())
        return Refusal{"Answer empty. Record not inserted."};
    try {
        return add(question, answer);
    } catch (const platform::DatabaseError& error) {
        if (error.kind() != platform::DatabaseErrorKind::constraint)
            throw;
        const std::string words = too_long(question, answer);
        return Refusal{words.empty() ? error.what() : words};
    }
}

common::Int16 NewRecords::add(const std::string& question, const std::string& answer)
{
    if (course_.record_count + count_ >= common::max_int16)
        throw common::OverflowError("The course is full: " + std::to_string(common::max_int16) +
                                    " questions and answers are the most that it can hold.");
    // The transaction holds the write lock, so nobody else adds a record and one look at the numbers is enough.
    if (!next_cnt_)
        next_cnt_ = store::next_cnt(course_.database());
    store::QaTexts texts = store::texts_by_column(course_.Q_FIELD, question, answer);
    last_cnt_ = store::insert_record(course_.database(), *next_cnt_, texts);
    last_texts_ = std::move(texts);
    ++*next_cnt_;
    ++count_;
    return last_cnt_;
}

void NewRecords::commit(std::function<void()> when_stored_after_all)
{
    // All of them are stored or none is, so the last one tells. The functions may run when this object is gone.
    const auto is_stored = [&course = course_, count = count_, cnt = last_cnt_, texts = last_texts_] {
        if (count == 0)
            return true;
        const auto last = store::find_record(course.database(), cnt);
        return last && last->q == texts.q && last->a == texts.a;
    };
    const auto take_over = [&course = course_,
                            change = store::StoredChange{.what = told_as_, .cnt = last_cnt_, .records = count_}] {
        course.record_count += change.records;
        if (change.records != 0)
            course.tell_stored(change);
    };
    transaction_.commit(
        {.is_stored = is_stored, .when_stored_after_all = [take_over, tell = std::move(when_stored_after_all)] {
             take_over();
             if (tell)
                 tell();
         }});
    take_over();
}

} // namespace cuedrill::bank
