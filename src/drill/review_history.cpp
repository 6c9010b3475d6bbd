#include "drill/review_history.h"

#include "common/errors.h"
#include "scheduler/counts.h"

#include <cstdint>
#include <exception>
#include <utility>

namespace cuedrill::drill {
namespace {

using keep::HistoryEvent;
using keep::HistoryKind;
using What = store::StoredChange::What;

HistoryKind kind_of(What what)
{
    switch (what) {
    case What::verdict:
        return HistoryKind::verdict;
    case What::undone:
        return HistoryKind::undone;
    case What::reset:
        return HistoryKind::reset;
    case What::added:
        return HistoryKind::added;
    case What::imported:
        return HistoryKind::imported;
    case What::changed:
        return HistoryKind::changed;
    case What::deleted:
        break;
    }
    return HistoryKind::deleted;
}

} // namespace

ReviewHistory::ReviewHistory(store::Course& course, const store::CourseParamsStore& params, std::string data_folder,
                             const Services& services)
    : course_(course), params_(params), data_folder_(std::move(data_folder)), services_(services),
      failures_(services.status, services.trace, "The history of the course could not be written.",
                "history not written")
{
}

HistoryEvent ReviewHistory::event_of(HistoryKind kind, common::DateTime time) const
{
    HistoryEvent event{.time = time, .kind = kind};
    event.inverted = course_.params.invert;
    event.score = course_.params.score_today;
    event.work_seconds = static_cast<std::int64_t>(params_.time_today(time));
    return event;
}

HistoryEvent ReviewHistory::event_with_levels(HistoryKind kind) const
{
    HistoryEvent event = event_of(kind, services_.clock.now());
    try {
        event.levels = scheduler::count_levels(course_);
        event.records = course_.record_count;
    } catch (const std::exception&) {
        // The line is worth writing without them, and who works with the course learns of the error there.
    }
    return event;
}

void ReviewHistory::course_opened()
{
    if (!data_folder_.empty() && !std::exchange(opened_, true))
        append(event_with_levels(HistoryKind::opened));
}

void ReviewHistory::course_closing()
{
    opened_ = false;
    if (!file_)
        return;
    try {
        file_->append_last(event_with_levels(HistoryKind::closed));
    } catch (const std::exception& error) {
        failures_.note(common::words_of(error));
    }
    file_.reset();
}

void ReviewHistory::note(const store::StoredChange& change)
{
    const auto& judgement = change.judgement;
    const bool is_verdict = change.what == What::verdict;
    HistoryEvent event =
        event_of(kind_of(change.what), is_verdict && judgement ? judgement->when : services_.clock.now());
    if (change.cnt != 0)
        event.record = change.cnt;
    if (change.what == What::imported || change.what == What::reset)
        event.records = change.records;
    if (judgement) {
        event.level_before = judgement->level_before;
        event.level_after = judgement->level_after;
    }
    if (is_verdict && judgement) {
        event.known = judgement->known;
        event.typed = judgement->typed;
        event.elapsed = judgement->elapsed;
    }
    append(event);
}

void ReviewHistory::append(const HistoryEvent& event)
{
    if (data_folder_.empty())
        return;
    try {
        if (!file_)
            file_.emplace(services_.files, keep::history_path(services_.folders, data_folder_, course_.db_path));
        file_->append(event);
    } catch (const std::exception& error) {
        failures_.note(common::words_of(error));
    }
}

} // namespace cuedrill::drill
