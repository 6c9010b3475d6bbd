#include "scheduler/verdict.h"

#include "common/number_format.h"
#include "store/course_params.h"
#include "store/course_transaction.h"
#include "store/records.h"

#include <algorithm>

namespace cuedrill::scheduler {
namespace {

using common::Int16;
using store::Course;

/// A question that was never tested counts as tested so many days ago: a first success leads to level 3.
constexpr double elapsed_of_untested = 0.4;

/// Clamps the level, because courses made elsewhere may hold any number.
std::string shown_level(Int16 level)
{
    return std::to_string(std::clamp<int>(level, 0, highest_level));
}

/// A stored counter plus one.
Int16 counted_up(std::int64_t count, const char* what)
{
    return common::to_int16(std::int64_t{common::to_int16(count, what)} + 1, what);
}

double elapsed_since_test(const std::optional<common::DateTime>& tested, common::DateTime now)
{
    return tested ? std::max(common::days_between(*tested, now), 0.0) : elapsed_of_untested;
}

/// The asked side of the record as the course holds it now; nothing when there is no such record.
std::optional<store::RecordSide> asked_side(Course& course, Int16 cnt)
{
    const auto record = store::find_record(course.database(), cnt);
    return record ? std::optional(store::side_of(*record, course.Q_FIELD)) : std::nullopt;
}

/// The day's score changes by a point at most.
Int16 score_after(const Verdict& verdict, bool known, Int16 score_today)
{
    const int change = known ? (verdict.new_level > 1 ? 1 : 0) : (verdict.old_level > 0 ? -1 : 0);
    return common::to_int16(std::int64_t{score_today} + change, "score of the day");
}

/// Whether every record is as a reset leaves it.
bool nothing_tested(Course& course)
{
    return store::single_number(course.database(),
                                "Select count(0) from qa where q_attempts<>0 or a_attempts<>0 or q_fails<>0 or "
                                "a_fails<>0 or q_successes<>0 or a_successes<>0 or q_date_last_test is not null or "
                                "a_date_last_test is not null or q_date_last_show is not null or "
                                "a_date_last_show is not null") == 0;
}

} // namespace

Verdict judge(Course& course, const DeadTimes& dead_times, Int16 cnt, bool known, common::DateTime now, JudgedBy by)
{
    store::CourseTransaction transaction(course);
    const auto before = asked_side(course, cnt);
    if (!before)
        throw store::RecordGone();
    Verdict verdict;
    verdict.cnt = cnt;
    verdict.elapsed = elapsed_since_test(before->date_last_test, now);
    verdict.old_level = common::to_int16(before->successes, "level");
    if (known)
        verdict.new_level = std::max(verdict.old_level, static_cast<Int16>(dead_times.proven_level(verdict.elapsed)));
    store::StoredVerdict stored{.successes = verdict.new_level, .attempts = 0, .fails = {}, .tested = now};
    if (!known)
        stored.fails = counted_up(before->fails, "number of failures");
    stored.attempts = counted_up(before->attempts, "number of attempts");
    verdict.score_today = score_after(verdict, known, course.params.score_today);

    if (store::store_verdict(course.database(), cnt, course.Q_FIELD, stored) == 0)
        throw store::RecordGone();
    store::CourseParams counters = course.params;
    counters.score_today = verdict.score_today;
    store::write_counters(course, counters, now);
    const store::StoredChange change{.what = store::StoredChange::What::verdict,
                                     .cnt = cnt,
                                     .judgement = store::StoredJudgement{.known = known,
                                                                         .typed = by == JudgedBy::program,
                                                                         .level_before = verdict.old_level,
                                                                         .level_after = verdict.new_level,
                                                                         .elapsed = verdict.elapsed,
                                                                         .when = now}};
    const auto take_over = [&course, verdict, change] {
        course.params.score_today = verdict.score_today;
        course.last_verdict =
            store::LastVerdict{.cnt = verdict.cnt, .old_level = verdict.old_level, .new_level = verdict.new_level};
        course.tell_stored(change);
    };
    const auto is_stored = [&course, cnt, stored] {
        const auto side = asked_side(course, cnt);
        return side && side->attempts == stored.attempts && side->date_last_test == stored.tested;
    };
    transaction.commit({.is_stored = is_stored, .when_stored_after_all = take_over});
    take_over();
    return verdict;
}

std::string success_text(const Verdict& verdict)
{
    if (verdict.new_level <= verdict.old_level)
        return "score of previous question not increased due to precocity of question";
    return "score of previous question increased from " + shown_level(verdict.old_level) + " to " +
           shown_level(verdict.new_level) + " (elapsed " + common::format_fixed(verdict.elapsed, 2) + " days)";
}

std::optional<store::LastVerdict> undo_last_verdict(Course& course)
{
    // Beginning the transaction settles a change of unknown outcome, which may have been a verdict or an undo. Only
    // then is it known which verdict was the last.
    if (!course.last_verdict && !course.unsettled)
        return std::nullopt;
    store::CourseTransaction transaction(course);
    const std::optional<store::LastVerdict> verdict = course.last_verdict;
    if (!verdict)
        return verdict;
    if (store::set_level(course.database(), verdict->cnt, course.Q_FIELD, verdict->old_level) == 0)
        throw store::RecordGone();
    const auto tell = [&course, verdict = *verdict] {
        course.tell_stored(
            {.what = store::StoredChange::What::undone,
             .cnt = verdict.cnt,
             .judgement = store::StoredJudgement{.level_before = verdict.new_level, .level_after = verdict.old_level}});
    };
    transaction.commit({.is_stored =
                            [&course, verdict = *verdict] {
                                const auto side = asked_side(course, verdict.cnt);
                                return side && side->successes == verdict.old_level;
                            },
                        .when_stored_after_all = tell});
    tell();
    return verdict;
}

void reset_all(Course& course, common::DateTime now)
{
    store::CourseTransaction transaction(course);
    store::CourseParams counters = course.params;
    counters.time_today = counters.time_ever = 0;
    counters.score_today = 0;
    course.database().execute(
        "Update qa set q_attempts=0, a_attempts=0, q_fails=0, a_fails=0, q_successes=0, a_successes=0,"
        "q_date_last_test=null, a_date_last_test=null,q_date_last_show=null, a_date_last_show=null");
    store::write_counters(course, counters, now);
    const auto take_over = [&course] {
        course.params.time_today = course.params.time_ever = 0;
        course.params.score_today = 0;
        course.last_verdict.reset();
        course.tell_stored({.what = store::StoredChange::What::reset, .records = course.record_count});
    };
    transaction.commit(
        {.is_stored = [&course, counters,
                       now] { return nothing_tested(course) && store::holds_counters(course, counters, now); },
         .when_stored_after_all = take_over});
    take_over();
}

void stamp_last_show(Course& course, Int16 cnt, common::DateTime now)
{
    store::CourseTransaction transaction(course);
    if (store::stamp_last_show(course.database(), cnt, course.Q_FIELD, now) == 0)
        return;
    transaction.commit({.is_stored = [&course, cnt, now] {
        const auto side = asked_side(course, cnt);
        return side && side->date_last_show == now;
    }});
}

} // namespace cuedrill::scheduler
