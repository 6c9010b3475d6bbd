#include "drill/level_commands.h"

#include "common/number_format.h"
#include "common/text.h"

#include <cmath>
#include <optional>
#include <string>

namespace cuedrill::drill {
namespace {

constexpr double minutes_per_day = 24 * 60;

std::string minutes(double days)
{
    return common::format_fixed(days * minutes_per_day, 1) + " minutes";
}

/// In minutes below half a day, otherwise in days.
std::string at_least(double days)
{
    return "At least " + (days < 0.5 ? minutes(days) : common::format_fixed(days, 1) + " days");
}

} // namespace

void LevelCommands::m_score_elapsed_table()
{
    std::string text;
    for (int level = 0; level < scheduler::DeadTimes::count; ++level) {
        text += at_least(dead_times_.dead_time(level)) + " must elapse to pass from level " + std::to_string(level) +
                " to " + std::to_string(level + 1);
        text += common::cr_lf;
    }
    text += "At least " + minutes(dead_times_.unanswered_dead_time()) +
            " must elapse to show the same question after an unanswered test";
    desktop_.message_box({.text = text});
}

void LevelCommands::m_change_target_level()
{
    std::optional<double> level;
    while (!level || *level < store::lowest_target_level || *level > store::highest_target_level) {
        const auto answer = desktop_.input_box(
            {.prompt = "New target level (1 to " + std::to_string(store::highest_target_level) + ")?",
             .title = "Changing target level",
             .default_text = std::to_string(course_.params.target_level)});
        const std::string typed(common::trim_blanks(answer.value_or(std::string())));
        if (typed.empty())
            return;
        level = common::parse_number(typed);
    }

    const common::Int16 target = common::to_int16(std::floor(*level), "target level");
    params_.change_params([target](store::CourseParams& params) { params.target_level = target; });
    options_.show_target_level();
    statistics_.refresh_counts();
}

} // namespace cuedrill::drill
