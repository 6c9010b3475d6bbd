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
    TableCursor& qa_recordset = m_course.qa_recordset();
    qa_recordset.seek(as_value(m_course.current_cnt));
    return !qa_recordset.no_match();
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
    platform::Transaction transaction(m_course.database());
    if (!seek_current()) {
        transaction.commit();
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
    transaction.commit();

    m_course.params = params;
    tell_success(old_score, new_score, elapsed);
    after_verdict(old_score, new_score);
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
    platform::Transaction transaction(m_course.database());
    seek_current();
    qa_recordset.edit();
    const common::Int16 old_score = store::nz_int16(qa_recordset.field(asked.successes), "level");
    const store::CourseParams params = with_score(old_score > 0 ? -1 : 0);

    qa_recordset.set(asked.successes, as_value(0));
    count_up(qa_recordset, asked.fails, "number of failures");
    stamp_test(qa_recordset, asked, now);
    count_up(qa_recordset, asked.attempts, "number of attempts");
    qa_recordset.update();
    m_params.save_counters(params, now);
    transaction.commit();

    m_course.params = params;
    after_verdict(old_score, 0);
}

void Scoring::after_verdict(common::Int16 old_score, common::Int16 new_score)
{
    m_last_verdict = LastVerdict{.cnt = m_course.current_cnt, .old_score = old_score};
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
    platform::Transaction transaction(m_course.database());
    if (!seek_current())
        return;
    TableCursor& qa_recordset = m_course.qa_recordset();
    qa_recordset.edit();
    qa_recordset.set(m_course.Q_FIELD.date_last_show, m_clock.now().day_number());
    qa_recordset.update();
    transaction.commit();
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
    } catch (const common::Error& error) {
        m_desktop.message_box({.text = failure + "\r\n\r\n" + error.what(), .icon = platform::BoxIcon::exclamation});
    }
}

void Scoring::restore_level(const LastVerdict& verdict)
{
    TableCursor& qa_recordset = m_course.qa_recordset();
    platform::Transaction transaction(m_course.database());
    qa_recordset.seek(as_value(verdict.cnt));
    qa_recordset.edit();
    qa_recordset.set(m_course.Q_FIELD.successes, as_value(verdict.old_score));
    qa_recordset.update();
    transaction.commit();
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
    store::CourseParams params = m_course.params;
    params.time_today = params.time_ever = 0;
    params.score_today = 0;
    {
        const platform::BusyPointer busy(m_desktop);
        platform::Transaction transaction(m_course.database());
        m_course.database().execute(
            "Update qa set q_attempts=0, a_attempts=0, q_fails=0, a_fails=0, q_successes=0, a_successes=0,"
            "q_date_last_test=null, a_date_last_test=null,q_date_last_show=null, a_date_last_show=null");
        m_params.save_counters(params, m_clock.now());
        transaction.commit();
    }
    forget_last_verdict();
    m_course.params = params;
    m_views.panels.show_score(0);
    refresh_counts();
    m_views.display.refresh_figures();
}

void Scoring::forget_last_verdict_on(common::Int16 cnt)
{
    if (m_last_verdict && m_last_verdict->cnt == cnt)
        forget_last_verdict();
}

} // namespace cuedrill::scheduler
