#include "bank/record_bank.h"

#include "common/errors.h"
#include "common/text.h"
#include "store/schema.h"

namespace cuedrill::bank {
namespace {

/// Says what is wrong with a text, in terms of what the user typed rather than of columns.
std::string too_long(const char* what, const std::string& text)
{
    return std::string("The ") + what + " has " + std::to_string(common::code_points(text)) + " characters; " +
           std::to_string(store::longest_text) + " fit.";
}

std::string refusal(const std::string& question, const std::string& answer, const platform::DatabaseError& error)
{
    if (common::code_points(question) > store::longest_text)
        return too_long("question", question);
    if (common::code_points(answer) > store::longest_text)
        return too_long("answer", answer);
    return error.what();
}

} // namespace

bool RecordBank::Write_QA(const std::string& question, const std::string& answer)
{
    m_last_refusal.clear();
    if (question.empty() || answer.empty()) {
        m_last_refusal =
            question.empty() ? "Question empty. Record not inserted." : "Answer empty. Record not inserted.";
        m_desktop.message_box({.text = m_last_refusal});
        return false;
    }
    try {
        m_course.current_cnt = insert(question, answer);
    } catch (const platform::DatabaseError& error) {
        if (error.kind() != platform::DatabaseErrorKind::constraint)
            throw;
        m_last_refusal = refusal(question, answer, error);
        return false;
    }
    m_flags.clear();
    return true;
}

common::Int16 RecordBank::insert(const std::string& question, const std::string& answer)
{
    if (m_course.record_count >= common::max_int16)
        throw common::OverflowError("The course is full: " + std::to_string(common::max_int16) +
                                    " questions and answers are the most that it can hold.");
    // The number is given by the course and known only afterwards; the transaction takes the row back when the number
    // is too large to be drilled.
    platform::Transaction transaction(m_course.database());
    platform::TableCursor& qa_recordset = m_course.qa_recordset();
    qa_recordset.add_new();
    try {
        qa_recordset.set(m_course.Q_FIELD.text, question);
        qa_recordset.set(m_course.A_FIELD.text, answer);
        for (const store::SideFields* side : {&m_course.Q_FIELD, &m_course.A_FIELD}) {
            for (const std::string* counter : {&side->attempts, &side->fails, &side->successes})
                qa_recordset.set(*counter, std::int64_t{0});
        }
        qa_recordset.update();
    } catch (...) {
        qa_recordset.cancel();
        throw;
    }
    const common::Int16 cnt = store::nz_int16(qa_recordset.field("cnt"), "record number");
    transaction.commit();
    ++m_course.record_count;
    return cnt;
}

} // namespace cuedrill::bank
