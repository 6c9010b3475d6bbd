#include "scheduler/selection.h"

#include "common/errors.h"
#include "scheduler/maturity.h"
#include "scheduler/next_due.h"

#include <cmath>
#include <optional>
#include <vector>

namespace cuedrill::scheduler {
namespace {

/// The most questions that are drawn from at random.
constexpr std::size_t most_candidates = 10000;

common::Int16 record_number(const platform::Value& cnt)
{
    return store::nz_int16(cnt, "record number");
}

} // namespace

Selection::Selection(store::Course& course, store::CourseParamsStore& params, const DeadTimes& dead_times,
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
        find_next_question(now);
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
    std::optional<NextDue> due;
    {
        const platform::BusyPointer busy(m_services.desktop);
        due = find_next_due(m_course, m_dead_times, now);
    }
    if (!due)
        return;
    // The search passes over nothing else that is due.
    due->was_just_shown = searched_at && due->at <= *searched_at;
    m_services.status.ShowStatus(next_due_text(*due, now), 0);
}

void Selection::find_next_question(common::DateTime now)
{
    const platform::BusyPointer busy(m_services.desktop);
    for (int level = m_course.params.target_level - 1; level >= 0; --level) {
        const auto level16 = static_cast<common::Int16>(level);
        // At level 0 those that were tested and failed come before those that were never tested.
        if (level == 0 && select_other(level16, true, now))
            return;
        if (select_other(level16, false, now))
            return;
    }
}

/// Whether the question found at the level is another one than the last. Otherwise there is no current record: the same
/// question may come again later.
bool Selection::select_other(common::Int16 level, bool tested_only, common::DateTime now)
{
    if (select_mature(level, tested_only, now) && m_course.current_cnt != m_course.previous_cnt)
        return true;
    m_course.current_cnt = 0;
    return false;
}

bool Selection::select_mature(common::Int16 level, bool tested_only, common::DateTime now)
{
    const auto rows =
        m_course.database().open_recordset(mature_query(m_course.Q_FIELD, m_dead_times, level, tested_only, now));
    if (rows->bof() && rows->eof())
        return false;
    m_course.current_cnt = m_course.params.random_mode ? draw(*rows) : record_number(rows->field("cnt"));
    return true;
}

common::Int16 Selection::draw(platform::Recordset& rows)
{
    std::vector<platform::Value> candidates;
    for (; !rows.eof(); rows.move_next()) {
        if (candidates.size() == most_candidates)
            throw common::OutOfRangeError("Subscript out of range: more than 10000 mature questions of one level "
                                          "cannot be drawn from at random.");
        candidates.push_back(rows.field("cnt"));
    }
    const double position = std::floor(m_services.random.uniform() * static_cast<double>(candidates.size()));
    // A number beyond 16 bits is an error only when it is the one that is drawn.
    return record_number(candidates.at(static_cast<std::size_t>(position)));
}

std::int64_t Selection::count_mature()
{
    const platform::BusyPointer busy(m_services.desktop);
    return store::single_number(m_course.database(),
                                all_mature_query(m_course.Q_FIELD, m_dead_times, m_course.params.target_level,
                                                 MatureResult::count, m_services.clock.now()));
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
    m_services.desktop.message_box({.text = "Number of mature questions: " + std::to_string(count_mature())});
}

} // namespace cuedrill::scheduler
