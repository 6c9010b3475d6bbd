#include "tools/statistics/course_statistics.h"

#include "common/errors.h"
#include "platform/system/system_directories.h"
#include "store/side_fields.h"

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <tuple>
#include <utility>

namespace cuedrill::tools {
namespace {

constexpr std::size_t most_hard_questions = 20;
constexpr int days_of_comparison = 60;

void add_failed(std::vector<HardQuestion>& failed, const store::QaRecord& record, bool inverted)
{
    const store::SideMapping sides = store::set_side_fields(inverted);
    const store::RecordSide side = store::side_of(record, sides.Q_FIELD);
    if (side.fails > 0)
        failed.push_back({.cnt = record.cnt,
                          .inverted = inverted,
                          .asked = side.text,
                          .answer = store::side_of(record, sides.A_FIELD).text,
                          .attempts = side.attempts,
                          .fails = side.fails,
                          .level = side.successes});
}

/// The questions that were failed most often; among equals, those with the least attempts come first.
std::vector<HardQuestion> hardest_of(platform::Database& database)
{
    std::vector<HardQuestion> failed;
    database.query("Select * from qa where q_fails > 0 or a_fails > 0", {}, [&](const platform::Row& row) {
        const store::QaRecord record = store::record_of(row);
        add_failed(failed, record, false);
        add_failed(failed, record, true);
        return true;
    });
    std::sort(failed.begin(), failed.end(), [](const HardQuestion& a, const HardQuestion& b) {
        return std::tuple(-a.fails, a.attempts, a.cnt, a.inverted) <
               std::tuple(-b.fails, b.attempts, b.cnt, b.inverted);
    });
    failed.resize(std::min(failed.size(), most_hard_questions));
    return failed;
}

std::optional<HistoryStatistics> history_of(OpenedCourse& opened, const Surroundings& around)
{
    if (around.data_folder.empty())
        return std::nullopt;
    const platform::system::SystemDirectories folders;
    const std::string path = keep::history_path(folders, around.data_folder, opened.course().db_path);
    if (!opened.files().exists(path))
        return std::nullopt;
    keep::History history;
    try {
        history = keep::read_history(opened.files(), path);
    } catch (const common::Error& error) {
        around.err << "The history of the course cannot be read. " << error.what() << '\n';
        return std::nullopt;
    }
    return HistoryStatistics{.known = keep::known_by_level(history.events),
                             .work = keep::work_by_day(history.events, opened.now()),
                             .levels = keep::levels_by_day(history.events),
                             .forecast = keep::forecast_by_day(history.events, opened.dead_times(),
                                                               opened.course().params.target_level, opened.now(),
                                                               days_of_comparison),
                             .unreadable = history.unreadable};
}

} // namespace

CourseStatistics statistics_of(OpenedCourse& opened, const Surroundings& around)
{
    store::Course& course = opened.course();
    const auto forecast_of = [&](bool invert) {
        return scheduler::forecast(course.database(), store::set_side_fields(invert).Q_FIELD, opened.dead_times(),
                                   course.params.target_level, opened.now(), forecast_days);
    };
    return {.title = course.params.course_title,
            .path = course.db_path,
            .now = opened.now(),
            .records = course.record_count,
            .target_level = course.params.target_level,
            .levels = scheduler::count_levels(course),
            .questions = forecast_of(false),
            .inverted = forecast_of(true),
            .hardest = hardest_of(course.database()),
            .history = history_of(opened, around)};
}

} // namespace cuedrill::tools
