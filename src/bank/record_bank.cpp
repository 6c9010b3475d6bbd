#include "bank/record_bank.h"

#include "common/errors.h"
#include "common/text.h"
#include "store/schema.h"

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
        m_course.current_cnt = insert_record(question, answer);
    } catch (const platform::DatabaseError& error) {
        if (error.kind() != platform::DatabaseErrorKind::constraint)
            throw;
        m_last_refusal = too_long(question, answer);
        if (m_last_refusal.empty())
            m_last_refusal = error.what();
        return false;
    }
    m_flags.clear();
    return true;
}

common::Int16 RecordBank::insert_record(const std::string& question, const std::string& answer)
{
    if (m_course.record_count >= common::max_int16)
        throw common::OverflowError("The course is full: " + std::to_string(common::max_int16) +
                                    " questions and answers are the most that it can hold.");
    // The number is given by the course and known only afterwards; the transaction takes the row back when the number
    // is too large to be drilled.
    platform::Transaction transaction(m_course.database());
    platform::TableCursor& qa_recordset = m_course.qa_recordset();
    qa_recordset.add_new();
    store_texts(question, answer);
    const common::Int16 cnt = store::nz_int16(qa_recordset.field("cnt"), "record number");
    transaction.commit();
    ++m_course.record_count;
    return cnt;
}

void RecordBank::change_record(common::Int16 cnt, const std::string& question, const std::string& answer)
{
    platform::Transaction transaction(m_course.database());
    seek(cnt);
    m_course.qa_recordset().edit();
    store_texts(question, answer);
    transaction.commit();
}

/// Gives the row in progress its texts and counters, and stores it.
void RecordBank::store_texts(const std::string& question, const std::string& answer)
{
    platform::TableCursor& qa_recordset = m_course.qa_recordset();
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
}

void RecordBank::delete_record(common::Int16 cnt)
{
    platform::Transaction transaction(m_course.database());
    seek(cnt);
    m_course.qa_recordset().delete_row();
    transaction.commit();
    --m_course.record_count;
}

void RecordBank::seek(common::Int16 cnt)
{
    platform::TableCursor& qa_recordset = m_course.qa_recordset();
    qa_recordset.seek(std::int64_t{cnt});
    if (qa_recordset.no_match())
        throw platform::DatabaseError(platform::DatabaseErrorKind::other, 0,
                                      "The question is no longer in the course; another program has deleted it.");
}

std::optional<FoundRecord> RecordBank::find(const std::string& column, const std::string& text)
{
    platform::TableCursor& qa_recordset = m_course.qa_recordset();
    qa_recordset.set_index(column);
    std::optional<FoundRecord> found;
    try {
        qa_recordset.seek(text);
        if (!qa_recordset.no_match())
            found = {.cnt = qa_recordset.field("cnt"),
                     .answer = store::stored_text(qa_recordset.field(m_course.A_FIELD.text))};
    } catch (...) {
        qa_recordset.set_index("PrimaryKey");
        throw;
    }
    qa_recordset.set_index("PrimaryKey");
    return found;
}

} // namespace cuedrill::bank
