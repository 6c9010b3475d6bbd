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
        {m_form1.lab_total, m_form1.panel_total, "Total"},
        {m_form1.lab_score, m_form1.Panel_score, "Score today"},
        {m_form1.lab_open_time, m_form1.panel_open_time, "Open time"},
        {m_form1.lab_time_today, m_form1.panel_time_today, "Time today"},
        {m_form1.lab_time_ever, m_form1.panel_time_ever, "Time ever"},
        {m_form1.lab_time_now, m_form1.Panel_time_now, "Time now"},
    };
    for (const auto& figure : figures) {
        figure.caption.set_caption(figure.text);
        figure.value.set_description(figure.text);
    }
    m_form1.panel_nr_unpassed.set_description("Unpassed");
}

void StatisticsView::show_course()
{
    show_options();
    m_commands.entry(Command::change_target)
        .set_caption("Change &target level  (now " + std::to_string(m_course.params.target_level) + ")");
    show_unpassed_caption();
    show_score(m_course.params.score_today);
    for (platform::LevelPanel* panel : m_form1.panel_level)
        panel->set_marked(false);
}

void StatisticsView::show_total(std::int64_t records)
{
    m_form1.panel_total.set_caption(std::to_string(records));
}

void StatisticsView::show_level(int level, std::int64_t records, std::int64_t share_of, bool is_target)
{
    platform::LevelPanel& panel = *m_form1.panel_level.at(static_cast<std::size_t>(level));
    const std::string name = "Level " + std::to_string(level);
    // The target is told by a sign as well as by its colour.
    panel.set_caption(name + (level == level_panels - 1 ? "+" : "") + (is_target ? " \u25CE" : ""));
    panel.set_description(name);
    panel.set_count(records, share_of);
    panel.set_background(is_target ? std::optional(common::light_cyan) : std::nullopt);
}

void StatisticsView::show_unpassed(std::int64_t records)
{
    m_form1.panel_nr_unpassed.set_caption(std::to_string(records));
}

void StatisticsView::mark_level(int level)
{
    for (int other = 0; other < level_panels; ++other)
        m_form1.panel_level.at(static_cast<std::size_t>(other))->set_marked(other == level);
}

void StatisticsView::show_score(common::Int16 score)
{
    m_form1.Panel_score.set_caption(std::to_string(score));
}

void StatisticsView::show_work_time(std::string_view open_time, std::string_view today, std::string_view ever)
{
    m_form1.panel_open_time.set_caption(open_time);
    m_form1.panel_time_today.set_caption(today);
    m_form1.panel_time_ever.set_caption(ever);
}

void StatisticsView::show_options()
{
    m_commands.entry(Command::always_type).set_checked(m_course.params.always_type);
    m_commands.entry(Command::always_hint).set_checked(m_course.params.list_mode);
    m_commands.entry(Command::random_extraction).set_checked(m_course.params.random_mode);
    m_commands.entry(Command::invert).set_checked(m_course.params.invert);
}

void StatisticsView::show_target_level()
{
    m_commands.entry(Command::change_target)
        .set_caption("Change target level (now " + std::to_string(m_course.params.target_level) + ")");
    show_unpassed_caption();
}

void StatisticsView::show_unpassed_caption()
{
    m_form1.lab_nr_unpassed.set_caption("q. unpassed (level <" + std::to_string(m_course.params.target_level) + ")");
}

} // namespace cuedrill::drill
