#include "drill/selection.h"

#include "scheduler/next_due.h"
#include "scheduler/next_question.h"

#include <algorithm>
#include <optional>
#include <string>

namespace cuedrill::drill {
Selection::Selection(store::Course& course, store::CourseParamsStore& params, const scheduler::DeadTimes& dead_times,
                     QuestionDisplay& display, StatisticsPanels& panels, const Services& services)
    : m_course(course), m_params(params), m_dead_times(dead_times), m_display(display), m_panels(panels),
      m_services(services)
{
}

void Selection::next_question_after(common::Int16 previous)
{
    if (m_course.record_count == 0) {
        m_services.desktop.message_box({.text = "There are no questions in the database."});
        return;
    }
    m_course.previous_cnt = previous;
    m_display.clear_answer_state();
    const common::DateTime now = m_services.clock.now();
    try {
        m_course.current_cnt = find_next_question(now);
    } catch (...) {
        // The question that stood there has had its verdict; it must not be judged a second time.
        m_display.withdraw_question();
        throw;
    }
    if (m_course.current_cnt != 0) {
        m_display.show_question();
        return;
    }
    m_display.withdraw_question();
    m_services.desktop.message_box({.text = "No question is mature for being asked."});
    show_next_due(now);
}

void Selection::tell_next_due()
{
    show_next_due(std::nullopt);
}

/// @param searched_at when a search has found nothing, where there was one
void Selection::show_next_due(std::optional<common::DateTime> searched_at)
{
    const common::DateTime now = m_services.clock.now();
    std::optional<scheduler::NextDue> due;
    {
        const platform::BusyPointer busy(m_services.desktop);
        due = scheduler::find_next_due(m_course, m_dead_times, now);
    }
    if (!due)
        return;
    // Of what was due when a search found nothing, it had passed over the last question. What is due since then, or
    // what somebody has put into the course meanwhile, is another one.
    due->was_just_shown = searched_at && m_course.previous_cnt != 0 && due->at <= std::min(*searched_at, now);
    m_services.status.ShowStatus(scheduler::next_due_text(*due, now), 0);
}

/// 0 where there is none.
common::Int16 Selection::find_next_question(common::DateTime now)
{
    const platform::BusyPointer busy(m_services.desktop);
    return scheduler::next_question(m_course, m_dead_times, m_course.previous_cnt, now, m_services.random).value_or(0);
}

void Selection::m_random_extraction()
{
    store::CourseParams changed = m_course.params;
    changed.random_mode = !changed.random_mode;
    m_params.change_params(changed);
    m_panels.show_options();
    m_services.desktop.message_box(
        {.text = changed.random_mode
                     ? "Mature questions of a given level will be extracted randomly"
                     : "Mature questions of a given level will be extracted ordered by date of last test"});
}

void Selection::m_disp_nr_mature()
{
    std::int64_t mature = 0;
    {
        const platform::BusyPointer busy(m_services.desktop);
        mature = scheduler::count_mature(m_course, m_dead_times, m_services.clock.now());
    }
    m_services.desktop.message_box({.text = "Number of mature questions: " + std::to_string(mature)});
}

} // namespace cuedrill::drill
