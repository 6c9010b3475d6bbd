#include "platform/system/system_clock.h"
#include "platform/system/system_open_courses.h"
#include "tools/tool_fixture.h"
#include "tools/verb.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace cuedrill::tools {
namespace {

using namespace std::chrono_literals;

/// A course of four records, as of now.
class ReadingVerb : public ToolFixture {
protected:
    void SetUp() override
    {
        builder.question("France?", "Paris").level(2).tested_ago(2h).shown_ago(2h);
        builder.question("Italy?", "Rome\r\nRoma").level(1).tested_ago(48h).shown_ago(48h).inverted().level(5);
        builder.question("Spain?", "Madrid").level(0).inverted().level(0);
        builder.question("italy?", "Rome").level(4).tested_ago(1h).shown_ago(1h);
        builder.text_param("course_title", "Capitals").number_param("target_level", 5);
        course = builder.write(folder, "course.crs");
    }

    fakes::CourseBuilder builder{platform::system::SystemClock().now()};
    std::string course;
};

TEST_F(ReadingVerb, info_tells_what_a_course_is)
{
    EXPECT_EQ(run({"info", course}), 0);
    EXPECT_EQ(err, "");
    for (const std::string line :
         {"Title:                   Capitals\n", "Records:                 4\n", "Numbers left:            32763\n",
          "Target level:            5\n", "Inverted:                no\n", "Newest copy:             none\n",
          "Level      0  1  2  3  4  5  6  7  8  9  10\n", "Questions  1  1  1  0  1  0  0  0  0  0   0\n",
          "Inverted   1  0  0  0  0  1  0  0  0  0   0\n"})
        EXPECT_NE(out.find(line), std::string::npos) << line << out;
    EXPECT_NE(out.find("File:                    " + course + "\n"), std::string::npos) << out;
}

TEST_F(ReadingVerb, info_tells_the_same_in_json)
{
    EXPECT_EQ(run({"info", course, "--json"}), 0);
    EXPECT_EQ(out, "{\"title\": \"Capitals\", \"file\": \"" + course +
                       "\", \"records\": 4, \"numbers_left\": 32763, \"target_level\": 5, \"work_seconds_today\": 0, "
                       "\"work_seconds_ever\": 0, \"score_today\": 0, \"inverted\": false, \"random_questions\": "
                       "false, \"always_hints\": false, \"always_typed\": false, \"font\": null, \"newest_copy\": "
                       "null, \"levels\": [1, 1, 1, 0, 1, 0, 0, 0, 0, 0, 0], \"levels_inverted\": [1, 0, 0, 0, 0, 1, "
                       "0, 0, 0, 0, 0]}\n");
}

TEST_F(ReadingVerb, info_names_the_newest_copy)
{
    make_copy(course, clock.time);
    EXPECT_EQ(run({"info", course}), 0);
    EXPECT_NE(out.find(copies.newest(course)->path), std::string::npos) << out;
}

TEST_F(ReadingVerb, due_tells_what_can_be_asked)
{
    EXPECT_EQ(run({"due", course}), 0);
    EXPECT_EQ(err, "");
    EXPECT_TRUE(out.starts_with("                  QUESTIONS  INVERTED\n")) << out;
    const auto line = [this](const std::string& name) {
        const std::size_t place = out.find("\n" + name + " ");
        return place == std::string::npos ? std::string()
                                          : out.substr(place + 1, out.find('\n', place + 1) - place - 1);
    };
    EXPECT_TRUE(line("Due now").ends_with("2         0")) << out;
    EXPECT_TRUE(line("New").ends_with("1         3")) << out;
    EXPECT_TRUE(line("Passed").ends_with("0         1")) << out;
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 1 + 4 + 30 + 2);
}

TEST_F(ReadingVerb, due_gives_thirty_days_in_json)
{
    EXPECT_EQ(run({"due", course, "--json"}), 0);
    EXPECT_TRUE(out.starts_with("{\"questions\": {\"due_now\": 2, \"overdue\": ")) << out;
    std::size_t days = 0;
    for (std::size_t place = out.find("\"date\""); place != std::string::npos; place = out.find("\"date\"", place + 1))
        ++days;
    EXPECT_EQ(days, 60U);
}

TEST_F(ReadingVerb, due_says_by_its_exit_code_that_nothing_is)
{
    fakes::CourseBuilder other(platform::system::SystemClock().now());
    other.question("a").level(3).tested_ago(1min).shown_ago(1min);
    const std::string path = other.write(folder, "other.crs");
    EXPECT_EQ(run({"due", path}), 1);
    other.number_param("invert", 1);
    EXPECT_EQ(run({"due", other.write(folder, "inverted.crs")}), 0) << "the answer is new";
}

TEST_F(ReadingVerb, list_lists_the_records)
{
    EXPECT_EQ(run({"list", course}), 0);
    EXPECT_EQ(out, "NUMBER  LEVEL  QUESTION  ANSWER\n"
                   "     1      2  France?   Paris\n"
                   "     2      1  Italy?    Rome / Roma\n"
                   "     3      0  Spain?    Madrid\n"
                   "     4      4  italy?    Rome\n");
}

TEST_F(ReadingVerb, list_lists_those_that_are_asked_for)
{
    const auto numbers = [this](std::vector<std::string> line) {
        line.insert(line.begin(), {"list", course, "--json"});
        run(line);
        std::string found;
        for (std::size_t place = out.find("\"number\": "); place != std::string::npos;
             place = out.find("\"number\": ", place + 1))
            found += out[place + 10];
        return found;
    };
    EXPECT_EQ(numbers({}), "1234");
    EXPECT_EQ(numbers({"--due"}), "12");
    EXPECT_EQ(numbers({"--level", "0"}), "3");
    EXPECT_EQ(numbers({"--level", "5", "--inverted"}), "2");
    EXPECT_EQ(numbers({"--search", "ROM"}), "24");
    EXPECT_EQ(numbers({"--search", "rom", "--due"}), "2");
    EXPECT_EQ(numbers({"--search", "it*y"}), "24");
    EXPECT_EQ(numbers({"--search", "l'"}), "");
}

TEST_F(ReadingVerb, list_gives_all_that_a_record_has_in_json)
{
    EXPECT_EQ(run({"list", course, "--json", "--level", "0"}), 0);
    const std::string side = "{\"level\": 0, \"attempts\": 0, \"fails\": 0, \"last_test\": null, \"last_show\": null}";
    EXPECT_EQ(out, "[{\"number\": 3, \"question\": \"Spain?\", \"answer\": \"Madrid\", \"questions\": " + side +
                       ", \"inverted\": " + side + "}]\n");
}

TEST_F(ReadingVerb, list_ends_with_1_when_there_is_none)
{
    EXPECT_EQ(run({"list", course, "--level", "9"}), 1);
    EXPECT_EQ(out, "");
    EXPECT_EQ(run({"list", course, "--level", "9", "--json"}), 1);
    EXPECT_EQ(out, "[]\n");
}

TEST_F(ReadingVerb, list_refuses_what_is_no_level)
{
    for (const std::string level : {"11", "-1", "x", "1.5"}) {
        EXPECT_EQ(run({"list", course, "--level", level}), 2);
        EXPECT_EQ(err,
                  "cuedrill-course: N is a number from 0 to 10, not " + level + ". See: cuedrill-course list --help\n");
    }
}

TEST_F(ReadingVerb, list_tells_that_a_pattern_is_malformed)
{
    EXPECT_EQ(run({"list", course, "--search", "[a"}), 1);
    EXPECT_NE(err, "");
}

TEST_F(ReadingVerb, dupes_finds_texts_that_stand_twice)
{
    EXPECT_EQ(run({"dupes", course}), 0);
    EXPECT_EQ(out, "Italy?\n  2: Rome / Roma\n  4: Rome\n");
    EXPECT_EQ(run({"dupes", course, "--answers"}), 0);
    EXPECT_EQ(out, "No answer stands twice.\n");
    EXPECT_EQ(run({"dupes", course, "--json"}), 0);
    EXPECT_EQ(out, "[[{\"number\": 2, \"question\": \"Italy?\", \"answer\": \"Rome\\u000d\\u000aRoma\"}, {\"number\": "
                   "4, \"question\": \"italy?\", \"answer\": \"Rome\"}]]\n");
}

TEST_F(ReadingVerb, of_a_course_that_is_missing_or_none_is_refused)
{
    const std::string text = folder.write("text.txt", "no course");
    for (const std::string name : {"info", "due", "list", "dupes"}) {
        EXPECT_EQ(run({name, folder.file("none.crs")}), 2);
        EXPECT_EQ(err, "cuedrill-course: There is no course " + folder.file("none.crs") + ".\n");
        EXPECT_EQ(run({name, text}), 2);
        EXPECT_EQ(err, "cuedrill-course: The course " + text + " cannot be opened. It is not a course.\n");
        EXPECT_EQ(out, "");
    }
}

TEST_F(ReadingVerb, reads_a_course_that_a_window_has_open)
{
    platform::system::SystemOpenCourses window(folder.file("runtime"));
    window.enter(course);
    EXPECT_EQ(run({"info", course}), 0);
    EXPECT_EQ(run({"list", course}), 0);
}

} // namespace
} // namespace cuedrill::tools
