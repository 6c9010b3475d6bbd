#pragma once

#include "common/date_time.h"
#include "common/int16.h"
#include "scheduler/counts.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace cuedrill::keep {

/// What a line of a history is about.
enum class HistoryKind {
    opened, ///< the course is opened and its window painted
    closed,
    verdict,
    undone, ///< the level before the last verdict is restored
    reset,  ///< all levels and counters
    added,
    imported,
    changed, ///< texts; the record's levels are 0 then
    deleted
};

/// A line of a history. What a kind has not is absent.
struct HistoryEvent {
    common::DateTime time{};
    HistoryKind kind = HistoryKind::opened;
    std::optional<common::Int16> record{};       ///< its number; the last one of several that were imported
    bool inverted = false;                       ///< the course asks `a`, not `q`
    std::optional<bool> known{};                 ///< of a verdict
    std::optional<bool> typed{};                 ///< of a verdict: the program has compared an answer
    std::optional<common::Int16> level_before{}; ///< of a verdict and of an undo
    std::optional<common::Int16> level_after{};
    std::optional<double> elapsed{};                 ///< of a verdict: days since the last test, with five decimals
    std::optional<std::int64_t> records{};           ///< how many were imported or reset, or are in the course
    common::Int16 score = 0;                         ///< of the day, after the event
    std::int64_t work_seconds = 0;                   ///< of the day, up to the event
    std::optional<scheduler::LevelsOfBoth> levels{}; ///< of an opening and a closing, if they could be counted

    friend bool operator==(const HistoryEvent&, const HistoryEvent&) = default;
};

/// The word for the kind in the column `event`.
[[nodiscard]] std::string_view word_of(HistoryKind kind);

/// The time as in the column `time`: 2026-11-22T15:45:10.
[[nodiscard]] std::string iso_time(common::DateTime time);

/// The first line of a history, without its line end: the names of the columns.
[[nodiscard]] const std::string& history_header();

/// The event as a line of CSV (RFC 4180), without its line end; docs/history-file.md describes the columns.
[[nodiscard]] std::string to_line(const HistoryEvent& event);

/// The event of a line; std::nullopt if the line was cut off, lacks what its kind must have, or is no such line at all.
[[nodiscard]] std::optional<HistoryEvent> from_line(std::string_view line);

} // namespace cuedrill::keep
