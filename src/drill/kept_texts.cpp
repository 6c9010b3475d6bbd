#include "drill/kept_texts.h"

#include "common/errors.h"

#include <utility>

namespace cuedrill::drill {
namespace {

/// How many seconds after a change the draft is written, at the most. With the quarter of a second until the timer sees
/// the change, and another one until it sees that the time is over, a kill costs less than 2 seconds of typing.
constexpr double draft_seconds = 1;

} // namespace

std::string KeptTexts::entry(keep::Reason reason, store::QaTexts texts) const
{
    return keep::entry_of(
        {.when = services_.clock.now(), .course = course_.db_path, .reason = reason, .texts = std::move(texts)},
        services_.text_compare);
}

std::string KeptTexts::entry_of_typed(const RecordTexts& typed, Unsaved certainty) const
{
    return entry(certainty == Unsaved::surely ? keep::Reason::unsaved : keep::Reason::perhaps_unsaved,
                 store::texts_by_column(course_.Q_FIELD, typed.question, typed.answer));
}

/// @return whether the entry is in the file.
bool KeptTexts::append(const std::string& entry)
{
    try {
        if (std::string unrenamed = removed_.append(entry); !unrenamed.empty())
            failures_.note(std::move(unrenamed));
        return true;
    } catch (const common::Error& error) {
        failures_.note(error.what());
        return false;
    }
}

void KeptTexts::keep_lost(bank::Loss loss, const store::QaTexts& texts)
{
    const bool deleted = loss == bank::Loss::deleted;
    const bool kept = append(entry(deleted ? keep::Reason::deleted : keep::Reason::replaced, texts));
    deleted_kept_ = deleted && kept;
}

bool KeptTexts::keep_unsaved(const RecordTexts& typed, Unsaved certainty)
{
    const std::string text = entry_of_typed(typed, certainty);
    if (append(text)) {
        drop_draft();
        return true;
    }
    try {
        draft_.write(text);
    } catch (const common::Error& error) {
        failures_.note(error.what());
    }
    draft_.leave();
    noted_.reset();
    due_.reset();
    return false;
}

void KeptTexts::keep_left_drafts()
{
    const keep::LeftDrafts left = draft_.move_left_drafts(removed_);
    for (const std::string& failure : left.failures)
        failures_.note(failure);
    if (left.kept > 0)
        services_.status.show_when_free("Unsaved texts found. Kept in removed.txt.", StatusLine::Waiting::stays);
}

void KeptTexts::note_typed(const RecordTexts& typed, Unsaved certainty, const std::function<bool()>& is_unsaved)
{
    const double now = services_.clock.steady_seconds();
    if (!noted_ || noted_->question != typed.question || noted_->answer != typed.answer) {
        noted_ = typed;
        if (!due_)
            due_ = now + draft_seconds;
    }
    if (!due_ || now < *due_)
        return;
    due_.reset();
    try {
        if (is_unsaved())
            draft_.write(entry_of_typed(typed, certainty));
        else
            draft_.remove();
    } catch (const common::Error& error) {
        failures_.note(error.what());
    }
}

void KeptTexts::drop_draft()
{
    noted_.reset();
    due_.reset();
    try {
        draft_.remove();
    } catch (const common::Error& error) {
        failures_.note(error.what());
    }
}

// Another text that the same command shows afterwards replaces this one.
void KeptTexts::tell_deleted()
{
    if (deleted_kept_)
        services_.status.ShowStatus("Deleted. Kept in removed.txt.", status_seconds);
}

void KeptTexts::tell_unsaved(Unsaved certainty)
{
    services_.status.show_when_free(certainty == Unsaved::surely ? "Not saved. Kept in removed.txt."
                                                                 : "Perhaps not saved. Kept in removed.txt.",
                                    StatusLine::Waiting::gives_way);
}

} // namespace cuedrill::drill
