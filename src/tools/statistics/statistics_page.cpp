#include "tools/statistics/statistics_page.h"

#include "common/number_format.h"
#include "tools/forecast_figures.h"
#include "tools/statistics/svg_chart.h"
#include "tools/table.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <vector>

namespace cuedrill::tools {
namespace {

using scheduler::Forecast;

// The colours of the first two series differ in lightness, too, so that they can be told apart by everybody. Those of
// the levels run from light to dark.
constexpr const char* style = R"(
:root { color-scheme: light dark; --ground: #ffffff; --text: #1d1f21; --quiet: #585d63; --line: #d4d7db;
  --s0: #1f6fb2; --s1: #e0962e; }
@media (prefers-color-scheme: dark) { :root { --ground: #1b1d1f; --text: #e4e6e8; --quiet: #a4a9af; --line: #42474c;
  --s0: #6cb2ee; --s1: #f0b45c; } }
body { margin: 0 auto; max-width: 60rem; padding: 1rem 1.25rem 3rem; background: var(--ground); color: var(--text);
  font: 1rem/1.5 system-ui, sans-serif; overflow-wrap: anywhere; }
h1 { font-size: 1.6rem; margin: 1rem 0 0; } h2 { font-size: 1.15rem; margin: 2rem 0 0.25rem; }
p { margin: 0.25rem 0; } .quiet { color: var(--quiet); }
svg { display: block; width: 100%; height: auto; } .grid { stroke: var(--line); }
.axis { fill: var(--quiet); font-size: 11px; } .end { text-anchor: end; } .middle { text-anchor: middle; }
.key { display: inline-block; width: 0.8em; height: 0.8em; margin: 0 0.35em 0 1em; }
table { border-collapse: collapse; width: 100%; } th, td { text-align: left; padding: 0.3rem 0.6rem 0.3rem 0;
  border-bottom: 1px solid var(--line); vertical-align: top; } .number { text-align: right; }
.series-0 { fill: var(--s0); background: var(--s0); } .series-1 { fill: var(--s1); background: var(--s1); }
.stack .series-0 { fill: #c9ced4; background: #c9ced4; } .stack .series-1 { fill: #b9d7ee; background: #b9d7ee; }
.stack .series-2 { fill: #86bce6; background: #86bce6; } .stack .series-3 { fill: #4f9bd6; background: #4f9bd6; }
.stack .series-4 { fill: #2a76b8; background: #2a76b8; } .stack .series-5 { fill: #164a78; background: #164a78; }
)";

std::string paragraph(const std::string& text)
{
    return "<p class=\"quiet\">" + escaped_html(text) + "</p>\n";
}

/// A heading, what there is to say about the picture, the picture, and what its colours mean.
std::string section(const Chart& chart, const std::string& words)
{
    const bool stacked = chart.form == Chart::Form::stacked;
    std::string html = "<h2>" + escaped_html(chart.title) + "</h2>\n" + (words.empty() ? "" : paragraph(words)) +
                       "<div" + (stacked ? " class=\"stack\"" : "") + ">\n" + svg_of(chart);
    if (chart.series.size() > 1) {
        html += "<p class=\"quiet\">";
        for (std::size_t i = 0; i < chart.series.size(); ++i)
            html += "<span class=\"key series-" + std::to_string(i) + "\"></span>" + escaped_html(chart.series[i].name);
        html += "</p>\n";
    }
    return html + "</div>\n";
}

template <typename Numbers>
std::vector<double> values_of(const Numbers& numbers)
{
    std::vector<double> values;
    std::transform(numbers.begin(), numbers.end(), std::back_inserter(values),
                   [](auto number) { return static_cast<double>(number); });
    return values;
}

std::vector<std::string> level_labels()
{
    std::vector<std::string> labels;
    for (int level = 0; level <= scheduler::highest_level; ++level)
        labels.push_back(std::to_string(level));
    return labels;
}

Chart levels_chart(const CourseStatistics& statistics)
{
    return {.title = "Questions by level",
            .labels = level_labels(),
            .series = {{"Questions", values_of(statistics.levels.q)}, {"Inverted", values_of(statistics.levels.a)}}};
}

std::vector<double> days_of(const Forecast& forecast)
{
    std::vector<double> values{static_cast<double>(forecast.due_now() + forecast.later)};
    const std::vector<double> days = values_of(forecast.days);
    values.insert(values.end(), days.begin(), days.end());
    return values;
}

Chart due_chart(const CourseStatistics& statistics)
{
    std::vector<std::string> labels{"today"};
    for (int day = 1; day <= forecast_days; ++day)
        labels.push_back("+" + std::to_string(day));
    return {.title = "Due in the next " + std::to_string(forecast_days) + " days",
            .labels = std::move(labels),
            .series = {{"Questions", days_of(statistics.questions)}, {"Inverted", days_of(statistics.inverted)}}};
}

std::string due_words(const CourseStatistics& statistics)
{
    const auto words = [](const std::string& name, const Forecast& forecast) {
        return name + ": " + std::to_string(forecast.due_now()) + " due now, of which " +
               std::to_string(forecast.overdue) + " overdue; " + std::to_string(forecast.never_tested) + " new, " +
               std::to_string(forecast.passed) + " passed. ";
    };
    return words("Questions", statistics.questions) + words("Inverted", statistics.inverted);
}

std::vector<double> percents_of(const keep::VerdictCounts& counts)
{
    std::vector<double> values;
    for (const keep::VerdictCount& count : counts)
        values.push_back(count.share().value_or(0) * 100);
    return values;
}

Chart known_chart(const HistoryStatistics& history)
{
    return {.title = "What was known, by the level before the verdict",
            .labels = level_labels(),
            .series = {{"Questions", percents_of(history.known.q)}, {"Inverted", percents_of(history.known.a)}},
            .unit = "%"};
}

/// The last days up to `now`, one for each, with 0 where nothing was done.
Chart work_chart(const HistoryStatistics& history, common::DateTime now, const std::string& title,
                 const std::string& name, const std::function<double(const keep::WorkOfDay& work)>& value)
{
    std::map<common::DateTime, double> by_day;
    for (const keep::WorkOfDay& work : history.work)
        by_day[work.day] = std::max(value(work), 0.0);
    Chart chart{.title = title, .labels = {}, .series = {{name, {}}}};
    const common::DateTime today = now.date_only();
    const common::DateTime first = by_day.empty() ? today : by_day.begin()->first;
    for (common::DateTime day = first; day <= today; day = day.plus_days(1)) {
        chart.labels.push_back(iso_date(day));
        const auto found = by_day.find(day);
        chart.series.front().values.push_back(found == by_day.end() ? 0 : found->second);
    }
    return chart;
}

/// The levels from 5 on are one group, as in the window.
Chart levels_over_time(const HistoryStatistics& history, bool inverted)
{
    constexpr std::size_t groups = scheduler::last_counted_level + 1;
    Chart chart{.title = inverted ? "Levels over time, inverted" : "Levels over time",
                .form = Chart::Form::stacked,
                .labels = {},
                .series = std::vector<Series>(groups)};
    for (std::size_t group = 0; group < groups; ++group)
        chart.series[group].name = "level " + std::to_string(group) + (group + 1 == groups ? " and above" : "");
    for (const keep::LevelsOfDay& day : history.levels) {
        chart.labels.push_back(iso_date(day.day));
        const scheduler::LevelNumbers& levels = inverted ? day.levels.a : day.levels.q;
        for (Series& series : chart.series)
            series.values.push_back(0);
        for (std::size_t level = 0; level < levels.size(); ++level)
            chart.series[std::min(level, groups - 1)].values.back() += static_cast<double>(levels[level]);
    }
    return chart;
}

Chart forecast_chart(const HistoryStatistics& history)
{
    Chart chart{.title = "Due and asked", .labels = {}, .series = {{"due", {}}, {"of which asked", {}}}};
    for (const keep::ForecastOfDay& day : history.forecast) {
        chart.labels.push_back(iso_date(day.day));
        chart.series[0].values.push_back(static_cast<double>(day.expected));
        chart.series[1].values.push_back(static_cast<double>(day.asked));
    }
    return chart;
}

std::string history_sections(const CourseStatistics& statistics)
{
    if (!statistics.history)
        return paragraph("There is no history of this course yet. It begins when the course is opened in the window.");
    const HistoryStatistics& history = *statistics.history;
    std::string html = section(known_chart(history), "");
    html += section(work_chart(history, statistics.now, "Work time by day, minutes", "minutes",
                               [](const keep::WorkOfDay& work) { return static_cast<double>(work.work_seconds) / 60; }),
                    "");
    html += section(work_chart(history, statistics.now, "Score by day", "score",
                               [](const keep::WorkOfDay& work) { return static_cast<double>(work.score); }),
                    "A day with a negative score has no bar.");
    html += section(levels_over_time(history, false), "") + section(levels_over_time(history, true), "");
    html +=
        section(forecast_chart(history), "What was due on a day as the verdicts before it tell, in both directions.");
    return html;
}

std::string hardest_table(const CourseStatistics& statistics)
{
    std::string html = "<h2>The hardest questions</h2>\n";
    if (statistics.hardest.empty())
        return html + paragraph("No question was failed.");
    html +=
        "<table><tr><th class=\"number\">Number</th><th>Question</th><th>Answer</th><th class=\"number\">Failed</th>"
        "<th class=\"number\">of</th><th class=\"number\">Level</th></tr>\n";
    const auto cell = [](std::int64_t number) { return "<td class=\"number\">" + std::to_string(number) + "</td>"; };
    for (const HardQuestion& hard : statistics.hardest)
        html += "<tr>" + cell(hard.cnt) + "<td>" + escaped_html(on_one_line(hard.asked)) + "</td><td>" +
                escaped_html(on_one_line(hard.answer)) + "</td>" + cell(hard.fails) + cell(hard.attempts) +
                cell(hard.level) + "</tr>\n";
    return html + "</table>\n";
}

} // namespace

std::string html_page(const CourseStatistics& statistics)
{
    const std::string title = escaped_html(statistics.title);
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
           title + "</title>\n<style>" + style + "</style>\n</head>\n<body>\n<h1>" + title + "</h1>\n" +
           paragraph(std::to_string(statistics.records) + " records, target level " +
                     std::to_string(statistics.target_level) + ". As of " + common::format_date_time(statistics.now) +
                     ".") +
           section(levels_chart(statistics), "") + section(due_chart(statistics), due_words(statistics)) +
           history_sections(statistics) + hardest_table(statistics) + "</body>\n</html>\n";
}

} // namespace cuedrill::tools
