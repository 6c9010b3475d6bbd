#include "scheduler/scoring.h"

#include "common/errors.h"
#include "common/number_format.h"

#include <algorithm>
#include <string>

namespace cuedrill::scheduler {
namespace {

using platform::TableCursor;
using platform::Value;

/// A question that was never tested counts as tested so many days ago: a first success leads to level 3.
constexpr double elapsed_of_untested = 0.4;

constexpr int status_seconds = 5;
constexpr int last_panel = 5;

std::int64_t as_value(common::Int16 number)
{
    return number;
}

/// Levels of courses made elsewhere are shown inside their range.
std::string shown_level(common::Int16 level)
{
    return std::to_string(std::clamp<int>(level, 0, highest_level));
}

/// Adds one to a counter of the row in progress.
void count_up(TableCursor& qa_recordset, const std::string& column, const char* what)
{
    const common::Int16 count = store::nz_int16(qa_recordset.field(column), what);
    qa_recordset.set(column, as_value(common::to_int16(std::int64_t{count} + 1, what)));
}

bool is_row(TableCursor& qa_recordset, common::Int16 cnt)
{
    qa_recordset.seek(as_value(cnt));
    return !qa_recordset.no_match();
}

void stamp_test(TableCursor& qa_recordset, const store::SideFields& asked, common::DateTime now)
{
    qa_recordset.set(asked.date_last_test, now.day_number());
    qa_recordset.set(asked.date_last_show, now.day_number());
}

double elapsed_since_test(const Value& date_last_test, common::DateTime now)
{
    const auto tested = store::stored_date(date_last_test);
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

/// Finds the row of the current record; whether it exists.
bool Scoring::seek_current()
{
    return is_row(m_course.qa_recordset(), m_course.current_cnt);
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
    const store::SideFields& asked = m_course.Q_FIELD;
    TableCursor& qa_recordset = m_course.qa_recordset();
    std::optional<platform::BusyPointer> busy(m_desktop);
    store::CourseTransaction transaction(m_course);
    if (!seek_current()) {
        transaction.undo();
        busy.reset();
        m_desktop.message_box({.text = "nomatch in set_success"});
        m_end_of_program.end_program();
    }
    const double elapsed = elapsed_since_test(qa_recordset.field(asked.date_last_test), now);
    const common::Int16 old_score = store::nz_int16(qa_recordset.field(asked.successes), "level");
    const common::Int16 new_score = std::max(old_score, static_cast<common::Int16>(m_dead_times.proven_level(elapsed)));
    const store::CourseParams params = with_score(new_score > 1 ? 1 : 0);

    qa_recordset.edit();
    qa_recordset.set(asked.successes, as_value(new_score));
    count_up(qa_recordset, asked.attempts, "number of attempts");
    stamp_test(qa_recordset, asked, now);
    qa_recordset.update();
    m_params.save_counters(params, now);
    commit_verdict(transaction, {.cnt = m_course.current_cnt, .old_score = old_score}, params, now);
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
    const store::SideFields& asked = m_course.Q_FIELD;
    TableCursor& qa_recordset = m_course.qa_recordset();
    store::CourseTransaction transaction(m_course);
    if (!seek_current()) {
        transaction.undo();
        m_views.display.withdraw_question();
        m_course.record_count = m_course.count_records();
        refresh_counts();
        throw store::RecordGone();
    }
    qa_recordset.edit();
    const common::Int16 old_score = store::nz_int16(qa_recordset.field(asked.successes), "level");
    const store::CourseParams params = with_score(old_score > 0 ? -1 : 0);

    qa_recordset.set(asked.successes, as_value(0));
    count_up(qa_recordset, asked.fails, "number of failures");
    stamp_test(qa_recordset, asked, now);
    count_up(qa_recordset, asked.attempts, "number of attempts");
    qa_recordset.update();
    m_params.save_counters(params, now);
    commit_verdict(transaction, {.cnt = m_course.current_cnt, .old_score = old_score}, params, now);
    after_verdict(0);
}

/// Stores the verdict that was written into the current row at `now`, then takes it into memory.
void Scoring::commit_verdict(store::CourseTransaction& transaction, const LastVerdict& verdict,
                             const store::CourseParams& params, common::DateTime now)
{
    const store::SideFields& asked = m_course.Q_FIELD;
    const auto take_over = [this, verdict, score = params.score_today] {
        m_course.params.score_today = score;
        m_last_verdict = verdict;
    };
    const auto is_stored = [this, cnt = verdict.cnt, attempts_column = asked.attempts,
                            date_column = asked.date_last_test,
                            attempts = store::nz(m_course.qa_recordset().field(asked.attempts)), now] {
        const TableCursor& row = m_course.qa_recordset();
        return is_row(m_course.qa_recordset(), cnt) && store::nz(row.field(attempts_column)) == attempts &&
               store::stored_date(row.field(date_column)) == now;
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
    if (!seek_current())
        return;
    TableCursor& qa_recordset = m_course.qa_recordset();
    const common::DateTime now = m_clock.now();
    const std::string column = m_course.Q_FIELD.date_last_show;
    qa_recordset.edit();
    qa_recordset.set(column, now.day_number());
    qa_recordset.update();
    transaction.commit({.is_stored = [this, cnt = m_course.current_cnt, column, now] {
        return is_row(m_course.qa_recordset(), cnt) && store::stored_date(m_course.qa_recordset().field(column)) == now;
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
    TableCursor& qa_recordset = m_course.qa_recordset();
    store::CourseTransaction transaction(m_course);
    m_course.seek_record(verdict.cnt);
    const std::string column = m_course.Q_FIELD.successes;
    qa_recordset.edit();
    qa_recordset.set(column, as_value(verdict.old_score));
    qa_recordset.update();
    transaction.commit({.is_stored = [this, verdict, column] {
        return is_row(m_course.qa_recordset(), verdict.cnt) &&
               store::nz(m_course.qa_recordset().field(column)) == verdict.old_score;
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
