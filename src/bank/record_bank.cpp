#include "bank/record_bank.h"

#include "common/errors.h"
#include "common/text.h"
#include "store/course_transaction.h"
#include "store/schema.h"

namespace cuedrill::bank {

std::string too_long_text(std::string_view what, std::size_t characters)
{
    if (characters <= store::longest_text)
        return {};
    return "The " + std::string(what) + " has " + std::to_string(characters) + " characters; " +
           std::to_string(store::longest_text) + " fit.";
}

namespace {

/// Whether the counters of the current row stand at 0 in both directions.
bool starts_anew(const platform::TableCursor& row)
{
    for (const char* const counter : {"q_attempts", "q_fails", "q_successes", "a_attempts", "a_fails", "a_successes"}) {
        if (row.field(counter) != platform::Value(std::int64_t{0}))
            return false;
    }
    return true;
}

} // namespace

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
    store::CourseTransaction transaction(m_course);
    m_stored_after_all.reset(); // the transaction may have settled the record before this one
    platform::TableCursor& qa_recordset = m_course.qa_recordset();
    qa_recordset.add_new();
    store_texts(question, answer);
    const common::Int16 cnt = store::nz_int16(qa_recordset.field("cnt"), "record number");
    transaction.commit({.is_stored = texts_are_stored(cnt, question, answer), .when_stored_after_all = [this, cnt] {
                            ++m_course.record_count;
                            m_stored_after_all = cnt;
                        }});
    ++m_course.record_count;
    return cnt;
}

std::function<bool()> RecordBank::texts_are_stored(common::Int16 cnt, const std::string& question,
                                                   const std::string& answer)
{
    return
        [this, cnt, question, answer, question_column = m_course.Q_FIELD.text, answer_column = m_course.A_FIELD.text] {
            platform::TableCursor& row = m_course.qa_recordset();
            row.seek(std::int64_t{cnt});
            return !row.no_match() && store::stored_text(row.field(question_column)) == question &&
                   store::stored_text(row.field(answer_column)) == answer;
        };
}

std::optional<common::Int16> RecordBank::stored_after_all()
{
    store::settle(m_course);
    return m_stored_after_all;
}

void RecordBank::change_record(common::Int16 cnt, const std::string& question, const std::string& answer)
{
    store::CourseTransaction transaction(m_course);
    m_course.seek_record(cnt);
    m_course.qa_recordset().edit();
    store_texts(question, answer);
    // Texts that were there before tell nothing, but then the counters do.
    transaction.commit({.is_stored = [this, same_texts = texts_are_stored(cnt, question, answer)] {
        return same_texts() && starts_anew(m_course.qa_recordset());
    }});
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
    store::CourseTransaction transaction(m_course);
    m_course.seek_record(cnt);
    m_course.qa_recordset().delete_row();
    const auto is_stored = [this, cnt] {
        m_course.qa_recordset().seek(std::int64_t{cnt});
        return m_course.qa_recordset().no_match();
    };
    transaction.commit({.is_stored = is_stored, .when_stored_after_all = [this] { --m_course.record_count; }});
    --m_course.record_count;
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
