#include "torture/effort.h"
#include "torture/surroundings.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <vector>

// Has the whole program used in other languages and time zones. The course, the texts on the screen and the exported
// file must be the same as anywhere else.
namespace cuedrill::torture {
namespace {

/// Everything that shows or stores a text, a number or a date.
const std::vector<std::string>& all_uses()
{
    static const std::vector<std::string> words{
        // A new course, filled by an import.
        "path=~/courses/course.crs", "start", "quiet", "input=T\u0130TLE \u0131i 1,5", "choose=m_change_course_title",
        "path=~/courses/questions.txt", "choose=m_import",
        // Verdicts.
        "press=bot_yes", "press=bot_yes", "press=bot_yes", "later=61", "press=bot_yes", "press=bot_no", "later=3600",
        "tick", "choose=m_undo",
        // A new record, a change, a deletion.
        "press=pb_9", "type=Text_q:I am new \u0130\u0131", "type=Text_a:1.5", "press=pb_10", "press=pb_1", "press=pb_8",
        "type=Text_q: changed", "press=pb_10", "press=pb_1", "press=pb_11",
        // Everything that can be looked at.
        "choose=m_show_all_alphabetically", "choose=m_show_sort_by_score", "choose=m_view_history",
        "choose=m_all_q_and_a", "input=\u0131", "choose=m_find_q", "input=TITLE", "choose=m_find_a", "input=i",
        "choose=m_find_q", "press=pb_3", "choose=m_disp_nr_mature", "choose=m_history", "choose=m_score_elapsed_table",
        "choose=m_show_all", "path=~/courses/export.txt", "choose=m_export", "end",
        // Two days later, with a copy; then the remembered course.
        "later=200000", "start=~/courses/course.crs", "quiet", "copies=1", "tick", "press=bot_yes", "press=bot_yes",
        "press=bot_yes", "end", "start", "quiet", "choose=m_show_sort_by_score", "end",
        // The tool.
        "tool=copies ~/courses/course.crs", "tool=check ~/courses/course.crs --json", "tool=CHECK ~/courses/course.crs",
        "tool=restore ~/courses/course.crs", "tool=~/courses/second.crs ~/courses/questions.txt",
        "tool=check ~/courses/second.crs"};
    return words;
}

std::vector<std::string> with_clock(std::int64_t seconds, const std::vector<std::string>& words)
{
    std::vector<std::string> all{"clock=" + std::to_string(seconds)};
    all.insert(all.end(), words.begin(), words.end());
    return all;
}

struct Locale {
    std::string name;
    std::string source;   ///< what localedef makes it of; empty for one that is always there
    std::string in_force; ///< what the library calls it then
    std::string decimal_point = ".";
};

/// All of them, or fewer with less effort.
template <typename Surrounding>
std::vector<Surrounding> first_of(std::vector<Surrounding> all)
{
    const auto count = static_cast<std::size_t>(effort(static_cast<int>(all.size())));
    all.erase(all.begin() + static_cast<std::ptrdiff_t>(std::min(count, all.size())), all.end());
    return all;
}

class Environment : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        const Household household;
        usual_ = use(household, with_clock(usual_clock, all_uses()), {});
    }

    void TearDown() override { report("environment", {{"surroundings", surroundings}, {"failures", failures}}); }

    void expect_usual(const std::string& name, const Use& found)
    {
        ++surroundings;
        std::string complaint = found.complaint;
        if (complaint.empty())
            complaint = difference(usual_.words, found.words);
        if (complaint.empty() && (!found.course || found.course != usual_.course))
            complaint = "the course is another one";
        if (complaint.empty() && found.exported != usual_.exported)
            complaint = "the exported file is another one";
        if (complaint.empty())
            return;
        ++failures;
        ADD_FAILURE() << "The surroundings matter, " << name << ": " << complaint;
    }

    static Use usual_;
    std::int64_t surroundings = 0;
    std::int64_t failures = 0;
};

Use Environment::usual_;

TEST_F(Environment, IsUsedForAllThatTheProgramShows)
{
    ASSERT_EQ(usual_.complaint, "") << usual_.words;
    ASSERT_TRUE(usual_.course);
    EXPECT_EQ(usual_.course->qa.size(), 6U);
    EXPECT_EQ(usual_.lines("cannot"), std::vector<std::string>{}) << usual_.words;
    EXPECT_NE(usual_.exported.find("@Q@"), std::string::npos);
    EXPECT_EQ(usual_.lines("tool: 0").size(), 5U) << usual_.words;
}

TEST_F(Environment, OfAnyLocaleChangesNothing)
{
    const std::vector<Locale> locales{{"tr_TR.UTF-8", "tr_TR", "tr_TR.UTF-8", ","},
                                      {"ar_SA.UTF-8", "ar_SA", "ar_SA.UTF-8"},
                                      {"fa_IR.UTF-8", "fa_IR", "fa_IR.UTF-8"},
                                      {"de_DE.UTF-8", "de_DE", "de_DE.UTF-8", ","},
                                      {"C", "", "C"},
                                      {"POSIX", "", "C"},
                                      {"xx_YY", "", "C"}};
    const fakes::TempFolder data;
    for (const Locale& locale : first_of(locales)) {
        if (!locale.source.empty()) {
            const std::string made = "localedef -c -i " + locale.source + " -f UTF-8 " + data.file(locale.name) + " >" +
                                     data.file("log") + " 2>&1";
            ASSERT_EQ(std::system(made.c_str()), 0) << data.read("log");
        }
        const Household household;
        const Use found = use(household, with_clock(usual_clock, all_uses()),
                              {.variables = {{"LANG", locale.name}, {"LOCPATH", data.path().string()}}});
        EXPECT_NE(found.surroundings.find("# locale " + locale.in_force), std::string::npos) << found.surroundings;
        EXPECT_NE(found.surroundings.find("# decimal point " + locale.decimal_point + "\n"), std::string::npos)
            << found.surroundings;
        expect_usual(locale.name, found);
    }
    const Household household;
    expect_usual("no locale", use(household, with_clock(usual_clock, all_uses()), {.variables = {{"LANG", {}}}}));
}

/// Dates are local times: at the same time of day all is the same.
TEST_F(Environment, OfAnyTimeZoneChangesNothingAtTheSameTimeOfDay)
{
    struct Zone {
        std::string name;
        std::int64_t offset; ///< seconds east of Greenwich, in November
        std::int64_t offset_in_summer;
    };
    const std::vector<Zone> zones{{"Pacific/Kiritimati", 50400, 50400},
                                  {"America/St_Johns", -12600, -9000},
                                  {"Asia/Kathmandu", 20700, 20700},
                                  {"Europe/Lisbon", 0, 3600},
                                  {"UTC", 0, 0},
                                  {"Nowhere/Invalid", 0, 0},
                                  {":/nonexistent", 0, 0},
                                  {"<+1>", 0, 0}};
    for (const Zone& zone : first_of(zones)) {
        const Household household;
        const Use found =
            use(household, with_clock(usual_clock - zone.offset, all_uses()), {.variables = {{"TZ", zone.name}}});
        EXPECT_NE(found.surroundings.find("# offset in summer " + std::to_string(zone.offset_in_summer) + "\n"),
                  std::string::npos)
            << zone.name << found.surroundings;
        expect_usual(zone.name, found);
    }
}

} // namespace
} // namespace cuedrill::torture
