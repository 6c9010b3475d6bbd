#include "scheduler/scoring.h"

#include "common/errors.h"
#include "common/number_format.h"

#include <algorithm>
#include <string>

namespace cuedrill::scheduler {
namespace {

/// A question that was never tested counts as tested so many days ago: a first success leads to level 3.
constexpr double elapsed_of_untested = 0.4;

constexpr int status_seconds = 5;
constexpr int last_panel = 5;

/// Levels of courses made elsewhere are shown inside their range.
std::string shown_level(common::Int16 level)
{
    return std::to_string(std::clamp<int>(level, 0, highest_level));
}

/// A stored counter with one more.
common::Int16 counted_up(std::int64_t count, const char* what)
{
    return common::to_int16(std::int64_t{common::to_int16(count, what)} + 1, what);
}

double elapsed_since_test(const std::optional<common::DateTime>& tested, common::DateTime now)
{
    return tested ? std::max(common::days_between(*tested, now), 0.0) : elapsed_of_untested;
}

} // namespace

Scoring::Scoring(store::Course& course, store::CourseParamsStore& params, const DeadTimes& dead_times,
                 Statistics& statistics, const Views& views, platform::Clock& clock, platform::Desktop& desktop,
                 EndOfProgram& end_of_program)
    : m_course(course), m_params(params), m_dead_times(dead_times), m_statistics(statistics), m_views(views),
      m_clock(clock), m_desktop(desktop), m_end_of_program(end_of_program)
{
}

/// The asked side of the record as the course holds it now; nothing when there is no such record.
std::optional<store::RecordSide> Scoring::asked_side(common::Int16 cnt) const
{
    const auto record = store::find_record(m_course.database(), cnt);
    return record ? std::optional(store::side_of(*record, m_course.Q_FIELD)) : std::nullopt;
}

/// The parameters with the day's score changed.
store::CourseParams Scoring::with_score(int change) const
{
    store::CourseParams params = m_course.params;
    params.score_today = common::to_int16(std::int64_t{params.score_today} + change, "score of the day");
    return params;
}

void Scoring::set_success()
{
    const common::DateTime now = m_clock.now();
    std::optional<platform::BusyPointer> busy(m_desktop);
    store::CourseTransaction transaction(m_course);
    const auto before = asked_side(m_course.current_cnt);
    if (!before) {
        transaction.undo();
        busy.reset();
        m_desktop.message_box({.text = "nomatch in set_success"});
        m_end_of_program.end_program();
    }
    const double elapsed = elapsed_since_test(before->date_last_test, now);
    const common::Int16 old_score = common::to_int16(before->successes, "level");
    const common::Int16 new_score = std::max(old_score, static_cast<common::Int16>(m_dead_times.proven_level(elapsed)));
    store_verdict(transaction, {.cnt = m_course.current_cnt, .old_score = old_score}, with_score(new_score > 1 ? 1 : 0),
                  {.successes = new_score,
                   .attempts = counted_up(before->attempts, "number of attempts"),
                   .fails = {},
                   .tested = now});
    tell_success(old_score, new_score, elapsed);
    after_verdict(new_score);
    busy.reset();
    m_statistics.announce_passed(m_statistics.passed_after_success());
}

void Scoring::tell_success(common::Int16 old_score, common::Int16 new_score, double elapsed)
{
    const std::string text =
        new_score > old_score ? "score of previous question increased from " + shown_level(old_score) + " to " +
                                    shown_level(new_score) + " (elapsed " + common::format_fixed(elapsed, 2) + " days)"
                              : "score of previous question not increased due to precocity of question";
    m_views.status.ShowStatus(text, status_seconds);
}

void Scoring::set_failure()
{
    m_views.status.ShowStatus("", 0);
    const platform::BusyPointer busy(m_desktop);
    const common::DateTime now = m_clock.now();
    store::CourseTransaction transaction(m_course);
    const auto before = asked_side(m_course.current_cnt);
    if (!before) {
        transaction.undo();
        m_views.display.withdraw_question();
        m_course.record_count = m_course.count_records();
        refresh_counts();
        throw store::RecordGone();
    }
    const common::Int16 old_score = common::to_int16(before->successes, "level");
    const common::Int16 fails = counted_up(before->fails, "number of failures");
    store_verdict(transaction, {.cnt = m_course.current_cnt, .old_score = old_score},
                  with_score(old_score > 0 ? -1 : 0),
                  {.successes = 0,
                   .attempts = counted_up(before->attempts, "number of attempts"),
                   .fails = fails,
                   .tested = now});
    after_verdict(0);
}

/// Stores what the verdict leaves on the record and the counters of the day, ends the transaction, and takes it into
/// memory.
void Scoring::store_verdict(store::CourseTransaction& transaction, const LastVerdict& verdict,
                            const store::CourseParams& params, const store::StoredVerdict& stored)
{
    if (store::store_verdict(m_course.database(), verdict.cnt, m_course.Q_FIELD, stored) == 0)
        throw store::RecordGone();
    m_params.save_counters(params, stored.tested);
    const auto take_over = [this, verdict, score = params.score_today] {
        m_course.params.score_today = score;
        m_last_verdict = verdict;
    };
    const auto is_stored = [this, cnt = verdict.cnt, stored] {
        const auto side = asked_side(cnt);
        return side && side->attempts == stored.attempts && side->date_last_test == stored.tested;
    };
    try {
        transaction.commit({.is_stored = is_stored, .when_stored_after_all = take_over});
    } catch (const store::OutcomeUnknown&) {
        // It may have had its verdict, so it must not be given one again.
        m_views.display.withdraw_question();
        throw;
    }
    take_over();
}

void Scoring::after_verdict(common::Int16 new_score)
{
    m_views.panels.show_score(m_course.params.score_today);
    m_views.panels.mark_level(std::min<int>(new_score, last_panel));
    refresh_counts();
}

void Scoring::refresh_counts()
{
    try {
        m_statistics.refresh_counts();
    } catch (...) {
        // The change is stored. What stands in the boxes must not be given a verdict that belongs to another moment, or
        // to another record.
        m_views.display.withdraw_question();
        throw;
    }
}

void Scoring::StampLastShow()
{
    if (m_course.current_cnt == 0)
        return;
    const platform::BusyPointer busy(m_desktop);
    store::CourseTransaction transaction(m_course);
    const common::Int16 cnt = m_course.current_cnt;
    const common::DateTime now = m_clock.now();
    if (store::stamp_last_show(m_course.database(), cnt, m_course.Q_FIELD, now) == 0)
        return;
    transaction.commit({.is_stored = [this, cnt, now] {
        const auto side = asked_side(cnt);
        return side && side->date_last_show == now;
    }});
}

void Scoring::m_undo()
{
    if (!m_last_verdict)
        return;
    std::string failure = "The last result cannot be undone.";
    try {
        const platform::BusyPointer busy(m_desktop);
        restore_level(*m_last_verdict);
        failure = "The last result is undone, but the question cannot be shown.";
        m_course.current_cnt = m_last_verdict->cnt;
        refresh_counts();
        m_views.display.show_question();
    } catch (const store::OutcomeUnknown& error) {
        m_desktop.message_box({.text = error.what(), .icon = platform::BoxIcon::exclamation});
    } catch (const common::Error& error) {
        m_desktop.message_box({.text = failure + "\r\n\r\n" + error.what(), .icon = platform::BoxIcon::exclamation});
    }
}

void Scoring::restore_level(const LastVerdict& verdict)
{
    store::CourseTransaction transaction(m_course);
    if (store::set_level(m_course.database(), verdict.cnt, m_course.Q_FIELD, verdict.old_score) == 0)
        throw store::RecordGone();
    transaction.commit({.is_stored = [this, verdict] {
        const auto side = asked_side(verdict.cnt);
        return side && side->successes == verdict.old_score;
    }});
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
    reset_all();
    m_views.panels.show_score(0);
    refresh_counts();
    m_views.display.refresh_figures();
}

void Scoring::reset_all()
{
    const platform::BusyPointer busy(m_desktop);
    const common::DateTime now = m_clock.now();
    store::CourseTransaction transaction(m_course);
    store::CourseParams params = m_course.params;
    params.time_today = params.time_ever = 0;
    params.score_today = 0;
    m_course.database().execute(
        "Update qa set q_attempts=0, a_attempts=0, q_fails=0, a_fails=0, q_successes=0, a_successes=0,"
        "q_date_last_test=null, a_date_last_test=null,q_date_last_show=null, a_date_last_show=null");
    m_params.save_counters(params, now);
    const auto take_over = [this] {
        m_course.params.time_today = m_course.params.time_ever = 0;
        m_course.params.score_today = 0;
        forget_last_verdict();
    };
    transaction.commit(
        {.is_stored = [this, params, now] { return nothing_tested() && m_params.holds_counters(params, now); },
         .when_stored_after_all = take_over});
    take_over();
}

/// Whether every record is as a reset leaves it.
bool Scoring::nothing_tested()
{
    return store::single_number(m_course.database(),
                                "Select count(0) from qa where q_attempts<>0 or a_attempts<>0 or q_fails<>0 or "
                                "a_fails<>0 or q_successes<>0 or a_successes<>0 or q_date_last_test is not null or "
                                "a_date_last_test is not null or q_date_last_show is not null or "
                                "a_date_last_show is not null") == 0;
}

void Scoring::forget_last_verdict_on(common::Int16 cnt)
{
    if (m_last_verdict && m_last_verdict->cnt == cnt)
        forget_last_verdict();
}

} // namespace cuedrill::scheduler
