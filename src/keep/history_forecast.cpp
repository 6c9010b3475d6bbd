#include "keep/history_forecast.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <set>
#include <utility>

namespace cuedrill::keep {
namespace {

/// A question: the number of its record, and whether its answer side is asked.
using Question = std::pair<common::Int16, bool>;

/// When each question of a course is due, as far as its history tells.
class DueMoments {
public:
    DueMoments(const scheduler::DeadTimes& dead_times, common::Int16 target_level)
        : dead_times_(dead_times), target_level_(target_level)
    {
    }

    void take(const HistoryEvent& event)
    {
        switch (event.kind) {
        case HistoryKind::verdict:
        case HistoryKind::undone:
            set(event);
            break;
        case HistoryKind::changed:
        case HistoryKind::deleted:
            for (const bool inverted : {false, true})
                due_.erase({event.record.value_or(0), inverted});
            break;
        case HistoryKind::reset:
            due_.clear();
            break;
        case HistoryKind::opened:
        case HistoryKind::closed:
        case HistoryKind::added:
        case HistoryKind::imported:
            break;
        }
    }

    /// The questions that are due before this moment.
    [[nodiscard]] std::set<Question> before(common::DateTime moment) const
    {
        std::set<Question> found;
        for (const auto& [question, due] : due_) {
            if (due < moment)
                found.insert(question);
        }
        return found;
    }

private:
    void set(const HistoryEvent& event)
    {
        const Question question{event.record.value_or(0), event.inverted};
        const common::Int16 level = event.level_after.value_or(0);
        if (level < 0 || level >= target_level_)
            due_.erase(question);
        else
            due_.insert_or_assign(question, event.time.plus_days(dead_times_.dead_time(level)));
    }

    const scheduler::DeadTimes& dead_times_;
    common::Int16 target_level_;
    std::map<Question, common::DateTime> due_;
};

std::int64_t asked_among(const std::set<Question>& expected, const std::vector<HistoryEvent>& of_day)
{
    std::set<Question> asked;
    for (const HistoryEvent& event : of_day) {
        const Question question{event.record.value_or(0), event.inverted};
        if (event.kind == HistoryKind::verdict && expected.contains(question))
            asked.insert(question);
    }
    return static_cast<std::int64_t>(asked.size());
}

} // namespace

std::vector<ForecastOfDay> forecast_by_day(std::span<const HistoryEvent> events, const scheduler::DeadTimes& dead_times,
                                           common::Int16 target_level, common::DateTime today, int days)
{
    std::vector<ForecastOfDay> forecast;
    if (events.empty())
        return forecast;
    // Lines of two programs, or of a clock that was put back, may not be in order.
    std::map<common::DateTime, std::vector<HistoryEvent>> by_day;
    for (const HistoryEvent& event : events)
        by_day[event.time.date_only()].push_back(event);
    DueMoments due(dead_times, target_level);
    common::DateTime day = std::max(by_day.begin()->first, today.date_only().plus_days(1.0 - days));
    for (const auto& [earlier, of_day] : by_day) {
        if (earlier < day)
            std::for_each(of_day.begin(), of_day.end(), [&](const HistoryEvent& event) { due.take(event); });
    }
    for (; day <= today.date_only(); day = day.plus_days(1)) {
        const std::set<Question> expected = due.before(day.plus_days(1));
        const std::vector<HistoryEvent>& of_day = by_day[day];
        forecast.push_back({.day = day,
                            .expected = static_cast<std::int64_t>(expected.size()),
                            .asked = asked_among(expected, of_day)});
        std::for_each(of_day.begin(), of_day.end(), [&](const HistoryEvent& event) { due.take(event); });
    }
    return forecast;
}

} // namespace cuedrill::keep
