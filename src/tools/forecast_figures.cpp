#include "tools/forecast_figures.h"

#include "common/number_format.h"
#include "tools/json.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace cuedrill::tools {

std::string iso_date(common::DateTime day)
{
    const common::CalendarFields fields = day.fields();
    return common::format_padded(fields.year, 4) + "-" + common::format_padded(fields.month, 2) + "-" +
           common::format_padded(fields.day, 2);
}

std::string forecast_json(const scheduler::Forecast& forecast, common::DateTime now)
{
    std::vector<std::string> days;
    for (std::size_t day = 0; day < forecast.days.size(); ++day)
        days.push_back(json_object({{"date", json_text(iso_date(now.plus_days(static_cast<double>(day) + 1)))},
                                    {"due", std::to_string(forecast.days[day])}}));
    return json_object({{"due_now", std::to_string(forecast.due_now())},
                        {"overdue", std::to_string(forecast.overdue)},
                        {"later_today", std::to_string(forecast.later)},
                        {"new", std::to_string(forecast.never_tested)},
                        {"days", json_list(days)},
                        {"after_that", std::to_string(forecast.afterwards)},
                        {"passed", std::to_string(forecast.passed)}});
}

std::string levels_json(const scheduler::LevelNumbers& levels)
{
    std::vector<std::string> values;
    for (const std::int64_t count : levels)
        values.push_back(std::to_string(count));
    return json_list(values);
}

} // namespace cuedrill::tools
