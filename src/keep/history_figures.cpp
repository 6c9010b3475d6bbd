#include "keep/history_figures.h"

#include <cstddef>
#include <map>
#include <utility>

namespace cuedrill::keep {
namespace {

/// The values of a map in the order of its keys.
template <class Value>
std::vector<Value> values_of(const std::map<common::DateTime, Value>& by_day)
{
    std::vector<Value> values;
    for (const auto& [day, value] : by_day)
        values.push_back(value);
    return values;
}

} // namespace

std::optional<double> VerdictCount::share() const
{
    return verdicts == 0 ? std::nullopt : std::optional(static_cast<double>(known) / static_cast<double>(verdicts));
}

KnownByLevel known_by_level(std::span<const HistoryEvent> events)
{
    KnownByLevel counts;
    const auto count = [&counts](const HistoryEvent& verdict, int change) {
        const common::Int16 level = *verdict.level_before;
        if (level < 0 || level > scheduler::highest_level)
            return;
        VerdictCount& counted = (verdict.inverted ? counts.a : counts.q).at(static_cast<std::size_t>(level));
        counted.verdicts += change;
        counted.known += *verdict.known ? change : 0;
    };
    // The verdict that an undo takes back is the last one on the record, also where two windows write in turn.
    std::map<std::pair<common::Int16, bool>, const HistoryEvent*> last;
    for (const HistoryEvent& event : events) {
        if (event.kind == HistoryKind::verdict) {
            count(event, 1);
            last[{*event.record, event.inverted}] = &event;
        } else if (event.kind == HistoryKind::undone) {
            const auto verdict = last.find({*event.record, event.inverted});
            if (verdict == last.end())
                continue;
            count(*verdict->second, -1);
            last.erase(verdict);
        }
    }
    return counts;
}

std::vector<WorkOfDay> work_by_day(std::span<const HistoryEvent> events, common::DateTime today)
{
    const common::DateTime last = today.date_only();
    const common::DateTime first = last.plus_days(1 - days_of_work);
    std::map<common::DateTime, WorkOfDay> by_day;
    for (const HistoryEvent& event : events) {
        const common::DateTime day = event.time.date_only();
        if (day >= first && day <= last)
            by_day[day] = {.day = day, .score = event.score, .work_seconds = event.work_seconds};
    }
    return values_of(by_day);
}

std::vector<LevelsOfDay> levels_by_day(std::span<const HistoryEvent> events)
{
    std::map<common::DateTime, LevelsOfDay> by_day;
    for (const HistoryEvent& event : events) {
        const common::DateTime day = event.time.date_only();
        if (event.levels)
            by_day[day] = {.day = day, .levels = *event.levels};
    }
    return values_of(by_day);
}

} // namespace cuedrill::keep
