#include "common/number_format.h"
#include "exchange/decks/table_writer.h"
#include "tools/forecast_figures.h"
#include "tools/json.h"
#include "tools/printed_file.h"
#include "tools/statistics/course_statistics.h"
#include "tools/statistics/statistics_page.h"
#include "tools/table.h"
#include "tools/verbs.h"

#include <array>
#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace cuedrill::tools {
namespace {

constexpr std::array<Option, 3> options{
    {{"--csv", "", "Prints all records with what is known of them, as comma-separated values."},
     {"--html", "", "Prints a web page with pictures. It needs no other file."},
     {"--json", "", "Prints the figures in JSON."}}};

constexpr std::string_view help =
    "Prints the questions by level, what is due in the next 60 days, the twenty questions that were failed most often, "
    "and\n"
    "what the history of the course tells: how much was known at each level, score and work time by day over a year, "
    "the\n"
    "levels over time, and what was due and asked.\n";

using Row = std::vector<std::string>;

Row numbers(const std::string& name, const scheduler::LevelNumbers& levels)
{
    Row row{name};
    for (const std::int64_t count : levels)
        row.push_back(std::to_string(count));
    return row;
}

Row shares(const std::string& name, const keep::VerdictCounts& counts)
{
    Row row{name};
    for (const keep::VerdictCount& count : counts)
        row.push_back(count.share() ? common::format_fixed(*count.share() * 100, 0) + "%" : "-");
    return row;
}

Table table_of_levels(const std::string& title)
{
    std::vector<Table::Column> columns{{title, Table::Align::left}};
    for (int level = 0; level <= scheduler::highest_level; ++level)
        columns.push_back({std::to_string(level), Table::Align::right});
    return Table(std::move(columns));
}

void print_due(const CourseStatistics& statistics, std::ostream& out)
{
    Table table({{"DUE", Table::Align::left}, {"QUESTIONS", Table::Align::right}, {"INVERTED", Table::Align::right}});
    const auto add = [&](const std::string& what, std::int64_t of_questions, std::int64_t of_inverted) {
        table.add({what, std::to_string(of_questions), std::to_string(of_inverted)});
    };
    const scheduler::Forecast& questions = statistics.questions;
    const scheduler::Forecast& inverted = statistics.inverted;
    add("now", questions.due_now(), inverted.due_now());
    add("later today", questions.later, inverted.later);
    for (std::size_t day = 0; day < questions.days.size(); ++day) {
        if (questions.days[day] + inverted.days[day] > 0)
            add(iso_date(statistics.now.plus_days(static_cast<double>(day) + 1)), questions.days[day],
                inverted.days[day]);
    }
    add("new", questions.never_tested, inverted.never_tested);
    table.print(out);
}

void print_hardest(const CourseStatistics& statistics, std::ostream& out)
{
    Table table({{"NUMBER", Table::Align::right},
                 {"FAILED", Table::Align::right},
                 {"OF", Table::Align::right},
                 {"LEVEL", Table::Align::right},
                 {"HARDEST", Table::Align::left},
                 {"ANSWER", Table::Align::left}});
    for (const HardQuestion& hard : statistics.hardest)
        table.add({std::to_string(hard.cnt), std::to_string(hard.fails), std::to_string(hard.attempts),
                   std::to_string(hard.level), on_one_line(hard.asked), on_one_line(hard.answer)});
    if (!statistics.hardest.empty())
        table.print(out);
}

void print_history(const HistoryStatistics& history, std::ostream& out)
{
    Table known = table_of_levels("KNOWN AT LEVEL");
    known.add(shares("Questions", history.known.q));
    known.add(shares("Inverted", history.known.a));
    known.print(out);
    Table work({{"\nDAY", Table::Align::left}, {"SCORE", Table::Align::right}, {"WORK TIME", Table::Align::right}});
    for (const keep::WorkOfDay& day : history.work)
        work.add({iso_date(day.day), std::to_string(day.score),
                  common::format_hours_minutes(static_cast<double>(day.work_seconds))});
    work.print(out);
    Table forecast({{"\nDAY", Table::Align::left}, {"DUE", Table::Align::right}, {"ASKED", Table::Align::right}});
    for (const keep::ForecastOfDay& day : history.forecast)
        forecast.add({iso_date(day.day), std::to_string(day.expected), std::to_string(day.asked)});
    forecast.print(out);
    if (history.unreadable > 0)
        out << '\n' << history.unreadable << " lines of the history could not be read.\n";
}

void print(const CourseStatistics& statistics, std::ostream& out)
{
    out << statistics.title << ", " << statistics.records << " records, target level " << statistics.target_level
        << "\n\n";
    Table levels = table_of_levels("LEVEL");
    levels.add(numbers("Questions", statistics.levels.q));
    levels.add(numbers("Inverted", statistics.levels.a));
    levels.print(out);
    out << '\n';
    print_due(statistics, out);
    out << '\n';
    print_hardest(statistics, out);
    if (statistics.history) {
        out << '\n';
        print_history(*statistics.history, out);
    }
}

std::string json_of(const keep::VerdictCounts& counts)
{
    std::vector<std::string> values;
    for (const keep::VerdictCount& count : counts)
        values.push_back(
            json_object({{"verdicts", std::to_string(count.verdicts)}, {"known", std::to_string(count.known)}}));
    return json_list(values);
}

std::string json_of(const HistoryStatistics& history)
{
    std::vector<std::string> work;
    for (const keep::WorkOfDay& day : history.work)
        work.push_back(json_object({{"day", json_text(iso_date(day.day))},
                                    {"score", std::to_string(day.score)},
                                    {"work_seconds", std::to_string(day.work_seconds)}}));
    std::vector<std::string> levels;
    for (const keep::LevelsOfDay& day : history.levels)
        levels.push_back(json_object({{"day", json_text(iso_date(day.day))},
                                      {"questions", levels_json(day.levels.q)},
                                      {"inverted", levels_json(day.levels.a)}}));
    std::vector<std::string> forecast;
    for (const keep::ForecastOfDay& day : history.forecast)
        forecast.push_back(json_object({{"day", json_text(iso_date(day.day))},
                                        {"due", std::to_string(day.expected)},
                                        {"asked", std::to_string(day.asked)}}));
    return json_object({{"known_by_level", json_of(history.known.q)},
                        {"known_by_level_inverted", json_of(history.known.a)},
                        {"work", json_list(work)},
                        {"levels", json_list(levels)},
                        {"forecast", json_list(forecast)},
                        {"unreadable_lines", std::to_string(history.unreadable)}});
}

std::string json_of(const CourseStatistics& statistics)
{
    std::vector<std::string> hardest;
    for (const HardQuestion& hard : statistics.hardest)
        hardest.push_back(json_object({{"number", std::to_string(hard.cnt)},
                                       {"inverted", json_truth(hard.inverted)},
                                       {"question", json_text(hard.asked)},
                                       {"answer", json_text(hard.answer)},
                                       {"attempts", std::to_string(hard.attempts)},
                                       {"fails", std::to_string(hard.fails)},
                                       {"level", std::to_string(hard.level)}}));
    return json_object({{"title", json_text(statistics.title)},
                        {"file", json_text(statistics.path)},
                        {"records", std::to_string(statistics.records)},
                        {"target_level", std::to_string(statistics.target_level)},
                        {"levels", levels_json(statistics.levels.q)},
                        {"levels_inverted", levels_json(statistics.levels.a)},
                        {"due", forecast_json(statistics.questions, statistics.now)},
                        {"due_inverted", forecast_json(statistics.inverted, statistics.now)},
                        {"hardest", json_list(hardest)},
                        {"history", statistics.history ? json_of(*statistics.history) : "null"}});
}

int run(const Arguments& arguments, Surroundings& around)
{
    if (arguments.has("--csv") + arguments.has("--html") + arguments.has("--json") > 1)
        throw UsageError("Give one of --csv, --html and --json.");
    OpenedCourse opened(arguments.word(0), OpenedCourse::For::reading, around);
    if (arguments.has("--csv")) {
        const auto rows = opened.course().database().open_recordset("Select * from qa order by cnt");
        PrintedFile printed(around.out);
        decks::write_table(printed, *rows, {.numbered = true, .statistics = true});
        printed.finish();
        return done;
    }
    const CourseStatistics statistics = statistics_of(opened, around);
    if (arguments.has("--html"))
        around.out << html_page(statistics);
    else if (arguments.has("--json"))
        around.out << json_of(statistics) << '\n';
    else
        print(statistics, around.out);
    return done;
}

} // namespace

const Verb& stats_verb()
{
    static const Verb verb{
        "stats", "Prints statistics of a course, also as a web page.", {"COURSE", 1, 1, options}, help, run};
    return verb;
}

} // namespace cuedrill::tools
