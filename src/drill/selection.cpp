#include "drill/selection.h"

#include "scheduler/next_due.h"
#include "scheduler/next_question.h"
#include "store/course_transaction.h"

#include <optional>
#include <string>

namespace cuedrill::drill {

Selection::Selection(store::Course& course, store::CourseParamsStore& params, const scheduler::DeadTimes& dead_times,
                     const DrillState& state, Display& display, CourseOptions& options, const Services& services)
    : course_(course), params_(params), dead_times_(dead_times), state_(state), display_(display), options_(options),
      services_(services)
{
}

void Selection::next_question_after(common::Int16 previous)
{
    settle();
    if (course_.record_count == 0) {
        services_.desktop.message_box({.text = "There are no questions in the database."});
        return;
    }
    display_.leave_question(previous);
    const common::DateTime now = services_.clock.now();
    if (ask_next(now))
        return;
    services_.desktop.message_box({.text = "No question is mature for being asked."});
    show_next_due(true);
}

/// Finds out whether a change of unknown outcome has added a record or changed the direction.
void Selection::settle()
{
    Display::Change change(display_);
    store::settle(course_);
    change.keep();
}

/// Asks the next question. Returns false if none is mature; no question is on display then.
bool Selection::ask_next(common::DateTime now)
{
    Display::Change change(display_);
    const std::optional<common::Int16> next = find_next_question(now);
    if (!next)
        return false;
    display_.ask(*next);
    change.keep();
    return true;
}

void Selection::tell_next_due()
{
    show_next_due(false);
}

/// @param found_nothing whether a search has just found no mature question.
void Selection::show_next_due(bool found_nothing)
{
    const common::DateTime now = services_.clock.now();
    std::optional<scheduler::NextDue> due;
    {
        const platform::BusyPointer busy(services_.desktop);
        due = scheduler::find_next_due(course_, dead_times_, now);
    }
    if (!due)
        return;
    // A search skips the question asked last. If one is due and still none is found, it is that question; otherwise
    // another one became due after the first search, or another program has added it.
    due->was_just_shown =
        found_nothing && state_.shown.previous_cnt() != 0 && due->at <= now && !find_next_question(now);
    services_.status.show_about_due(scheduler::next_due_text(*due, now), 0);
}

std::optional<common::Int16> Selection::find_next_question(common::DateTime now)
{
    const platform::BusyPointer busy(services_.desktop);
    return scheduler::next_question(course_, dead_times_, state_.shown.previous_cnt(), now, services_.random);
}

void Selection::m_random_extraction()
{
    const bool on = !course_.params.random_mode;
    params_.change_params([on](store::CourseParams& params) { params.random_mode = on; });
    options_.show_options();
    services_.desktop.message_box(
        {.text = on ? "Mature questions of a given level will be extracted randomly"
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
