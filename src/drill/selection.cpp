#include "drill/selection.h"

#include "scheduler/next_due.h"
#include "scheduler/next_question.h"

#include <algorithm>
#include <optional>
#include <string>

namespace cuedrill::drill {
Selection::Selection(store::Course& course, store::CourseParamsStore& params, const scheduler::DeadTimes& dead_times,
                     QuestionDisplay& display, StatisticsPanels& panels, const Services& services)
    : course_(course), params_(params), dead_times_(dead_times), display_(display), panels_(panels), services_(services)
{
}

void Selection::next_question_after(common::Int16 previous)
{
    if (course_.record_count == 0) {
        services_.desktop.message_box({.text = "There are no questions in the database."});
        return;
    }
    course_.previous_cnt = previous;
    display_.clear_answer_state();
    const common::DateTime now = services_.clock.now();
    try {
        course_.current_cnt = find_next_question(now);
    } catch (...) {
        // The question that stood there has had its verdict; it must not be judged a second time.
        display_.withdraw_question();
        throw;
    }
    if (course_.current_cnt != 0) {
        display_.show_question();
        return;
    }
    display_.withdraw_question();
    services_.desktop.message_box({.text = "No question is mature for being asked."});
    show_next_due(now);
}

void Selection::tell_next_due()
{
    show_next_due(std::nullopt);
}

/// @param searched_at when a search has found nothing, where there was one
void Selection::show_next_due(std::optional<common::DateTime> searched_at)
{
    const common::DateTime now = services_.clock.now();
    std::optional<scheduler::NextDue> due;
    {
        const platform::BusyPointer busy(services_.desktop);
        due = scheduler::find_next_due(course_, dead_times_, now);
    }
    if (!due)
        return;
    // Of what was due when a search found nothing, it had passed over the last question. What is due since then, or
    // what somebody has put into the course meanwhile, is another one.
    due->was_just_shown = searched_at && course_.previous_cnt != 0 && due->at <= std::min(*searched_at, now);
    services_.status.ShowStatus(scheduler::next_due_text(*due, now), 0);
}

/// 0 where there is none.
common::Int16 Selection::find_next_question(common::DateTime now)
{
    const platform::BusyPointer busy(services_.desktop);
    return scheduler::next_question(course_, dead_times_, course_.previous_cnt, now, services_.random).value_or(0);
}

void Selection::m_random_extraction()
{
    store::CourseParams changed = course_.params;
    changed.random_mode = !changed.random_mode;
    params_.change_params(changed);
    panels_.show_options();
    services_.desktop.message_box(
        {.text = changed.random_mode
                     ? "Mature questions of a given level will be extracted randomly"
                     : "Mature questions of a given level will be extracted ordered by date of last test"});
}

void Selection::m_disp_nr_mature()
{
    std::int64_t mature = 0;
    {
        const platform::BusyPointer busy(services_.desktop);
        mature = scheduler::count_mature(course_, dead_times_, services_.clock.now());
    }
    services_.desktop.message_box({.text = "Number of mature questions: " + std::to_string(mature)});
}

} // namespace cuedrill::drill
