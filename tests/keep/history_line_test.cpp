#include "keep/history_line.h"

#include <algorithm>
#include <clocale>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace cuedrill::keep {
namespace {

const common::DateTime time =
    common::DateTime::from_fields({.year = 2026, .month = 11, .day = 22, .hour = 15, .minute = 45, .second = 10});

HistoryEvent verdict()
{
    return {.time = time,
            .kind = HistoryKind::verdict,
            .record = 17,
            .known = true,
            .typed = false,
            .level_before = 2,
            .level_after = 3,
            .elapsed = 1.25,
            .score = -4,
            .work_seconds = 600};
}

HistoryEvent opened()
{
    return {.time = time,
            .kind = HistoryKind::opened,
            .inverted = true,
            .records = 3,
            .score = 5,
            .work_seconds = 60,
            .levels = scheduler::LevelsOfBoth{.q = {1, 2}, .a = {3, 0, 0, 0, 0, 0, 0, 0, 0, 0, 12}}};
}

/// One of each kind, with all that the kind must have.
std::vector<HistoryEvent> one_of_each()
{
    HistoryEvent closed = opened();
    closed.kind = HistoryKind::closed;
    closed.levels.reset();
    return {opened(),
            closed,
            verdict(),
            {.time = time, .kind = HistoryKind::undone, .record = 17, .level_before = 3, .level_after = 2},
            {.time = time, .kind = HistoryKind::reset, .records = 3},
            {.time = time, .kind = HistoryKind::added, .record = 4},
            {.time = time, .kind = HistoryKind::imported, .record = 9, .records = 5},
            {.time = time, .kind = HistoryKind::changed, .record = 4},
            {.time = time, .kind = HistoryKind::deleted, .record = 32767}};
}

TEST(HistoryLine, has_the_columns_of_the_header)
{
    const std::string& header = history_header();
    EXPECT_EQ(header, "time,event,record,direction,known,judged,level_before,level_after,elapsed_days,records,score,"
                      "work_seconds,q0,q1,q2,q3,q4,q5,q6,q7,q8,q9,q10,a0,a1,a2,a3,a4,a5,a6,a7,a8,a9,a10,format");
    for (const HistoryEvent& event : one_of_each()) {
        const std::string line = to_line(event);
        EXPECT_EQ(std::count(line.begin(), line.end(), ','), std::count(header.begin(), header.end(), ',')) << line;
    }
}

TEST(HistoryLine, tells_a_verdict)
{
    EXPECT_EQ(to_line(verdict()),
              "2026-11-22T15:45:10,verdict,17,q,yes,self,2,3,1.25000,,-4,600,,,,,,,,,,,,,,,,,,,,,,,1");
    HistoryEvent other = verdict();
    other.inverted = true;
    other.typed = true;
    other.known = false;
    EXPECT_EQ(to_line(other), "2026-11-22T15:45:10,verdict,17,a,no,typed,2,3,1.25000,,-4,600,,,,,,,,,,,,,,,,,,,,,,,1");
}

TEST(HistoryLine, tells_an_opening)
{
    EXPECT_EQ(to_line(opened()), "2026-11-22T15:45:10,opened,,a,,,,,,3,5,60,1,2,0,0,0,0,0,0,0,0,0,3,0,0,0,0,0,0,0,0,0,"
                                 "12,1");
}

TEST(HistoryLine, is_read_as_it_was_written)
{
    for (const HistoryEvent& event : one_of_each()) {
        EXPECT_EQ(from_line(to_line(event)), event) << to_line(event);
        EXPECT_EQ(from_line(to_line(event) + "\r"), event) << "as a spreadsheet ends it";
    }
}

TEST(HistoryLine, is_read_with_quotes)
{
    std::string quoted = "\"";
    for (const char sign : to_line(verdict()))
        quoted += sign == ',' ? std::string("\",\"") : std::string(1, sign);
    EXPECT_EQ(from_line(quoted + "\""), verdict());
    EXPECT_EQ(from_line(quoted), std::nullopt);
}

TEST(HistoryLine, that_was_cut_off_is_not_read)
{
    for (const HistoryEvent& event : one_of_each()) {
        const std::string line = to_line(event);
        for (std::size_t length = 0; length < line.size(); ++length)
            EXPECT_EQ(from_line(line.substr(0, length)), std::nullopt) << line.substr(0, length);
    }
}

TEST(HistoryLine, that_lacks_what_its_kind_must_have_is_not_read)
{
    for (const auto member : {&HistoryEvent::level_before, &HistoryEvent::level_after, &HistoryEvent::record}) {
        HistoryEvent lacking = verdict();
        (lacking.*member).reset();
        EXPECT_EQ(from_line(to_line(lacking)), std::nullopt) << to_line(lacking);
        lacking.kind = HistoryKind::undone;
        EXPECT_EQ(from_line(to_line(lacking)), std::nullopt) << to_line(lacking);
    }
    for (const auto member : {&HistoryEvent::known, &HistoryEvent::typed}) {
        HistoryEvent lacking = verdict();
        (lacking.*member).reset();
        EXPECT_EQ(from_line(to_line(lacking)), std::nullopt) << to_line(lacking);
    }
    HistoryEvent lacking = verdict();
    lacking.elapsed.reset();
    EXPECT_EQ(from_line(to_line(lacking)), std::nullopt);
    for (const HistoryKind kind :
         {HistoryKind::added, HistoryKind::changed, HistoryKind::deleted, HistoryKind::imported})
        EXPECT_EQ(from_line(to_line({.time = time, .kind = kind})), std::nullopt)
            << to_line({.time = time, .kind = kind});
    EXPECT_EQ(from_line(to_line({.time = time, .kind = HistoryKind::imported, .record = 1})), std::nullopt);
}

TEST(HistoryLine, with_a_wrong_field_is_not_read)
{
    const std::string line = to_line(verdict());
    const auto with = [&line](const std::string& what, const std::string& other) {
        std::string changed = line;
        return changed.replace(changed.find(what), what.size(), other);
    };
    ASSERT_TRUE(from_line(with("15:45:10", "23:59:59")));
    for (const std::string& wrong : {with("2026-11", "2026-13"),
                                     with("11-22", "11-31"),
                                     with("T", " "),
                                     with("15:45", "15-45"),
                                     with("15:", "24:"),
                                     with("verdict", "judged"),
                                     with(",17,", ",17x,"),
                                     with(",17,", ",32768,"),
                                     with(",q,", ",x,"),
                                     with(",q,", ",,"),
                                     with("yes", "YES"),
                                     with("self", "other"),
                                     with(",2,", ",two,"),
                                     with("1.25000", "1.2.5"),
                                     with(",-4,", ",,"),
                                     with(",600,", ",,"),
                                     with(",600,", ",6e2,"),
                                     with(",600,,", ",600,1,"),
                                     line + ",",
                                     "," + line,
                                     line.substr(0, line.size() - 1) + "2",
                                     std::string(),
                                     history_header()})
        EXPECT_EQ(from_line(wrong), std::nullopt) << wrong;
}

TEST(HistoryLine, does_not_depend_on_the_locale)
{
    for (const char* const name : {"de_DE.UTF-8", "fr_FR.UTF-8", "C.UTF-8"})
        std::setlocale(LC_ALL, name);
    EXPECT_NE(to_line(verdict()).find(",1.25000,"), std::string::npos);
    EXPECT_EQ(from_line(to_line(verdict())), verdict());
    std::setlocale(LC_ALL, "C");
}

} // namespace
} // namespace cuedrill::keep
