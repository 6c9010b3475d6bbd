#include "bank/corrections.h"

#include "bank/compared_text.h"
#include "bank/record_bank.h"
#include "store/course_transaction.h"
#include "store/records.h"

namespace cuedrill::bank {
namespace {

std::optional<Refusal> refusal_of(store::Course& course, const store::QaRecord& before, const store::QaTexts& texts,
                                  const platform::TextCompare& text_compare)
{
    if (is_blank(texts.q))
        return Refusal{"The question is empty.", WhichText::question};
    if (is_blank(texts.a))
        return Refusal{"The answer is empty.", WhichText::answer};
    const std::string words = too_long(texts.q, texts.a);
    if (!words.empty())
        return Refusal{words};
    // No question stands twice in a course that was typed in. A change of case only is no other question.
    if (same_text(texts.q, before.q, text_compare))
        return std::nullopt;
    const auto other = store::first_with_text(course.database(), "q", texts.q);
    if (other && other->cnt != before.cnt)
        return Refusal{"The record " + std::to_string(other->cnt) + " has this question.", WhichText::question};
    return std::nullopt;
}

} // namespace

std::optional<Refusal> correct_record(store::Course& course, const Correction& correction,
                                      const platform::TextCompare& text_compare,
                                      const std::function<void(const store::QaTexts& texts)>& before_loss)
{
    store::CourseTransaction transaction(course);
    const auto before = store::find_record(course.database(), correction.cnt);
    if (!before)
        throw store::RecordGone();
    const store::QaTexts texts{.q = correction.q.value_or(before->q), .a = correction.a.value_or(before->a)};
    if (std::optional<Refusal> refusal = refusal_of(course, *before, texts, text_compare))
        return refusal;
    if (store::correct_texts(course.database(), correction.cnt, texts) == 0)
        throw store::RecordGone();
    if (before_loss && (before->q != texts.q || before->a != texts.a))
        before_loss({.q = before->q, .a = before->a});
    transaction.commit({.is_stored = [&course, cnt = correction.cnt, texts] {
        const auto record = store::find_record(course.database(), cnt);
        return record && record->q == texts.q && record->a == texts.a;
    }});
    return std::nullopt;
}

} // namespace cuedrill::bank
