#pragma once

#include "common/int16.h"

#include <cstdint>
#include <string_view>

namespace cuedrill::drill {

/// Where a question is put on display.
class QuestionDisplay {
public:
    virtual ~QuestionDisplay() = default;

    /// Shows the question of the course's current record, without its answer.
    virtual void show_question() = 0;
    /// Shows the figures of the current record, if there is one, as they are now; its texts stay.
    virtual void refresh_figures() = 0;
    /// Forgets what was done about the answer of the present question, and leaves a list of records: the drill goes on.
    virtual void clear_answer_state() = 0;
    /// Empties the question and answer boxes. From now on there is no current record, and nothing that a verdict could
    /// be given on.
    virtual void withdraw_question() = 0;
};

/// The line at the bottom of the main window.
class StatusDisplay {
public:
    virtual ~StatusDisplay() = default;

    /// Shows `text` for `seconds` seconds; 0 is until the next text.
    virtual void ShowStatus(std::string_view text, int seconds) = 0;
};

/// The panels of the main window that show the figures of the course.
class StatisticsPanels {
public:
    virtual ~StatisticsPanels() = default;

    virtual void show_total(std::int64_t records) = 0;
    /// @param level 0 to 5; 5 stands for 5 or more.
    /// @param share_of the number of records that the panel's bar is a share of.
    virtual void show_level(int level, std::int64_t records, std::int64_t share_of, bool is_target) = 0;
    virtual void show_unpassed(std::int64_t records) = 0;
    /// Marks one level panel, 0 to 5, as the one that the last verdict led to, and no other.
    virtual void mark_level(int level) = 0;
    virtual void show_score(common::Int16 score) = 0;
    /// The three work times, as texts.
    virtual void show_work_time(std::string_view open_time, std::string_view today, std::string_view ever) = 0;
    /// Repaints the check marks of the course's options.
    virtual void show_options() = 0;
    /// Repaints the captions that name the target level, after it was changed.
    virtual void show_target_level() = 0;
};

} // namespace cuedrill::drill
