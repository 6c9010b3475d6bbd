#include "fakes/course_builder.h"
#include "keep/history_file.h"
#include "platform/system/system_clock.h"
#include "tools/statistics/svg_chart.h"
#include "tools/tool_fixture.h"
#include "tools/verb.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <string>

namespace cuedrill::tools {
namespace {

using namespace std::chrono_literals;

std::size_t count_of(const std::string& text, const std::string& part)
{
    std::size_t count = 0;
    for (std::size_t place = text.find(part); place != std::string::npos; place = text.find(part, place + 1))
        ++count;
    return count;
}

TEST(SvgChart, has_a_bar_for_each_figure_that_is_not_zero)
{
    const std::string svg =
        svg_of({.title = "A & B", .labels = {"one", "two"}, .series = {{"first", {3, 0}}, {"second", {1, 4}}}});
    EXPECT_EQ(count_of(svg, "<rect"), 3U);
    EXPECT_NE(svg.find("aria-label=\"A &amp; B\""), std::string::npos);
    EXPECT_NE(svg.find("<title>two, second: 4</title>"), std::string::npos);
    EXPECT_NE(svg.find(">4</text>"), std::string::npos) << "the axis ends at a round number";
}

TEST(SvgChart, stacks_series_upon_each_other)
{
    const std::string svg = svg_of({.title = "t",
                                    .form = Chart::Form::stacked,
                                    .labels = {"one"},
                                    .series = {{"first", {30}}, {"second", {70}}},
                                    .unit = "%"});
    EXPECT_NE(svg.find(">100 %</text>"), std::string::npos) << svg;
    EXPECT_EQ(count_of(svg, "<rect"), 2U);
}

TEST(SvgChart, leaves_out_labels_for_which_there_is_no_room)
{
    Chart chart{.title = "t", .labels = {}, .series = {{"s", {}}}};
    for (int day = 0; day < 365; ++day) {
        chart.labels.push_back("2026-01-" + std::to_string(day));
        chart.series[0].values.push_back(day);
    }
    const std::string svg = svg_of(chart);
    EXPECT_LT(count_of(svg, "axis middle"), 12U);
    EXPECT_EQ(count_of(svg, "<rect"), 364U);
}

TEST(SvgChart, of_nothing_is_an_empty_picture)
{
    const std::string svg = svg_of({.title = "t", .labels = {}, .series = {}});
    EXPECT_EQ(count_of(svg, "<rect"), 0U);
    EXPECT_TRUE(svg.ends_with("</svg>\n"));
}

TEST(EscapedHtml, has_nothing_that_html_could_take_for_markup)
{
    EXPECT_EQ(escaped_html("<b>\"a\" & \x01\xFF</b>"), "&lt;b&gt;&quot;a&quot; &amp; \uFFFD\uFFFD&lt;/b&gt;");
}

/// A course with failed questions, and a history of some days.
class Stats : public ToolFixture {
protected:
    void SetUp() override
    {
        fakes::CourseBuilder builder(now);
        builder.question("easy", "a").level(3).attempts(5).fails(1).tested_ago(1h).shown_ago(1h);
        builder.question("hard <one>", "b").level(0).attempts(9).fails(7).tested_ago(48h).shown_ago(48h);
        builder.question("fresh", "c").level(0).inverted().level(2).attempts(4).fails(2).tested_ago(2h).shown_ago(2h);
        builder.text_param("course_title", "Words & more").number_param("target_level", 5);
        course = builder.write(folder, "course.crs");
    }

    void write_history()
    {
        keep::HistoryFile history(files, keep::history_path(folders, folder.file("data"), course));
        const auto verdict = [&](double days_ago, common::Int16 record, bool known, common::Int16 before,
                                 common::Int16 after) {
            history.append({.time = now.plus_days(-days_ago),
                            .kind = keep::HistoryKind::verdict,
                            .record = record,
                            .known = known,
                            .typed = false,
                            .level_before = before,
                            .level_after = after,
                            .elapsed = 1.0,
                            .score = 3,
                            .work_seconds = 120});
        };
        verdict(3, 1, true, 0, 3);
        verdict(3, 2, false, 1, 0);
        verdict(2, 2, true, 0, 1);
        verdict(0, 1, true, 3, 4);
    }

    const common::DateTime now = platform::system::SystemClock().now();
    std::string course;
};

TEST_F(Stats, tell_levels_what_is_due_and_the_hardest_questions)
{
    EXPECT_EQ(run({"stats", course}), 0);
    EXPECT_EQ(err, "");
    EXPECT_TRUE(out.starts_with("Words & more, 3 records, target level 5\n\n")) << out;
    EXPECT_NE(out.find("Questions  2  0  0  1  0  0"), std::string::npos) << out;
    EXPECT_NE(out.find("now                  1         1\n"), std::string::npos) << out;
    const std::size_t hard = out.find("hard <one>");
    EXPECT_LT(hard, out.find("fresh")) << "failed most often";
    EXPECT_EQ(out.find("KNOWN AT LEVEL"), std::string::npos) << "there is no history";
}

TEST_F(Stats, tell_what_the_history_knows)
{
    write_history();
    EXPECT_EQ(run({"stats", course}), 0);
    EXPECT_NE(out.find("KNOWN AT LEVEL"), std::string::npos) << out;
    EXPECT_NE(out.find("Questions       100%  0%  -  100%"), std::string::npos) << out;
    EXPECT_NE(out.find("00:02"), std::string::npos) << out;
    EXPECT_EQ(run({"stats", course, "--json"}), 0);
    EXPECT_NE(out.find("\"known_by_level\": [{\"verdicts\": 2, \"known\": 2}, {\"verdicts\": 1, \"known\": 0}"),
              std::string::npos)
        << out;
    EXPECT_NE(out.find("\"forecast\": [{\"day\": "), std::string::npos) << out;
}

TEST_F(Stats, are_null_in_json_where_there_is_no_history)
{
    EXPECT_EQ(run({"stats", course, "--json"}), 0);
    EXPECT_NE(out.find("\"history\": null}"), std::string::npos) << out;
    EXPECT_NE(out.find("\"hardest\": [{\"number\": 2, \"inverted\": false, \"question\": \"hard <one>\""),
              std::string::npos)
        << out;
}

TEST_F(Stats, print_all_records_as_a_table)
{
    EXPECT_EQ(run({"stats", course, "--csv"}), 0);
    EXPECT_TRUE(out.starts_with("number,question,answer,")) << out;
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 4);
}

TEST_F(Stats, make_a_page_that_needs_nothing_else)
{
    write_history();
    EXPECT_EQ(run({"stats", course, "--html"}), 0);
    EXPECT_TRUE(out.starts_with("<!DOCTYPE html>\n"));
    EXPECT_NE(out.find("<title>Words &amp; more</title>"), std::string::npos);
    EXPECT_NE(out.find("hard &lt;one&gt;"), std::string::npos);
    EXPECT_EQ(count_of(out, "<svg"), count_of(out, "</svg>"));
    EXPECT_EQ(count_of(out, "<svg"), 8U);
    for (const std::string reference : {"src=", "href=", "url(", "http"})
        EXPECT_EQ(out.find(reference), std::string::npos) << reference;
}

TEST_F(Stats, make_a_page_without_a_history_too)
{
    EXPECT_EQ(run({"stats", course, "--html"}), 0);
    EXPECT_EQ(count_of(out, "<svg"), 2U);
    EXPECT_NE(out.find("There is no history of this course yet."), std::string::npos);
}

TEST_F(Stats, are_printed_in_one_form)
{
    EXPECT_EQ(run({"stats", course, "--html", "--csv"}), 2);
}

} // namespace
} // namespace cuedrill::tools
