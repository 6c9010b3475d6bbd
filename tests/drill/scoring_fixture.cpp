#include "drill/scoring_fixture.h"

namespace cuedrill::drill {

ShownStatistics statistics_of(const platform::Screen& screen)
{
    const auto number = [](const std::string& text) { return text.empty() ? 0 : std::stoll(text); };
    ShownStatistics shown{.total = number(screen.panel_total.text),
                          .unpassed = number(screen.panel_nr_unpassed.text),
                          .open_time = screen.panel_open_time.text,
                          .today = screen.panel_time_today.text,
                          .ever = screen.panel_time_ever.text};
    if (!screen.Panel_score.text.empty())
        shown.score = std::stoi(screen.Panel_score.text);
    for (std::size_t level = 0; level < screen.panel_level.size(); ++level) {
        shown.counts.push_back(screen.panel_level[level].count);
        if (screen.panel_level[level].marked) {
            EXPECT_EQ(shown.marked, std::nullopt) << "only one is marked";
            shown.marked = static_cast<int>(level);
        }
    }
    return shown;
}

bool ScoringFixture::is_target(int level) const
{
    const platform::LevelLine& line = form1.screen.panel_level.at(static_cast<std::size_t>(level));
    const bool has_colour = line.background == common::light_cyan;
    EXPECT_EQ(line.caption.ends_with("\u25CE"), has_colour);
    return has_colour;
}

std::vector<std::string> ScoringFixture::status_texts() const
{
    const std::string beginning = "P_status.caption=";
    std::vector<std::string> texts;
    for (const std::string& entry : form1.journal) {
        if (entry.starts_with(beginning))
            texts.push_back(entry.substr(beginning.size()));
    }
    return texts;
}

void ScoringFixture::expect_status(const std::string& text, int seconds)
{
    EXPECT_EQ(form1.screen.P_status.text, text);
    clock.steady_seconds_more += seconds == 0 ? 3600 : seconds - 0.1;
    status.expire();
    EXPECT_EQ(form1.screen.P_status.text, text);
    if (seconds == 0)
        return;
    clock.steady_seconds_more += 0.2;
    status.expire();
    EXPECT_EQ(form1.screen.P_status.text, "");
}

} // namespace cuedrill::drill
