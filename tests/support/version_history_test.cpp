#include "common/text.h"
#include "support/version_entries.h"
#include "support/version_history.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <string>
#include <vector>

namespace cuedrill::support {
namespace {

std::vector<std::string> lines_of(const std::string& text)
{
    std::vector<std::string> lines;
    std::size_t begin = 0;
    for (std::size_t end = 0; end != std::string::npos; begin = end + common::cr_lf.size()) {
        end = text.find(common::cr_lf, begin);
        lines.push_back(text.substr(begin, end - begin));
    }
    return lines;
}

/// A parsed entry; `number` is empty for any other line.
struct Entry {
    std::string number;
    std::string date;
    int change = 0;
};

Entry entry_of(std::string_view line)
{
    static const std::regex form(R"((\d\d)\^(\d{6})\.([1-9]\d*)\) [FIN]: [ -~]*[!-~])");
    std::match_results<std::string_view::const_iterator> part;
    if (!std::regex_match(line.begin(), line.end(), part, form))
        return {};
    return {.number = part[1], .date = part[2], .change = std::stoi(part[3])};
}

std::string separator(const std::string& number)
{
    return std::string(25, '-') + " VERSION 3.0." + number + " " + std::string(29, '-');
}

TEST(NewestVersion, is_the_number_and_date_of_the_first_entry)
{
    EXPECT_EQ(newest_version("03^040404.3) N: Something new."), "3.0.03 (04/Apr/2004)");
    EXPECT_EQ(newest_version("28^031130.2) I: Maximum target level is now 10.\r\n27^031129.1) F: Older."),
              "3.0.28 (30/Nov/2003)");
    EXPECT_EQ(newest_version("99^991231.10) F: The last one."), "3.0.99 (31/Dec/2099)");
}

TEST(VersionHistory, has_an_entry_to_a_line_and_says_where_it_ends)
{
    const std::vector<std::string> lines = lines_of(version_history_text(false));
    ASSERT_EQ(lines.size(), version_entries.size() + 1);
    EXPECT_TRUE(std::equal(version_entries.begin(), version_entries.end(), lines.begin()));
    EXPECT_EQ(lines.back(), "[end of version history]");
}

TEST(VersionHistory, has_entries_in_their_form_numbered_down_to_one)
{
    int number =
        static_cast<int>(std::count_if(version_entries.begin(), version_entries.end(),
                                       [](std::string_view line) { return line.find('^') != std::string_view::npos; }));
    for (const std::string_view line : version_entries) {
        if (line.starts_with("--"))
            continue;
        const Entry entry = entry_of(line);
        ASSERT_FALSE(entry.number.empty()) << line;
        EXPECT_EQ(std::stoi(entry.number), number--) << line;
    }
    EXPECT_EQ(number, 0);
}

TEST(VersionHistory, counts_the_changes_of_each_date)
{
    std::map<std::string, int> changes;
    std::string earlier;
    const std::vector<std::string_view> oldest_first(version_entries.rbegin(), version_entries.rend());
    for (const std::string_view line : oldest_first) {
        const Entry entry = entry_of(line);
        if (entry.number.empty())
            continue;
        EXPECT_GE(entry.date, earlier) << line;
        EXPECT_EQ(entry.change, ++changes[entry.date]) << line;
        earlier = entry.date;
    }
}

TEST(VersionHistory, closes_each_release_with_the_version_of_its_newest_entry)
{
    std::string newest;
    for (const std::string_view line : version_entries) {
        const Entry entry = entry_of(line);
        if (entry.number.empty()) {
            EXPECT_EQ(line, separator(newest));
            newest.clear();
        } else if (newest.empty()) {
            newest = entry.number;
        }
    }
    EXPECT_EQ(newest, "") << "a release is not closed";
}

TEST(ProgramVersion, is_that_of_the_newest_entry)
{
    EXPECT_EQ(program_version(), newest_version(version_history_text(false)));
    EXPECT_EQ(program_version(), version_history_text(true));
}

TEST(ProgramVersion, is_the_one_that_the_build_knows)
{
    EXPECT_EQ(program_version().substr(0, program_version().find(' ')), CUEDRILL_VERSION);
}

TEST(ProgramVersion, is_the_last_one_that_the_changelog_tells_of)
{
    std::ifstream changelog(CHANGELOG);
    std::string line;
    while (std::getline(changelog, line) && (!line.starts_with("## ") || line == "## [Unreleased]"))
        continue;
    EXPECT_TRUE(line.starts_with("## [" CUEDRILL_VERSION "] - ")) << line;
}

TEST(ReleaseNotes, stand_above_the_history)
{
    const std::string heading = "         CUEDRILL VERSION HISTORY \r\n"
                                "\r\n"
                                "Current version is " +
                                program_version() +
                                "\r\n"
                                "\r\n"
                                "It includes the following changes (F = bug fixed, I = improvement, N = new "
                                "function)\r\n" +
                                std::string(84, '-') + "\r\n";
    EXPECT_EQ(release_notes_text(), heading + version_history_text(false));
}

} // namespace
} // namespace cuedrill::support
