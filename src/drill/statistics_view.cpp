#include "drill/statistics_view.h"

#include "common/colour.h"

#include <string>

namespace cuedrill::drill {

using platform::level_panels;

void StatisticsView::set_captions()
{
    const struct {
        platform::Label& caption;
        platform::Label& value;
        const char* text;
    } figures[] = {
        {form1_.lab_total, form1_.panel_total, "Total"},
        {form1_.lab_score, form1_.Panel_score, "Score today"},
        {form1_.lab_open_time, form1_.panel_open_time, "Open time"},
        {form1_.lab_time_today, form1_.panel_time_today, "Time today"},
        {form1_.lab_time_ever, form1_.panel_time_ever, "Time ever"},
        {form1_.lab_time_now, form1_.Panel_time_now, "Time now"},
    };
    for (const auto& figure : figures) {
        figure.caption.set_caption(figure.text);
        figure.value.set_description(figure.text);
    }
    form1_.panel_nr_unpassed.set_description("Unpassed");
}

void StatisticsView::show_course()
{
    show_options();
    commands_.entry(Command::change_target)
        .set_caption("Change &target level  (now " + std::to_string(course_.params.target_level) + ")");
    show_unpassed_caption();
    show_score(course_.params.score_today);
    for (platform::LevelPanel* panel : form1_.panel_level)
        panel->set_marked(false);
}

void StatisticsView::show_total(std::int64_t records)
{
    form1_.panel_total.set_caption(std::to_string(records));
}

void StatisticsView::show_level(int level, std::int64_t records, std::int64_t share_of, bool is_target)
{
    platform::LevelPanel& panel = *form1_.panel_level.at(static_cast<std::size_t>(level));
    const std::string name = "Level " + std::to_string(level);
    // The target is told by a sign as well as by its colour.
    panel.set_caption(name + (level == level_panels - 1 ? "+" : "") + (is_target ? " \u25CE" : ""));
    panel.set_description(name);
    panel.set_count(records, share_of);
    panel.set_background(is_target ? std::optional(common::light_cyan) : std::nullopt);
}

void StatisticsView::show_unpassed(std::int64_t records)
{
    form1_.panel_nr_unpassed.set_caption(std::to_string(records));
}

void StatisticsView::mark_level(int level)
{
    for (int other = 0; other < level_panels; ++other)
        form1_.panel_level.at(static_cast<std::size_t>(other))->set_marked(other == level);
}

void StatisticsView::show_score(common::Int16 score)
{
    form1_.Panel_score.set_caption(std::to_string(score));
}

void StatisticsView::show_work_time(std::string_view open_time, std::string_view today, std::string_view ever)
{
    form1_.panel_open_time.set_caption(open_time);
    form1_.panel_time_today.set_caption(today);
    form1_.panel_time_ever.set_caption(ever);
}

void StatisticsView::show_options()
{
    commands_.entry(Command::always_type).set_checked(course_.params.always_type);
    commands_.entry(Command::always_hint).set_checked(course_.params.list_mode);
    commands_.entry(Command::random_extraction).set_checked(course_.params.random_mode);
    commands_.entry(Command::invert).set_checked(course_.params.invert);
}

void StatisticsView::show_target_level()
{
    commands_.entry(Command::change_target)
        .set_caption("Change target level (now " + std::to_string(course_.params.target_level) + ")");
    show_unpassed_caption();
}

void StatisticsView::show_unpassed_caption()
{
    form1_.lab_nr_unpassed.set_caption("q. unpassed (level <" + std::to_string(course_.params.target_level) + ")");
}

} // namespace cuedrill::drill
