#include "drill/scoring.h"

#include "common/errors.h"
#include "scheduler/counts.h"
#include "store/course_transaction.h"

#include <algorithm>
#include <optional>
#include <string>

namespace cuedrill::drill {

Scoring::Scoring(store::Course& course, const scheduler::DeadTimes& dead_times, const DrillState& state,
                 Display& display, Statistics& statistics, StatusLine& status, platform::Clock& clock,
                 platform::Desktop& desktop, EndOfProgram& end_of_program, CourseCopies& copies)
    : course_(course), dead_times_(dead_times), state_(state), display_(display), statistics_(statistics),
      status_(status), clock_(clock), desktop_(desktop), end_of_program_(end_of_program), copies_(copies)
{
}

scheduler::Verdict Scoring::judge_current(bool known, scheduler::JudgedBy by)
{
    try {
        return scheduler::judge(course_, dead_times_, state_.shown.current_cnt(), known, clock_.now(), by);
    } catch (const store::OutcomeUnknown&) {
        // The verdict may have been stored, so the question must not be judged again.
        display_.withdraw_question();
        throw;
    }
}

void Scoring::set_success(scheduler::JudgedBy by)
{
    try {
        const platform::BusyPointer busy(desktop_);
        const scheduler::Verdict verdict = judge_current(true, by);
        Display::Change change(display_);
        status_.ShowStatus(scheduler::success_text(verdict), status_seconds);
        show_verdict(verdict);
        change.keep();
    } catch (const store::RecordGone&) {
        desktop_.message_box({.text = "nomatch in set_success"});
        end_of_program_.end_program();
    }
    statistics_.announce_passed(statistics_.passed_after_success());
}

void Scoring::set_failure(scheduler::JudgedBy by)
{
    status_.ShowStatus("", 0);
    const platform::BusyPointer busy(desktop_);
    try {
        const scheduler::Verdict verdict = judge_current(false, by);
        Display::Change change(display_);
        show_verdict(verdict);
        change.keep();
    } catch (const store::RecordGone&) {
        display_.withdraw_question();
        course_.record_count = course_.count_records();
        refresh_counts_or_withdraw(statistics_, display_);
        throw;
    }
}

void Scoring::show_verdict(const scheduler::Verdict& verdict)
{
    statistics_.show_verdict(std::min<int>(verdict.new_level, scheduler::last_counted_level));
    statistics_.refresh_counts();
}

void Scoring::StampLastShow()
{
    if (!state_.shown.is_question())
        return;
    const platform::BusyPointer busy(desktop_);
    scheduler::stamp_last_show(course_, state_.shown.current_cnt(), clock_.now());
}

void Scoring::m_undo()
{
    std::string failure = "The last result cannot be undone.";
    try {
        const platform::BusyPointer busy(desktop_);
        const std::optional<store::LastVerdict> undone = scheduler::undo_last_verdict(course_);
        if (!undone)
            return;
        // What it says of the verdict is no longer true.
        status_.ShowStatus("", 0);
        failure = "The last result is undone, but the question cannot be shown.";
        refresh_counts_or_withdraw(statistics_, display_);
        display_.ask(undone->cnt);
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
    copies_.before_change();
    const platform::BusyPointer busy(desktop_);
    scheduler::reset_all(course_, clock_.now());
    statistics_.show_score();
    refresh_counts_or_withdraw(statistics_, display_);
    display_.refresh_figures();
}

} // namespace cuedrill::drill
