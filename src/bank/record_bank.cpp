#include "bank/record_bank.h"

#include "bank/compared_text.h"
#include "common/errors.h"
#include "common/text.h"
#include "store/course_transaction.h"

#include <utility>

namespace cuedrill::bank {

namespace {

/// The column that holds no text twice.
constexpr const char* column_without_duplicates = "q";

/// Whether the counters are 0 in both directions.
bool starts_anew(const store::QaRecord& record)
{
    return record.q_attempts == 0 && record.q_fails == 0 && record.q_successes == 0 && record.a_attempts == 0 &&
           record.a_fails == 0 && record.a_successes == 0;
}

} // namespace

bool is_blank(const std::string& text)
{
    return common::trim_blanks_and_line_ends(text).empty();
}

std::variant<common::Int16, Refusal> RecordBank::save(const Draft& draft, std::function<void()> when_stored_after_all)
{
    if (std::optional<Refusal> refusal = refusal_of(draft))
        return std::move(*refusal);
    if (!draft.changed)
        return insert_record(draft.question, draft.answer);
    change_record(*draft.changed, draft.question, draft.answer, std::move(when_stored_after_all));
    return *draft.changed;
}

std::optional<Refusal> RecordBank::refusal_of(const Draft& draft)
{
    if (is_blank(draft.question))
        return Refusal{"The question is empty. No saving performed.", WhichText::question};
    if (is_blank(draft.answer))
        return Refusal{"The answer is empty. No saving performed.", WhichText::answer};
    if (course_.Q_FIELD.text == column_without_duplicates && is_taken(draft, draft.question, draft.question_before))
        return Refusal{"Question is already in database.", WhichText::question};
    // In an inverted course the column without duplicates is shown as the answer.
    if (course_.A_FIELD.text == column_without_duplicates && is_taken(draft, draft.answer, draft.answer_before))
        return Refusal{"Answer is already in database.", WhichText::answer};
    return std::nullopt;
}

/// Whether `text` is another one than `before`, but for its case, and another record has it. The record itself may have
/// it already, where a save was stored whose outcome was unknown.
bool RecordBank::is_taken(const Draft& draft, const std::string& text, const std::string& before)
{
    if (draft.changed && same_text(text, before, text_compare_))
        return false;
    const std::optional<FoundRecord> found = find(column_without_duplicates, text);
    return found && (!draft.changed || found->cnt != std::int64_t{*draft.changed});
}

common::Int16 RecordBank::insert_record(const std::string& question, const std::string& answer)
{
    NewRecords records(course_);
    stored_after_all_.reset(); // beginning the transaction may have settled the previous record
    const common::Int16 cnt = records.add(question, answer);
    records.commit([this, cnt] { stored_after_all_ = cnt; });
    return cnt;
}

std::optional<common::Int16> RecordBank::stored_after_all()
{
    store::settle(course_);
    return stored_after_all_;
}

void RecordBank::change_record(common::Int16 cnt, const std::string& question, const std::string& answer,
                               std::function<void()> when_stored_after_all)
{
    const store::QaTexts texts = store::texts_by_column(course_.Q_FIELD, question, answer);
    store::CourseTransaction transaction(course_);
    stored_after_all_.reset();
    const std::optional<store::QaTexts> before = texts_to_lose(cnt);
    if (store::change_texts(course_.database(), cnt, texts) == 0)
        throw store::RecordGone();
    if (before && (before->q != texts.q || before->a != texts.a))
        before_loss(Loss::replaced, *before);
    transaction.commit({.is_stored = [this, cnt, texts] { return is_changed_to(cnt, texts); },
                        .when_stored_after_all =
                            [this, cnt, tell = std::move(when_stored_after_all)] {
                                stored_after_all_ = cnt;
                                tell_stored(store::StoredChange::What::changed, cnt);
                                if (tell)
                                    tell();
                            }});
    tell_stored(store::StoredChange::What::changed, cnt);
}

/// The texts of the record as they are stored now, for `before_loss`; nothing if nobody wants them. No other program
/// can change them before the transaction ends.
std::optional<store::QaTexts> RecordBank::texts_to_lose(common::Int16 cnt)
{
    if (!before_loss)
        return std::nullopt;
    const auto record = store::find_record(course_.database(), cnt);
    return record ? std::optional(store::QaTexts{.q = record->q, .a = record->a}) : std::nullopt;
}

bool RecordBank::has_new_texts(common::Int16 cnt, const std::string& question, const std::string& answer)
{
    return is_changed_to(cnt, store::texts_by_column(course_.Q_FIELD, question, answer));
}

bool RecordBank::is_changed_to(common::Int16 cnt, const store::QaTexts& texts)
{
    const auto record = store::find_record(course_.database(), cnt);
    // The texts may be the old ones; then the counters show whether the change was stored.
    return record && record->q == texts.q && record->a == texts.a && starts_anew(*record);
}

void RecordBank::delete_record(common::Int16 cnt, std::function<void()> when_stored_after_all)
{
    store::CourseTransaction transaction(course_);
    const std::optional<store::QaTexts> before = texts_to_lose(cnt);
    if (store::delete_record(course_.database(), cnt) == 0)
        throw store::RecordGone();
    if (before)
        before_loss(Loss::deleted, *before);
    const auto is_stored = [this, cnt] { return !store::find_record(course_.database(), cnt); };
    transaction.commit(
        {.is_stored = is_stored, .when_stored_after_all = [this, cnt, tell = std::move(when_stored_after_all)] {
             --course_.record_count;
             tell_stored(store::StoredChange::What::deleted, cnt);
             if (tell)
                 tell();
         }});
    --course_.record_count;
    tell_stored(store::StoredChange::What::deleted, cnt);
}

void RecordBank::tell_stored(store::StoredChange::What what, common::Int16 cnt) const
{
    course_.tell_stored({.what = what, .cnt = cnt});
}

std::optional<FoundRecord> RecordBank::find(const std::string& column, const std::string& text)
{
    const auto record = store::first_with_text(course_.database(), column, text);
    if (!record)
        return std::nullopt;
    return FoundRecord{.cnt = record->cnt, .answer = store::side_of(*record, course_.A_FIELD).text};
}

} // namespace cuedrill::bank
