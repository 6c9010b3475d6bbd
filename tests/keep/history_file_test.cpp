#include "common/errors.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_files.h"
#include "fakes/temp_folder.h"
#include "keep/history_file.h"
#include "platform/system/system_directories.h"
#include "platform/system/system_files.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace cuedrill::keep {
namespace {

using namespace std::chrono_literals;

/// Histories in memory.
class Histories : public testing::Test {
protected:
    /// A line about a deletion, so many seconds after the start.
    [[nodiscard]] HistoryEvent event(int seconds, common::Int16 record = 1) const
    {
        return {.time = common::DateTime::from_seconds(clock.time.seconds() + seconds),
                .kind = HistoryKind::deleted,
                .record = record};
    }
    [[nodiscard]] std::string line(int seconds, common::Int16 record = 1) const
    {
        return to_line(event(seconds, record)) + "\n";
    }

    static std::string words(const std::function<void()>& operation)
    {
        try {
            operation();
        } catch (const common::Error& error) {
            return error.what();
        }
        return "";
    }

    static constexpr const char* path = "/data/history/verbs-0.csv";
    static constexpr const char* old_path = "/data/history/old-0.csv";
    static constexpr const char* lock = "/data/history/history.lock";
    static constexpr const char* held_words = "Cannot write /data/history/verbs-0.csv: another program is writing it.";

    const std::string header = history_header() + "\n";
    fakes::FakeClock clock;
    fakes::FakeFiles files;
    HistoryFile history{files, path};
};

using Appending = Histories;
using Reading = Histories;
using Adopting = Histories;

TEST(HistoryPath, depends_on_the_full_path)
{
    const fakes::TempFolder folder;
    const platform::system::SystemDirectories folders;
    const std::string course = folder.write("verbs.crs", "");
    std::filesystem::create_symlink(course, folder.file("link.crs"));
    const std::string found = history_path(folders, "/data", course);
    EXPECT_EQ(found.substr(0, 20), "/data/history/verbs-");
    EXPECT_EQ(found.substr(36), ".csv");
    EXPECT_EQ(history_path(folders, "/data", folder.file("./link.crs")), found);
    EXPECT_NE(history_path(folders, "/data", folder.file("other/verbs.crs")), found);
}

TEST_F(Appending, begins_with_the_header_and_grows)
{
    history.append(event(0));
    EXPECT_TRUE(files.folders.contains("/data/history"));
    EXPECT_EQ(files.files[path], header + line(0));
    history.append(event(1));
    history.append_last(event(2));
    EXPECT_EQ(files.files[path], header + line(0) + line(1) + line(2));
    EXPECT_TRUE(files.held.empty());
}

TEST_F(Appending, begins_on_a_new_line_behind_one_that_was_cut_off)
{
    files.files[path] = header + line(0) + line(1).substr(0, 30);
    history.append(event(2));
    EXPECT_EQ(files.files[path], header + line(0) + line(1).substr(0, 30) + "\n" + line(2));
}

TEST_F(Appending, keeps_a_line_while_another_program_writes)
{
    files.held_elsewhere.insert(lock);
    history.append(event(0));
    history.append(event(1));
    EXPECT_FALSE(files.files.contains(path));
    files.held_elsewhere.clear();
    history.append(event(2));
    EXPECT_EQ(files.files[path], header + line(0) + line(1) + line(2));
    history.append(event(3));
    EXPECT_EQ(files.files[path], header + line(0) + line(1) + line(2) + line(3));
}

TEST_F(Appending, tells_at_the_last_line_that_another_program_writes)
{
    files.held_elsewhere.insert(lock);
    history.append(event(0));
    EXPECT_EQ(words([&] { history.append_last(event(1)); }), held_words);
}

TEST_F(Appending, writes_on_a_file_system_without_locks)
{
    files.has_locks = false;
    files.held_elsewhere.insert(lock);
    history.append(event(0));
    EXPECT_EQ(files.files[path], header + line(0));
}

TEST_F(Appending, tells_why_it_cannot_write_and_goes_on_when_it_can)
{
    files.create_folder_failure = "no folder";
    EXPECT_EQ(words([&] { history.append(event(0)); }), "no folder");
    files.create_folder_failure.clear();
    files.hold_failure = "no lock";
    EXPECT_EQ(words([&] { history.append(event(1)); }), "no lock");
    files.hold_failure.clear();
    files.line_append_failure = "no room";
    EXPECT_EQ(words([&] { history.append(event(2)); }), "no room");
    files.line_append_failure.clear();
    files.folders.clear();
    history.append(event(3));
    EXPECT_EQ(files.files[path], header + line(3));
    EXPECT_TRUE(files.folders.contains("/data/history")) << "it may have been removed meanwhile";
}

TEST_F(Appending, creates_the_folder_once)
{
    history.append(event(0));
    files.create_folder_failure = "not again";
    EXPECT_EQ(words([&] { history.append(event(1)); }), "");
}

/// Two windows on one course, and a tool that joins another history to it.
TEST(RealAppending, of_several_programs_leaves_whole_lines)
{
    const fakes::TempFolder folder;
    const std::string path = folder.file("data/history/verbs-0.csv");
    constexpr int lines = 200;
    const auto write = [&path](common::Int16 record) {
        platform::system::SystemFiles files;
        HistoryFile history(files, path);
        for (int i = 0; i < lines; ++i)
            history.append({.kind = HistoryKind::deleted, .record = record});
        history.append_last({.kind = HistoryKind::closed, .score = record});
    };
    {
        std::vector<std::jthread> writers;
        for (const common::Int16 record : {common::Int16{1}, common::Int16{2}, common::Int16{3}})
            writers.emplace_back(write, record);
    }
    const platform::system::SystemFiles files;
    const History history = read_history(files, path);
    EXPECT_EQ(history.unreadable, 0);
    EXPECT_EQ(history.events.size(), 3U * (lines + 1));
    EXPECT_EQ(std::filesystem::status(path).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST(RealAppending, while_histories_are_joined_loses_no_line)
{
    const fakes::TempFolder folder;
    platform::system::SystemFiles files;
    const std::string path = folder.file("data/history/verbs-0.csv");
    const std::string old_path = folder.file("data/history/old-0.csv");
    constexpr common::Int16 rounds = 20;
    constexpr common::Int16 lines = 300;
    std::jthread writer([&path] {
        platform::system::SystemFiles own;
        HistoryFile history(own, path);
        for (common::Int16 i = 1; i <= lines; ++i)
            history.append({.kind = HistoryKind::deleted, .record = i});
        history.append_last({.kind = HistoryKind::closed});
    });
    for (common::Int16 i = 1; i <= rounds; ++i) {
        HistoryFile(files, old_path).append_last({.kind = HistoryKind::added, .record = i});
        EXPECT_EQ(adopt_history(files, old_path, path), 1);
    }
    writer.join();
    const History history = read_history(files, path);
    EXPECT_EQ(history.unreadable, 0);
    EXPECT_EQ(history.events.size(), static_cast<std::size_t>(rounds) + lines + 1);
}

TEST_F(Reading, gives_each_line_with_its_place)
{
    files.files[path] = header + line(0) + "\n" + "nonsense\n" + header + line(1).substr(0, 30) + "\n" + line(2);
    std::vector<std::int64_t> places;
    std::vector<bool> readable;
    read_history(files, path, [&](const HistoryLine& found) {
        places.push_back(found.place);
        readable.push_back(found.event.has_value());
    });
    EXPECT_EQ(places, (std::vector<std::int64_t>{2, 4, 6, 7}));
    EXPECT_EQ(readable, (std::vector<bool>{true, false, false, true}));
    const History found = read_history(files, path);
    EXPECT_EQ(found.events, (std::vector<HistoryEvent>{event(0), event(2)}));
    EXPECT_EQ(found.unreadable, 2);
}

TEST_F(Reading, takes_a_whole_last_line_without_its_end)
{
    files.files[path] = header + to_line(event(0));
    EXPECT_EQ(read_history(files, path).events, std::vector<HistoryEvent>{event(0)});
}

TEST_F(Reading, goes_on_behind_a_piece_of_the_file)
{
    std::string text = header;
    std::vector<HistoryEvent> expected;
    for (int i = 0; text.size() < 200'000; ++i) {
        text += line(i);
        expected.push_back(event(i));
    }
    files.files[path] = text;
    EXPECT_EQ(read_history(files, path).events, expected);
}

TEST_F(Reading, tells_why_it_cannot_read)
{
    files.files[path] = header;
    files.read_failure = "no reading";
    EXPECT_EQ(words([&] { static_cast<void>(read_history(files, path)); }), "no reading");
}

TEST_F(Adopting, joins_the_lines_in_order_of_time)
{
    files.files[old_path] = header + line(0) + line(5) + line(7);
    files.files[path] = header + line(2) + line(5, 2) + line(9);
    EXPECT_EQ(adopt_history(files, old_path, path), 3);
    EXPECT_EQ(files.files[path], header + line(0) + line(2) + line(5) + line(5, 2) + line(7) + line(9));
    EXPECT_FALSE(files.exists(old_path));
    EXPECT_TRUE(files.held.empty());
}

TEST_F(Adopting, renames_the_old_one_where_there_is_no_other)
{
    files.files[old_path] = header + line(0) + "torn";
    EXPECT_EQ(adopt_history(files, old_path, path), 2);
    EXPECT_EQ(files.files[path], header + line(0) + "torn");
    EXPECT_FALSE(files.exists(old_path));
}

TEST_F(Adopting, keeps_lines_that_cannot_be_read_behind_those_before_them)
{
    files.files[old_path] = header + line(0) + "nonsense\n" + line(6);
    files.files[path] = header + "mine\n" + line(3) + line(8).substr(0, 30);
    EXPECT_EQ(adopt_history(files, old_path, path), 3);
    EXPECT_EQ(files.files[path],
              header + "mine\n" + line(0) + "nonsense\n" + line(3) + line(8).substr(0, 30) + "\n" + line(6));
}

TEST_F(Adopting, adds_no_line_twice_when_it_was_interrupted)
{
    // The old one has the same line twice, and has got another one since.
    files.files[old_path] = header + line(0) + line(0) + line(5);
    files.files[path] = header + line(3);
    files.remove_failure = "no removing";
    EXPECT_EQ(words([&] { adopt_history(files, old_path, path); }), "no removing");
    files.remove_failure.clear();
    const std::string joined = header + line(0) + line(0) + line(3) + line(5);
    EXPECT_EQ(files.files[path], joined);
    files.files[old_path] += line(9);
    EXPECT_EQ(adopt_history(files, old_path, path), 1);
    EXPECT_EQ(files.files[path], joined + line(9));
    EXPECT_FALSE(files.exists(old_path));
}

TEST_F(Adopting, that_fails_loses_nothing)
{
    const std::string before = header + line(3);
    const std::string old = header + line(0);
    for (std::string fakes::FakeFiles::*const failure :
         {&fakes::FakeFiles::hold_failure, &fakes::FakeFiles::read_failure, &fakes::FakeFiles::replacement_failure,
          &fakes::FakeFiles::write_failure, &fakes::FakeFiles::finish_failure}) {
        files.files[path] = before;
        files.files[old_path] = old;
        files.*failure = "it fails";
        EXPECT_EQ(words([&] { adopt_history(files, old_path, path); }), "it fails");
        EXPECT_EQ(files.files[path], before);
        EXPECT_EQ(files.files[old_path], old);
        (files.*failure).clear();
    }
    files.held_elsewhere.insert(lock);
    EXPECT_EQ(words([&] { adopt_history(files, old_path, path); }), held_words);
    EXPECT_EQ(files.files[old_path], old);
    files.held_elsewhere.clear();
    files.files.erase(path);
    files.rename_failure = "no renaming";
    EXPECT_EQ(words([&] { adopt_history(files, old_path, path); }), "no renaming");
    EXPECT_EQ(files.files[old_path], old);
}

} // namespace
} // namespace cuedrill::keep
