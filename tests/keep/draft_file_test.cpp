#include "common/errors.h"
#include "fakes/fake_files.h"
#include "fakes/temp_folder.h"
#include "keep/draft_file.h"
#include "keep/removed_entry.h"
#include "platform/system/system_files.h"

#include <csignal>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace cuedrill::keep {
namespace {

constexpr const char* mark = "\xEF\xBB\xBF";
constexpr const char* removed_path = "/data/removed.txt";
constexpr const char* first_draft = "/data/draft-1.txt";
constexpr const char* first_lock = "/data/draft-1.lock";
constexpr const char* second_draft = "/data/draft-2.txt";

std::string entry(const std::string& text)
{
    return "/*/ typed\r\n@Q@\r\n" + text + "\r\n@A@\r\n\r\n\r\n" + std::string(entry_end);
}

class Draft : public testing::Test {
protected:
    std::string words(const std::function<void()>& action)
    {
        try {
            action();
        } catch (const common::Error& error) {
            return error.what();
        }
        return "";
    }

    /// A draft that a process has left behind.
    void leave_behind(const std::string& path = first_draft)
    {
        files.folders.insert("/data");
        files.files[path] = mark + entry("left");
    }

    void expect_left(const std::string& path = first_draft)
    {
        EXPECT_TRUE(files.files.contains(path));
        EXPECT_FALSE(files.files.contains(removed_path));
        EXPECT_TRUE(files.held.empty());
    }

    fakes::FakeFiles files;
    RemovedFile removed{files, "/data"};
    DraftFile draft{files, "/data"};
};

using LeftDraft = Draft;

TEST_F(Draft, is_replaced_by_the_next_one)
{
    draft.write(entry("a"));
    EXPECT_TRUE(files.folders.contains("/data"));
    EXPECT_EQ(files.files[first_draft], mark + entry("a"));
    EXPECT_TRUE(files.held.contains(first_lock));
    draft.write(entry("b"));
    EXPECT_EQ(files.files[first_draft], mark + entry("b"));
    EXPECT_FALSE(files.files.contains(second_draft));
}

TEST_F(Draft, is_removed_with_its_lock)
{
    draft.remove();
    EXPECT_TRUE(files.files.empty());
    draft.write(entry("a"));
    draft.remove();
    EXPECT_TRUE(files.files.empty());
    EXPECT_TRUE(files.held.empty());
}

TEST_F(Draft, has_a_number_that_nobody_uses)
{
    files.held_elsewhere.insert(first_lock);
    leave_behind(second_draft);
    draft.write(entry("a"));
    EXPECT_EQ(files.files["/data/draft-3.txt"], mark + entry("a"));
    EXPECT_EQ(files.files[second_draft], mark + entry("left"));
    EXPECT_EQ(files.held, std::set<std::string>{"/data/draft-3.lock"});
}

TEST_F(Draft, that_is_left_stays_locked)
{
    draft.leave();
    draft.write(entry("a"));
    draft.leave();
    draft.write(entry("b"));
    EXPECT_EQ(files.files[first_draft], mark + entry("a"));
    EXPECT_EQ(files.files[second_draft], mark + entry("b"));
    EXPECT_EQ(draft.move_left_drafts(removed).kept, 0);
    draft.remove();
    EXPECT_EQ(files.files[first_draft], mark + entry("a"));
}

TEST_F(Draft, tells_why_it_cannot_be_written)
{
    draft.write(entry("a"));
    files.finish_failure = "Cannot write /data/draft-1.txt: No space left on device.";
    EXPECT_EQ(words([&] { draft.write(entry("b")); }), files.finish_failure);
    EXPECT_EQ(files.files[first_draft], mark + entry("a"));
    files.finish_failure.clear();
    files.remove_failure = "Cannot remove /data/draft-1.txt: Permission denied.";
    EXPECT_EQ(words([&] { draft.remove(); }), files.remove_failure);
    files.remove_failure.clear();
    draft.remove();
    EXPECT_FALSE(files.files.contains(first_draft));
    EXPECT_FALSE(files.files.contains(first_lock));
    files.hold_failure = "Cannot lock /data/draft-1.lock: Permission denied.";
    EXPECT_EQ(words([&] { draft.write(entry("b")); }), files.hold_failure);
    files.create_folder_failure = "Cannot create the folder /data: Permission denied.";
    EXPECT_EQ(words([&] { draft.write(entry("b")); }), files.create_folder_failure);
    EXPECT_FALSE(files.files.contains(first_draft));
}

TEST_F(Draft, is_not_written_where_it_could_not_be_locked)
{
    files.has_locks = false;
    EXPECT_EQ(words([&] { draft.write(entry("a")); }), "Cannot lock /data/draft-1.lock: the file system has no locks.");
    EXPECT_FALSE(files.files.contains(first_draft));
}

TEST_F(Draft, is_not_written_beside_very_many)
{
    for (int i = 1; i <= 100; ++i)
        leave_behind("/data/draft-" + std::to_string(i) + ".txt");
    EXPECT_EQ(words([&] { draft.write(entry("a")); }), "Cannot write a draft in /data: there are too many of them.");
}

TEST_F(LeftDraft, moves_into_the_file)
{
    leave_behind();
    leave_behind("/data/draft-12.txt");
    const LeftDrafts moved = draft.move_left_drafts(removed);
    EXPECT_EQ(moved.kept, 2);
    EXPECT_TRUE(moved.failures.empty());
    EXPECT_EQ(files.files[removed_path], mark + entry("left") + entry("left"));
    EXPECT_FALSE(files.files.contains(first_draft));
    EXPECT_FALSE(files.files.contains(first_lock));
    EXPECT_EQ(files.journal, (std::vector<std::string>{"append /data/removed.txt", "remove /data/draft-1.txt",
                                                       "remove /data/draft-1.lock", "append /data/removed.txt",
                                                       "remove /data/draft-12.txt", "remove /data/draft-12.lock"}));
    EXPECT_EQ(draft.move_left_drafts(removed).kept, 0);
}

TEST_F(LeftDraft, stays_while_its_process_runs)
{
    leave_behind();
    files.held_elsewhere.insert(first_lock);
    EXPECT_EQ(draft.move_left_drafts(removed).kept, 0);
    expect_left();
}

TEST_F(LeftDraft, stays_where_nobody_can_tell_whether_its_process_runs)
{
    leave_behind();
    files.has_locks = false;
    EXPECT_EQ(draft.move_left_drafts(removed).kept, 0);
    expect_left();
}

TEST_F(LeftDraft, stays_when_it_cannot_be_appended)
{
    leave_behind();
    files.durable_append_failure = "Cannot write /data/removed.txt: No space left on device.";
    const LeftDrafts moved = draft.move_left_drafts(removed);
    EXPECT_EQ(moved.kept, 0);
    EXPECT_EQ(moved.failures, std::vector{files.durable_append_failure});
    expect_left();
}

TEST_F(LeftDraft, is_kept_again_when_it_cannot_be_removed)
{
    leave_behind();
    files.remove_failure = "Cannot remove /data/draft-1.txt: Permission denied.";
    EXPECT_EQ(draft.move_left_drafts(removed).failures, std::vector{files.remove_failure});
    EXPECT_EQ(files.files[removed_path], mark + entry("left"));
    EXPECT_TRUE(files.files.contains(first_draft));
}

TEST_F(LeftDraft, is_kept_also_when_a_full_file_cannot_be_renamed)
{
    leave_behind();
    files.files[removed_path] = "no entry";
    files.rename_failure = "Cannot rename /data/removed.txt: Permission denied.";
    const LeftDrafts moved = draft.move_left_drafts(removed);
    EXPECT_EQ(moved.kept, 1);
    EXPECT_EQ(moved.failures, std::vector{files.rename_failure});
    EXPECT_FALSE(files.files.contains(first_draft));
}

TEST_F(LeftDraft, of_another_kind_is_left_alone)
{
    files.folders.insert("/data");
    for (const char* name : {"draft-.txt", "draft-1a.txt", "draft-1.text", "my draft-1.txt",
                             "draft-1.txt.cuedrill-part", "draft-txt", "removed.1.txt"})
        files.files[std::string("/data/") + name] = mark + entry("left");
    files.files[first_draft] = "My shopping list";
    files.files[second_draft] = mark + entry("left") + "more";
    files.files["/data/draft-3.txt"] = entry("left");
    const auto before = files.files;
    EXPECT_EQ(draft.move_left_drafts(removed).kept, 0);
    for (const auto& [path, contents] : before)
        EXPECT_EQ(files.files[path], contents);
    EXPECT_FALSE(files.files.contains(removed_path));
}

TEST_F(LeftDraft, is_not_looked_for_in_a_folder_that_is_missing)
{
    EXPECT_TRUE(draft.move_left_drafts(removed).failures.empty());
    EXPECT_TRUE(files.files.empty());
    files.folders.insert("/data");
    files.names_failure = "Cannot read the folder /data: Permission denied.";
    EXPECT_EQ(draft.move_left_drafts(removed).failures, std::vector{files.names_failure});
}

/// A draft that another process writes.
class OtherProcess : public testing::Test {
protected:
    void SetUp() override
    {
        int ends[2] = {};
        ASSERT_EQ(::pipe(ends), 0);
        child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            platform::system::SystemFiles own;
            DraftFile other(own, folder.path().string());
            other.write(entry("a"));
            const bool told = ::write(ends[1], "x", 1) == 1;
            while (told)
                ::pause();
            ::_exit(1);
        }
        ::close(ends[1]);
        char byte = 0;
        ASSERT_EQ(::read(ends[0], &byte, 1), 1);
        ::close(ends[0]);
    }

    void TearDown() override { kill(); }

    void kill()
    {
        if (child <= 0)
            return;
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        child = 0;
    }

    [[nodiscard]] std::string contents(const std::string& name) const
    {
        std::ifstream file(folder.file(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    pid_t child = 0;
    fakes::TempFolder folder;
    platform::system::SystemFiles files;
    RemovedFile removed{files, folder.path().string()};
    DraftFile draft{files, folder.path().string()};
};

TEST_F(OtherProcess, keeps_its_draft_while_it_runs)
{
    EXPECT_EQ(draft.move_left_drafts(removed).kept, 0);
    draft.write(entry("b"));
    EXPECT_EQ(contents("draft-1.txt"), mark + entry("a"));
    EXPECT_EQ(contents("draft-2.txt"), mark + entry("b"));
}

TEST_F(OtherProcess, leaves_its_draft_when_it_is_killed)
{
    kill();
    const LeftDrafts moved = draft.move_left_drafts(removed);
    EXPECT_EQ(moved.kept, 1);
    EXPECT_TRUE(moved.failures.empty());
    EXPECT_EQ(contents("removed.txt"), mark + entry("a"));
    EXPECT_EQ(files.names_in(folder.path().string()), (std::vector<std::string>{"removed.lock", "removed.txt"}));
}

} // namespace
} // namespace cuedrill::keep
