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
    : course_(course), dead_times_(dead_times), statistics_(statistics), views_(views), clock_(clock),
      desktop_(desktop), end_of_program_(end_of_program)
{
}

scheduler::Verdict Scoring::judge_current(bool known)
{
    try {
        return scheduler::judge(course_, dead_times_, course_.current_cnt, known, clock_.now());
    } catch (const store::OutcomeUnknown&) {
        // It may have had its verdict, so it must not be given one again.
        views_.display.withdraw_question();
        throw;
    }
}

void Scoring::set_success()
{
    try {
        const platform::BusyPointer busy(desktop_);
        const scheduler::Verdict verdict = judge_current(true);
        views_.status.ShowStatus(scheduler::success_text(verdict), status_seconds);
        after_verdict(verdict);
    } catch (const store::RecordGone&) {
        desktop_.message_box({.text = "nomatch in set_success"});
        end_of_program_.end_program();
    }
    statistics_.announce_passed(statistics_.passed_after_success());
}

void Scoring::set_failure()
{
    views_.status.ShowStatus("", 0);
    const platform::BusyPointer busy(desktop_);
    try {
        after_verdict(judge_current(false));
    } catch (const store::RecordGone&) {
        views_.display.withdraw_question();
        course_.record_count = course_.count_records();
        refresh_counts_or_withdraw(statistics_, views_.display);
        throw;
    }
}

void Scoring::after_verdict(const scheduler::Verdict& verdict)
{
    views_.panels.show_score(course_.params.score_today);
    views_.panels.mark_level(std::min<int>(verdict.new_level, scheduler::last_counted_level));
    refresh_counts_or_withdraw(statistics_, views_.display);
}

void Scoring::StampLastShow()
{
    if (course_.current_cnt == 0)
        return;
    const platform::BusyPointer busy(desktop_);
    scheduler::stamp_last_show(course_, course_.current_cnt, clock_.now());
}

void Scoring::m_undo()
{
    std::string failure = "The last result cannot be undone.";
    try {
        const platform::BusyPointer busy(desktop_);
        const std::optional<store::LastVerdict> undone = scheduler::undo_last_verdict(course_);
        if (!undone)
            return;
        failure = "The last result is undone, but the question cannot be shown.";
        course_.current_cnt = undone->cnt;
        refresh_counts_or_withdraw(statistics_, views_.display);
        views_.display.show_question();
    } catch (const store::OutcomeUnknown& error) {
        desktop_.message_box({.text = error.what(), .icon = platform::BoxIcon::exclamation});
    } catch (const common::Error& error) {
        desktop_.message_box({.text = failure + "\r\n\r\n" + error.what(), .icon = platform::BoxIcon::exclamation});
    }
}

void Scoring::m_reset_all()
{
    const auto answer =
        desktop_.message_box({.text = "This will set all question at level 0; do you really want to do this?",
                              .buttons = platform::BoxButtons::yes_no,
                              .icon = platform::BoxIcon::exclamation,
                              .default_button = platform::BoxAnswer::no});
    if (answer == platform::BoxAnswer::no)
        return;
    {
        const platform::BusyPointer busy(desktop_);
        scheduler::reset_all(course_, clock_.now());
    }
    views_.panels.show_score(0);
    refresh_counts_or_withdraw(statistics_, views_.display);
    views_.display.refresh_figures();
}

} // namespace cuedrill::drill
