#include "keep/history_figures.h"

#include <gtest/gtest.h>
#include <optional>
#include <vector>

namespace cuedrill::keep {
namespace {

common::DateTime on(int month, int day, int hour = 0)
{
    return common::DateTime::from_fields({.year = 2026, .month = month, .day = day, .hour = hour});
}

HistoryEvent verdict(common::Int16 record, common::Int16 level, bool known, bool inverted = false)
{
    return {.time = on(11, 22),
            .kind = HistoryKind::verdict,
            .record = record,
            .inverted = inverted,
            .known = known,
            .typed = false,
            .level_before = level,
            .level_after = 0,
            .elapsed = 1};
}

HistoryEvent undo(common::Int16 record, bool inverted = false)
{
    return {.time = on(11, 22),
            .kind = HistoryKind::undone,
            .record = record,
            .inverted = inverted,
            .level_before = 0,
            .level_after = 0};
}

HistoryEvent work(common::DateTime time, common::Int16 score, std::int64_t seconds,
                  HistoryKind kind = HistoryKind::closed)
{
    return {.time = time, .kind = kind, .score = score, .work_seconds = seconds};
}

HistoryEvent levels(common::DateTime time, std::int64_t at_level_0)
{
    HistoryEvent event{.time = time, .kind = HistoryKind::closed};
    event.levels = scheduler::LevelsOfBoth{.q = {at_level_0}};
    return event;
}

TEST(KnownShare, is_by_level_and_direction)
{
    const std::vector<HistoryEvent> events{verdict(1, 0, true), verdict(2, 0, false), verdict(3, 0, true),
                                           verdict(1, 10, true), verdict(1, 0, false, true)};
    const KnownByLevel known = known_by_level(events);
    EXPECT_EQ(known.q.at(0), (VerdictCount{.verdicts = 3, .known = 2}));
    EXPECT_EQ(known.q.at(10), (VerdictCount{.verdicts = 1, .known = 1}));
    EXPECT_EQ(known.a.at(0), (VerdictCount{.verdicts = 1, .known = 0}));
    EXPECT_EQ(known.q.at(1), VerdictCount{});
    EXPECT_EQ(known.q.at(10).share(), 1.0);
    EXPECT_EQ(known.a.at(0).share(), 0.0);
    EXPECT_EQ(known.q.at(1).share(), std::nullopt);
    EXPECT_DOUBLE_EQ(known.q.at(0).share().value_or(0), 2.0 / 3);
}

TEST(KnownShare, leaves_out_what_was_undone)
{
    const std::vector<HistoryEvent> events{
        verdict(1, 2, true),
        verdict(1, 3, false),
        verdict(2, 3, true),
        undo(1), // with a verdict on another record between them, from another window
        undo(1), // a second press of Undo restores the same level again
        verdict(1, 4, true, true),
        undo(1), // in the other direction
        undo(7)  // of a verdict that this file does not hold
    };
    const KnownByLevel known = known_by_level(events);
    EXPECT_EQ(known.q.at(2), (VerdictCount{.verdicts = 1, .known = 1}));
    EXPECT_EQ(known.q.at(3), (VerdictCount{.verdicts = 1, .known = 1}));
    EXPECT_EQ(known.a.at(4), (VerdictCount{.verdicts = 1, .known = 1}));
}

TEST(KnownShare, leaves_out_levels_that_are_none)
{
    const KnownByLevel known = known_by_level(std::vector{verdict(1, -1, true), verdict(2, 11, true), undo(1)});
    EXPECT_EQ(known.q, VerdictCounts{});
}

TEST(WorkOfDays, is_what_the_last_line_of_each_day_tells)
{
    const std::vector<HistoryEvent> events{work(on(11, 20, 8), 1, 60, HistoryKind::opened), work(on(11, 20, 9), 4, 900),
                                           work(on(11, 22, 8), 0, 0, HistoryKind::opened),
                                           // The program is still open, or was killed.
                                           work(on(11, 22, 9), -2, 30, HistoryKind::verdict)};
    EXPECT_EQ(work_by_day(events, on(11, 22, 23)),
              (std::vector<WorkOfDay>{{.day = on(11, 20), .score = 4, .work_seconds = 900},
                                      {.day = on(11, 22), .score = -2, .work_seconds = 30}}));
}

TEST(WorkOfDays, are_the_last_365)
{
    const common::DateTime today = on(11, 22, 12);
    const auto days_ago = [&today](double days) { return today.plus_days(-days); };
    const std::vector<HistoryEvent> events{work(days_ago(365), 1, 1), work(days_ago(364), 2, 2),
                                           work(days_ago(0), 3, 3), work(days_ago(-1), 4, 4)};
    EXPECT_EQ(work_by_day(events, today),
              (std::vector<WorkOfDay>{{.day = days_ago(364).date_only(), .score = 2, .work_seconds = 2},
                                      {.day = today.date_only(), .score = 3, .work_seconds = 3}}));
    EXPECT_TRUE(work_by_day({}, today).empty());
}

TEST(LevelsOfDays, are_those_of_the_last_line_of_each_day_that_tells_them)
{
    const std::vector<HistoryEvent> events{levels(on(11, 20, 8), 9), levels(on(11, 20, 9), 8),
                                           work(on(11, 20, 10), 1, 1), levels(on(11, 22, 1), 7)};
    const std::vector<LevelsOfDay> by_day = levels_by_day(events);
    ASSERT_EQ(by_day.size(), 2U);
    EXPECT_EQ(by_day.at(0).day, on(11, 20));
    EXPECT_EQ(by_day.at(0).levels.q.at(0), 8);
    EXPECT_EQ(by_day.at(1), (LevelsOfDay{.day = on(11, 22), .levels = *events.back().levels}));
}

} // namespace
} // namespace cuedrill::keep
