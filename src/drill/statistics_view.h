#pragma once

#include "drill/command_controls.h"
#include "drill/displays.h"
#include "platform/form1.h"
#include "store/course.h"

namespace cuedrill::drill {

/// The statistics in the main window, and what else tells the figures and options of the course.
class StatisticsView : public StatisticsPanels {
public:
    StatisticsView(platform::Form1& form1, CommandControls& commands, const store::Course& course)
        : form1_(form1), commands_(commands), course_(course)
    {
    }

    /// Gives every label its fixed text.
    void set_captions();

    /// Shows the options, the target level and the score of a course that has just been opened; no level is marked.
    void show_course();

    void show_total(std::int64_t records) override;
    void show_level(int level, std::int64_t records, std::int64_t share_of, bool is_target) override;
    void show_unpassed(std::int64_t records) override;
    void mark_level(int level) override;
    void show_score(common::Int16 score) override;
    void show_work_time(std::string_view open_time, std::string_view today, std::string_view ever) override;
    void show_options() override;
    void show_target_level() override;

private:
    void show_unpassed_caption();

    platform::Form1& form1_;
    CommandControls& commands_;
    const store::Course& course_;
};

} // namespace cuedrill::drill
