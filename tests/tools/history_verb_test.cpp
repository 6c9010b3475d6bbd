#include "keep/history_file.h"
#include "tools/tool_fixture.h"
#include "tools/verb.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace cuedrill::tools {
namespace {

using keep::HistoryEvent;
using keep::HistoryKind;

class HistoryVerb : public ToolFixture {
protected:
    [[nodiscard]] std::string path_of(const std::string& of) const
    {
        return keep::history_path(folders, folder.file("data"), of);
    }

    void append(const std::string& of, const HistoryEvent& event)
    {
        keep::HistoryFile(files, path_of(of)).append_last(event);
    }

    [[nodiscard]] HistoryEvent deleted(int seconds, common::Int16 record) const
    {
        return {.time = common::DateTime::from_seconds(clock.time.seconds() + seconds),
                .kind = HistoryKind::deleted,
                .record = record};
    }

    /// An opening, a verdict, its undo, an import and a closing.
    void write_history()
    {
        append(course, {.time = clock.time,
                        .kind = HistoryKind::opened,
                        .records = 3,
                        .score = 2,
                        .work_seconds = 3660,
                        .levels = scheduler::LevelsOfBoth{.q = {2, 0, 1}, .a = {}}});
        append(course, {.time = clock.time,
                        .kind = HistoryKind::verdict,
                        .record = 17,
                        .known = true,
                        .typed = true,
                        .level_before = 2,
                        .level_after = 3,
                        .elapsed = 1.5});
        append(course, {.time = clock.time,
                        .kind = HistoryKind::undone,
                        .record = 17,
                        .inverted = true,
                        .level_before = 3,
                        .level_after = 2});
        append(course, {.time = clock.time, .kind = HistoryKind::imported, .record = 9, .records = 1});
        append(course, {.time = clock.time, .kind = HistoryKind::closed});
    }

    [[nodiscard]] std::vector<common::Int16> records_of(const std::string& of) const
    {
        std::vector<common::Int16> records;
        for (const HistoryEvent& event : keep::read_history(files, path_of(of)).events)
            records.push_back(event.record.value_or(0));
        return records;
    }

    std::string course = folder.file("verbs.crs");
    std::string old_course = folder.file("old.crs");
};

TEST_F(HistoryVerb, prints_a_table)
{
    write_history();
    EXPECT_EQ(run({"history", course}), 0);
    EXPECT_EQ(out, "TIME                 EVENT      RECORD  ASKED\n"
                   "2026-11-15 05:47:17  opened            q  score 2, work 01:01, levels q 2 0 1, a 0\n"
                   "2026-11-15 05:47:17  verdict       17  q  known, typed, level 2 to 3 after 1.50 days\n"
                   "2026-11-15 05:47:17  undone        17  a  level 3 to 2\n"
                   "2026-11-15 05:47:17  imported       9  q  1 record\n"
                   "2026-11-15 05:47:17  closed            q  score 0, work 00:00\n");
    EXPECT_EQ(err, "");
}

TEST_F(HistoryVerb, prints_the_file_as_it_is)
{
    write_history();
    files.append_lines(path_of(course), "", "nonsense\n");
    EXPECT_EQ(run({"history", "--csv", course}), 0);
    EXPECT_EQ(out, files.begin_reading(path_of(course), 100'000)->read(100'000));
    EXPECT_EQ(out.substr(0, 11), "time,event,");
    EXPECT_NE(out.find("nonsense\n"), std::string::npos);
    EXPECT_EQ(err, "");
}

TEST_F(HistoryVerb, prints_json)
{
    write_history();
    EXPECT_EQ(run({"history", "--json", course}), 0);
    const std::string time = "{\"time\": \"2026-11-15T05:47:17\", \"event\": ";
    EXPECT_EQ(out, "{\"events\": [" + time +
                       "\"opened\", \"direction\": \"q\", \"records\": 3, \"score\": 2, \"work_seconds\": 3660, "
                       "\"q\": [2, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0], \"a\": [0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0]}, " +
                       time +
                       "\"verdict\", \"record\": 17, \"direction\": \"q\", \"known\": true, \"judged\": \"typed\", "
                       "\"level_before\": 2, \"level_after\": 3, \"elapsed_days\": 1.5, \"score\": 0, "
                       "\"work_seconds\": 0}, " +
                       time +
                       "\"undone\", \"record\": 17, \"direction\": \"a\", \"level_before\": 3, \"level_after\": 2, "
                       "\"score\": 0, \"work_seconds\": 0}, " +
                       time +
                       "\"imported\", \"record\": 9, \"direction\": \"q\", \"records\": 1, \"score\": 0, "
                       "\"work_seconds\": 0}, " +
                       time +
                       "\"closed\", \"direction\": \"q\", \"score\": 0, \"work_seconds\": 0}], "
                       "\"unreadable\": 0}\n");
}

TEST_F(HistoryVerb, counts_lines_that_cannot_be_read)
{
    append(course, deleted(0, 1));
    files.append_lines(path_of(course), "", "nonsense\n");
    EXPECT_EQ(run({"history", course}), 0);
    EXPECT_NE(out.find("deleted"), std::string::npos);
    EXPECT_EQ(err, "1 line could not be read.\n");
    files.append_lines(path_of(course), "", "more of it\n");
    EXPECT_EQ(run({"history", "--json", course}), 0);
    EXPECT_NE(out.find("\"unreadable\": 2}"), std::string::npos) << out;
    EXPECT_EQ(err, "2 lines could not be read.\n");
}

TEST_F(HistoryVerb, says_that_there_is_none)
{
    EXPECT_EQ(run({"history", course}), 1);
    EXPECT_EQ(out, "");
    EXPECT_EQ(err, "cuedrill-course: There is no history of " + course + ".\n");
    EXPECT_EQ(run({"history", "--adopt", old_course, course}), 1);
    EXPECT_EQ(err, "cuedrill-course: There is no history of " + old_course + ".\n");
}

TEST_F(HistoryVerb, needs_a_folder_of_the_user)
{
    std::ostringstream data;
    std::ostringstream messages;
    Surroundings around{data, messages, "", "", false};
    EXPECT_EQ(run_tool(std::vector<std::string>{"history", course}, around), 2);
    EXPECT_EQ(messages.str(), "cuedrill-course: There is no folder of the user in which a history could be.\n");
}

TEST_F(HistoryVerb, joins_the_history_of_the_old_path)
{
    append(old_course, deleted(0, 1));
    append(old_course, deleted(2, 3));
    append(course, deleted(1, 2));
    EXPECT_EQ(run({"history", course, "--adopt", old_course}), 0);
    EXPECT_EQ(out, "2 lines of the history of " + old_course + " joined to that of " + course + ".\n");
    EXPECT_EQ(records_of(course), (std::vector<common::Int16>{1, 2, 3}));
    EXPECT_FALSE(files.exists(path_of(old_course)));
    EXPECT_EQ(run({"history", course, "--adopt", old_course}), 1) << "nothing is left to join";
    EXPECT_EQ(records_of(course), (std::vector<common::Int16>{1, 2, 3}));
}

TEST_F(HistoryVerb, joins_the_history_of_the_old_path_to_none)
{
    append(old_course, deleted(0, 1));
    EXPECT_EQ(run({"history", "--adopt=" + old_course, course}), 0);
    EXPECT_EQ(out, "1 line of the history of " + old_course + " joined to that of " + course + ".\n");
    EXPECT_EQ(records_of(course), std::vector<common::Int16>{1});
}

TEST_F(HistoryVerb, does_not_join_a_history_to_itself)
{
    append(course, deleted(0, 1));
    EXPECT_EQ(run({"history", course, "--adopt", folder.file("./verbs.crs")}), 2);
    EXPECT_EQ(err, "cuedrill-course: The old path is that of the course itself.\n");
    EXPECT_EQ(records_of(course), std::vector<common::Int16>{1});
}

} // namespace
} // namespace cuedrill::tools
