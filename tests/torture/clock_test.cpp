#include "torture/effort.h"
#include "torture/surroundings.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <vector>

// Has the whole program used while the clock is put back or forward, as by a traveller, a battery that is empty, the
// end of summer time. Dates are local times, so they may be of the future, and the same hour may come twice.
namespace cuedrill::torture {
namespace {

constexpr std::int64_t day = 86'400;
constexpr std::int64_t year = 365 * day;
constexpr std::size_t imported = 6;

using Words = std::vector<std::string>;

std::string clock_at(std::int64_t seconds)
{
    return "clock=" + std::to_string(seconds);
}

const Words creation{"path=~/courses/course.crs", "start", "quiet", "path=~/courses/questions.txt", "choose=m_import"};

Words operator+(Words words, const Words& more)
{
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

Words new_record(const std::string& text)
{
    return {"press=pb_9", "type=Text_q:" + text, "type=Text_a:" + text, "press=pb_10", "press=pb_1"};
}

class Clocks : public testing::Test {
protected:
    void TearDown() override { report("clocks", {{"jumps", jumps}, {"failures", failures}}); }

    void fail(const std::string& complaint)
    {
        ++failures;
        ADD_FAILURE() << "The clock does harm, " << complaint;
    }

    void check(const std::string& name, const Use& found, std::size_t records)
    {
        ++jumps;
        if (!found.complaint.empty())
            return fail(name + ": " + found.complaint + "\n" + found.words);
        if (!found.course || found.course->qa.size() != records)
            return fail(name + ": " + std::to_string(found.course ? found.course->qa.size() : 0) + " records");
        if (!found.lines("cannot").empty())
            fail(name + ": a dead end: " + found.lines("cannot").front() + "\n" + found.words);
        if (const std::string twice = asked_twice(found); !twice.empty())
            fail(name + ": asked twice in a row: " + twice + "\n" + found.words);
        std::int64_t attempts = 0;
        for (const fakes::QaRow& row : found.course->qa)
            attempts += row.q_side.attempts.value_or(0);
        if (attempts != static_cast<std::int64_t>(found.lines("verdict: ").size()))
            fail(name + ": " + std::to_string(attempts) + " verdicts are stored");
        for (const std::string& box : found.lines("box: ")) {
            if (!is_usual(box))
                fail(name + ": a box says: " + box);
        }
    }

    /// A question that was asked again at once. After a box that says that none is mature, and in another run of the
    /// program, the last one may come again.
    static std::string asked_twice(const Use& found)
    {
        constexpr std::string_view asked = "question: ";
        std::string last;
        for (const std::string& line : found.lines("")) {
            if (line.starts_with("box: ") || line.starts_with("> start"))
                last.clear();
            if (!line.starts_with(asked))
                continue;
            if (line == last)
                return line;
            last = line;
        }
        return {};
    }

    static bool is_usual(const std::string& box)
    {
        static const Words usual{"File ~/courses/course.crs does not exist. Do you want",
                                 "You have passed level",
                                 "Congratulations! You have passed level",
                                 "This function will import",
                                 "Questions from file",
                                 std::to_string(imported) + " questions and answers",
                                 "No question is mature for being asked."};
        return std::any_of(usual.begin(), usual.end(),
                           [&box](const std::string& begin) { return box.starts_with(begin); });
    }

    std::int64_t jumps = 0;
    std::int64_t failures = 0;
};

TEST_F(Clocks, ThatJumpLoseNothingAndEndNothing)
{
    const std::vector<std::int64_t> jumped_to{
        usual_clock - 3600, usual_clock - day, usual_clock - 10 * year, usual_clock + 10 * year, 0,
        -70 * year,         130 * year,        10'000 * year,           31'000 * year,           70'000 * year};
    for (const std::int64_t there : jumped_to) {
        const Household household;
        const Words words = Words{clock_at(usual_clock)} + creation +
                            Words{"drill=12:5", clock_at(there), "drill=12:5"} + new_record("there") +
                            Words{"drill=8:5", "tick", "end"} +
                            // At the opening, with a copy; then during the work with the copy.
                            Words{"start=~/courses/course.crs",
                                  "quiet",
                                  "copies=1",
                                  "drill=6:9",
                                  "end",
                                  "start=~/courses/course.crs",
                                  clock_at(usual_clock + 2 * day),
                                  "drill=6:9"} +
                            new_record("back") + Words{"drill=4:9", "end"} +
                            // A copy of the future does not stand for one of today.
                            Words{"start=~/courses/course.crs",
                                  "copies=2",
                                  "drill=2:9",
                                  "end",
                                  "later=100000",
                                  "start=~/courses/course.crs",
                                  "copies=3",
                                  "end",
                                  "tool=copies ~/courses/course.crs",
                                  "tool=check ~/courses/course.crs"};
        const Use found = use(household, words, {});
        check("jump to " + std::to_string(there), found, imported + 2);
        const Words told = found.lines("tool: ");
        if (told.size() != 2 || !told[0].starts_with("0 ") || !told[1].starts_with("0 "))
            fail("jump to " + std::to_string(there) + ": the tool says: " + (told.empty() ? "nothing" : told.back()));
        // Later times than a course can hold are the last one that it can.
        if (there >= 10'000 * year && !told.empty() && told[0].find("9999-12-31_23-59-59") == std::string::npos)
            fail("jump to " + std::to_string(there) + ": the tool says: " + told[0]);
        if (!found.lines("no copy").empty())
            fail("jump to " + std::to_string(there) + ": there is no copy: " + found.lines("no copy").front());
    }
}

TEST_F(Clocks, OfRandomTimesLoseNothing)
{
    std::mt19937_64 random(seed());
    for (int i = 0; i < effort(4); ++i) {
        Words words = Words{clock_at(usual_clock)} + creation;
        for (int k = 0; k < 20; ++k) {
            const auto jump = static_cast<std::int64_t>(random() % (1ULL << (random() % 36)));
            words.push_back("later=" + std::to_string(random() % 2 == 0 ? jump : -jump));
            words = words + Words{"drill=" + std::to_string(1 + random() % 6) + ":4", "tick"};
            if (random() % 5 == 0)
                words = words + Words{"end", "start=~/courses/course.crs"};
        }
        const Household household;
        check("random times " + std::to_string(i), use(household, words + Words{"end"}, {}), imported);
    }
}

TEST_F(Clocks, ThatRepeatOrLeaveOutAnHourAskNothingTwice)
{
    constexpr std::int64_t end_of_summer = 1'792'890'000;   // 2026-10-25 01:00 UTC
    constexpr std::int64_t begin_of_summer = 1'774'746'000; // 2026-03-29 01:00 UTC
    for (const std::int64_t change : {end_of_summer, begin_of_summer}) {
        const Household household;
        const Words words = Words{clock_at(change - 40)} + creation +
                            Words{"drill=40:4", "tick", "end", "start=~/courses/course.crs", "drill=10:4"} +
                            new_record("after the change") + Words{"drill=6:4", "later=3700", "drill=9:4", "end"};
        const Use found = use(household, words, {.variables = {{"TZ", "Europe/Lisbon"}}});
        check("change of the hour", found, imported + 1);
        EXPECT_NE(found.surroundings.find("# offset in summer 3600\n"), std::string::npos) << found.surroundings;
        EXPECT_GT(found.lines("verdict: ").size(), imported) << found.words;
    }
}

} // namespace
} // namespace cuedrill::torture
