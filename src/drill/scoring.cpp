#include "drill/scoring.h"

#include "common/errors.h"
#include "scheduler/counts.h"
#include "store/course_transaction.h"

#include <algorithm>
#include <optional>
#include <string>

namespace cuedrill::drill {
namespace {

constexpr int status_seconds = 5;

} // namespace

Scoring::Scoring(store::Course& course, const scheduler::DeadTimes& dead_times, Statistics& statistics,
                 const Views& views, platform::Clock& clock, platform::Desktop& desktop, EndOfProgram& end_of_program)
    : m_course(course), m_dead_times(dead_times), m_statistics(statistics), m_views(views), m_clock(clock),
      m_desktop(desktop), m_end_of_program(end_of_program)
{
}

scheduler::Verdict Scoring::judge_current(bool known)
{
    try {
        return scheduler::judge(m_course, m_dead_times, m_course.current_cnt, known, m_clock.now());
    } catch (const store::OutcomeUnknown&) {
        // It may have had its verdict, so it must not be given one again.
        m_views.display.withdraw_question();
        throw;
    }
}

void Scoring::set_success()
{
    try {
        const platform::BusyPointer busy(m_desktop);
        const scheduler::Verdict verdict = judge_current(true);
        m_views.status.ShowStatus(scheduler::success_text(verdict), status_seconds);
        after_verdict(verdict);
    } catch (const store::RecordGone&) {
        m_desktop.message_box({.text = "nomatch in set_success"});
        m_end_of_program.end_program();
    }
    m_statistics.announce_passed(m_statistics.passed_after_success());
}

void Scoring::set_failure()
{
    m_views.status.ShowStatus("", 0);
    const platform::BusyPointer busy(m_desktop);
    try {
        after_verdict(judge_current(false));
    } catch (const store::RecordGone&) {
        m_views.display.withdraw_question();
        m_course.record_count = m_course.count_records();
        refresh_counts_or_withdraw(m_statistics, m_views.display);
        throw;
    }
}

void Scoring::after_verdict(const scheduler::Verdict& verdict)
{
    m_views.panels.show_score(m_course.params.score_today);
    m_views.panels.mark_level(std::min<int>(verdict.new_level, scheduler::last_counted_level));
    refresh_counts_or_withdraw(m_statistics, m_views.display);
}

void Scoring::StampLastShow()
{
    if (m_course.current_cnt == 0)
        return;
    const platform::BusyPointer busy(m_desktop);
    scheduler::stamp_last_show(m_course, m_course.current_cnt, m_clock.now());
}

void Scoring::m_undo()
{
    std::string failure = "The last result cannot be undone.";
    try {
        const platform::BusyPointer busy(m_desktop);
        const std::optional<store::LastVerdict> undone = scheduler::undo_last_verdict(m_course);
        if (!undone)
            return;
        failure = "The last result is undone, but the question cannot be shown.";
        m_course.current_cnt = undone->cnt;
        refresh_counts_or_withdraw(m_statistics, m_views.display);
        m_views.display.show_question();
    } catch (const store::OutcomeUnknown& error) {
        m_desktop.message_box({.text = error.what(), .icon = platform::BoxIcon::exclamation});
    } catch (const common::Error& error) {
        m_desktop.message_box({.text = failure + "\r\n\r\n" + error.what(), .icon = platform::BoxIcon::exclamation});
    }
}

void Scoring::m_reset_all()
{
    const auto answer =
        m_desktop.message_box({.text = "This will set all question at level 0; do you really want to do this?",
                               .buttons = platform::BoxButtons::yes_no,
                               .icon = platform::BoxIcon::exclamation,
                               .default_button = platform::BoxAnswer::no});
    if (answer == platform::BoxAnswer::no)
        return;
    {
        const platform::BusyPointer busy(m_desktop);
        scheduler::reset_all(m_course, m_clock.now());
    }
    m_views.panels.show_score(0);
    refresh_counts_or_withdraw(m_statistics, m_views.display);
    m_views.display.refresh_figures();
}

} // namespace cuedrill::drill
