#include "common/int16.h"
#include "common/number_format.h"
#include "keep/copies.h"
#include "keep/copy_names.h"
#include "platform/system/system_directories.h"
#include "scheduler/counts.h"
#include "tools/forecast_figures.h"
#include "tools/json.h"
#include "tools/opened_course.h"
#include "tools/table.h"
#include "tools/verbs.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace cuedrill::tools {
namespace {

constexpr std::array<Option, 1> options{{{"--json", "", "Prints it in JSON."}}};

constexpr std::string_view help =
    "Prints the title, the number of records, how many are at each level in both directions, the work time and the "
    "score\n"
    "of the day, the options, the font, the numbers that are left, and the newest copy.\n";

using scheduler::LevelNumbers;

struct Info {
    std::string path;
    store::CourseParams params;
    bool inverted = false;
    std::int64_t records = 0;
    std::int64_t numbers_left = 0;
    scheduler::LevelsOfBoth levels;
    std::optional<keep::Copy> copy;
};

Info info_of(OpenedCourse& opened, const Surroundings& around)
{
    store::Course& course = opened.course();
    Info info;
    info.path = course.db_path;
    info.params = course.params;
    info.inverted = opened.inverted();
    info.records = course.record_count;
    info.numbers_left = std::max<std::int64_t>(0, common::max_int16 + 1 - store::next_cnt(course.database()));
    info.levels = scheduler::count_levels(course);
    platform::system::SystemDirectories folders;
    const keep::Copies copies(opened.files(), folders, around.data_folder);
    if (copies.have_place())
        info.copy = copies.newest(course.db_path);
    return info;
}

std::string yes_or_no(bool value)
{
    return value ? "yes" : "no";
}

void add_levels(Table& table, const std::string& direction, const LevelNumbers& levels)
{
    std::vector<std::string> cells{direction};
    for (const std::int64_t count : levels)
        cells.push_back(std::to_string(count));
    table.add(std::move(cells));
}

void print_levels(const Info& info, std::ostream& out)
{
    std::vector<Table::Column> columns{{"Level", Table::Align::left}};
    for (std::size_t level = 0; level < info.levels.q.size(); ++level)
        columns.push_back({std::to_string(level), Table::Align::right});
    Table table(std::move(columns));
    add_levels(table, "Questions", info.levels.q);
    add_levels(table, "Inverted", info.levels.a);
    table.print(out);
}

void print(const Info& info, std::ostream& out)
{
    const store::CourseParams& params = info.params;
    Table table({{"", Table::Align::left}, {"", Table::Align::left}});
    table.add({"Title:", params.course_title});
    table.add({"File:", info.path});
    table.add({"Records:", std::to_string(info.records)});
    table.add({"Numbers left:", std::to_string(info.numbers_left)});
    table.add({"Target level:", std::to_string(params.target_level)});
    table.add({"Work time today:", common::format_hours_minutes(params.time_today)});
    table.add({"Work time ever:", common::format_hours_minutes(params.time_ever)});
    table.add({"Score today:", std::to_string(params.score_today)});
    table.add({"Inverted:", yes_or_no(info.inverted)});
    table.add({"Random questions:", yes_or_no(params.random_mode)});
    table.add({"Always show hints:", yes_or_no(params.list_mode)});
    table.add({"Always type the answer:", yes_or_no(params.always_type)});
    table.add({"Font:", params.font.empty() ? "the standard one" : params.font});
    table.add({"Newest copy:",
               info.copy ? keep::words_of_time(info.copy->time) + ", " + info.copy->path : std::string("none")});
    table.print(out);
    out << '\n';
    print_levels(info, out);
}

std::string json_of(const Info& info)
{
    const store::CourseParams& params = info.params;
    return json_object({{"title", json_text(params.course_title)},
                        {"file", json_text(info.path)},
                        {"records", std::to_string(info.records)},
                        {"numbers_left", std::to_string(info.numbers_left)},
                        {"target_level", std::to_string(params.target_level)},
                        {"work_seconds_today", common::format_general(params.time_today)},
                        {"work_seconds_ever", common::format_general(params.time_ever)},
                        {"score_today", std::to_string(params.score_today)},
                        {"inverted", json_truth(info.inverted)},
                        {"random_questions", json_truth(params.random_mode)},
                        {"always_hints", json_truth(params.list_mode)},
                        {"always_typed", json_truth(params.always_type)},
                        {"font", params.font.empty() ? "null" : json_text(params.font)},
                        {"newest_copy", info.copy ? json_text(info.copy->path) : "null"},
                        {"levels", levels_json(info.levels.q)},
                        {"levels_inverted", levels_json(info.levels.a)}});
}

int run(const Arguments& arguments, Surroundings& around)
{
    OpenedCourse opened(arguments.word(0), OpenedCourse::For::reading, around);
    const Info info = info_of(opened, around);
    if (arguments.has("--json"))
        around.out << json_of(info) << '\n';
    else
        print(info, around.out);
    return done;
}

} // namespace

const Verb& info_verb()
{
    static const Verb verb{
        "info", "Tells what a course is and how far it is learnt.", {"COURSE", 1, 1, options}, help, run};
    return verb;
}

} // namespace cuedrill::tools
