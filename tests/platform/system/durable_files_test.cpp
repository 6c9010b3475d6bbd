#include "files_support.h"

#include <atomic>
#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace cuedrill::platform::system {
namespace {

using namespace std::chrono_literals;

using ReadingFromAPlace = FilesTest;
using DurableAppending = FilesTest;
using AppendingLines = FilesTest;
using Renaming = FilesTest;
using Removing = FilesTest;
using Listing = FilesTest;

TEST_F(ReadingFromAPlace, LeavesOutBytes)
{
    const auto file = files.begin_reading(folder.write("ten", "0123456789"), 10);
    EXPECT_EQ(file->read(2), "01");
    file->go_to(7);
    EXPECT_EQ(file->read(20), "789");
    file->go_to(11);
    EXPECT_EQ(file->read(20), "");
}

TEST_F(DurableAppending, CreatesAMissingFileAndThenAddsToIt)
{
    const std::string path = folder.file("removed.txt");
    files.append_durably(path, "one\r\n");
    files.append_durably(path, std::string("\0two", 4));
    EXPECT_EQ(folder.read("removed.txt"), std::string("one\r\n\0two", 9));
    EXPECT_EQ(std::filesystem::status(path).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST_F(DurableAppending, LeavesTheFileAsItWasWhenTheDiskIsFull)
{
    const std::string path = folder.write("removed.txt", "12345678");
    std::string error;
    {
        const FileSizeLimit limit(10);
        error = words([&] { files.append_durably(path, "line"); });
    }
    EXPECT_EQ(error, "Cannot write " + path + ": File too large.");
    EXPECT_EQ(folder.read("removed.txt"), "12345678");
}

TEST_F(DurableAppending, NamesThePathAndTheReasonOfAnError)
{
    const std::string below_missing = folder.file("missing/removed.txt");
    const std::string directory = folder.path().string();
    EXPECT_EQ(words([&] { files.append_durably(below_missing, "x"); }),
              "Cannot write " + below_missing + ": No such file or directory.");
    EXPECT_EQ(words([&] { files.append_durably(directory, "x"); }), "Cannot write " + directory + ": Is a directory.");
    EXPECT_EQ(words([&] { files.append_durably("", "x"); }), "Cannot write : Invalid argument.");
}

TEST_F(AppendingLines, BeginsANewOrEmptyFileWithItsFirstLine)
{
    const std::string path = folder.file("history.csv");
    files.append_lines(path, "head\n", "one\n");
    files.append_lines(path, "head\n", "two\nthree\n");
    EXPECT_EQ(folder.read("history.csv"), "head\none\ntwo\nthree\n");
    EXPECT_EQ(std::filesystem::status(path).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    files.append_lines(folder.write("empty", ""), "head\n", "one\n");
    EXPECT_EQ(folder.read("empty"), "head\none\n");
}

TEST_F(AppendingLines, BeginOnANewLineBehindOneThatWasCutOff)
{
    const std::string path = folder.write("history.csv", "head\none\ntw");
    files.append_lines(path, "head\n", "three\n");
    EXPECT_EQ(folder.read("history.csv"), "head\none\ntw\nthree\n");
}

TEST_F(AppendingLines, TellThatTheDiskIsFullAndGoOnWhenItIsNot)
{
    const std::string path = folder.write("history.csv", "head\none\n");
    std::string error;
    {
        const FileSizeLimit limit(12); // behind "tw"
        error = words([&] { files.append_lines(path, "head\n", "two\nthree\n"); });
    }
    EXPECT_EQ(error, "Cannot write " + path + ": File too large.");
    files.append_lines(path, "head\n", "four\n");
    EXPECT_EQ(folder.read("history.csv"), "head\none\ntwo\nfour\n");
}

TEST_F(AppendingLines, NameThePathAndTheReasonOfAnError)
{
    const std::string below_missing = folder.file("missing/history.csv");
    EXPECT_EQ(words([&] { files.append_lines(below_missing, "", "x\n"); }),
              "Cannot write " + below_missing + ": No such file or directory.");
    const std::string directory = folder.path().string();
    EXPECT_EQ(words([&] { files.append_lines(directory, "", "x\n"); }),
              "Cannot write " + directory + ": Is a directory.");
    const std::string pipe = make_pipe();
    EXPECT_EQ(words([&] { files.append_lines(pipe, "", "x\n"); }),
              "Cannot write " + pipe + ": it is not a regular file.");
}

TEST_F(Renaming, NeverReplacesAFile)
{
    const std::string from = folder.write("a", "old");
    const std::string taken = folder.write("b", "other");
    EXPECT_EQ(words([&] { files.rename_to_free_name(from, taken); }), "Cannot rename " + from + ": File exists.");
    EXPECT_EQ(folder.read("a"), "old");
    EXPECT_EQ(folder.read("b"), "other");
    files.rename_to_free_name(from, folder.file("c"));
    EXPECT_FALSE(files.exists(from));
    EXPECT_EQ(folder.read("c"), "old");
}

TEST_F(Renaming, NamesThePathAndTheReasonOfAnError)
{
    const std::string missing = folder.file("missing");
    EXPECT_EQ(words([&] { files.rename_to_free_name(missing, folder.file("b")); }),
              "Cannot rename " + missing + ": No such file or directory.");
    EXPECT_EQ(words([&] { files.rename_to_free_name("", folder.file("b")); }), "Cannot rename : Invalid argument.");
    EXPECT_EQ(words([&] { files.rename_to_free_name(missing, ""); }),
              "Cannot rename " + missing + ": Invalid argument.");
}

TEST_F(Removing, AcceptsAMissingFileOnly)
{
    const std::string path = folder.write("a", "x");
    files.remove(path);
    EXPECT_FALSE(files.exists(path));
    files.remove(path);
    const std::string directory = folder.path().string();
    EXPECT_EQ(words([&] { files.remove(directory); }), "Cannot remove " + directory + ": Is a directory.");
    EXPECT_EQ(words([&] { files.remove(""); }), "Cannot remove : Invalid argument.");
}

TEST_F(Listing, NamesEverythingInOrder)
{
    folder.write("b", "");
    folder.write("a", "");
    folder.write(".hidden", "");
    std::filesystem::create_directory(folder.file("folder"));
    EXPECT_EQ(files.names_in(folder.path().string()), (std::vector<std::string>{".hidden", "a", "b", "folder"}));
    const std::string missing = folder.file("missing");
    EXPECT_EQ(words([&] { static_cast<void>(files.names_in(missing)); }),
              "Cannot read the folder " + missing + ": No such file or directory.");
}

class Holding : public FilesTest {
protected:
    [[nodiscard]] std::unique_ptr<FileHold> hold(std::chrono::milliseconds patience = 0ms)
    {
        return files.hold(path, patience);
    }

    std::string path = folder.file("lock");
};

TEST_F(Holding, IsForOneAtATime)
{
    std::unique_ptr<FileHold> first = hold();
    ASSERT_NE(first, nullptr);
    EXPECT_TRUE(first->is_sure());
    EXPECT_EQ(hold(), nullptr);
    EXPECT_EQ(hold(1ms), nullptr);
    first.reset();
    EXPECT_NE(hold(), nullptr);
}

TEST_F(Holding, IsOfTheFileThatHasTheName)
{
    const std::unique_ptr<FileHold> first = hold();
    files.remove(path);
    const std::unique_ptr<FileHold> second = hold();
    ASSERT_NE(second, nullptr) << "the first holder has removed its file";
    EXPECT_EQ(hold(), nullptr);
}

// The holder removes the file while the other thread waits, as a program does that ends its draft.
TEST_F(Holding, IsWaitedFor)
{
    std::unique_ptr<FileHold> first = hold();
    std::atomic<bool> waits = false;
    std::unique_ptr<FileHold> second;
    std::thread other([&] {
        waits = true;
        second = files.hold(path, 1h);
    });
    while (!waits)
        std::this_thread::yield();
    files.remove(path);
    first.reset();
    other.join();
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(hold(), nullptr) << "the second hold is of the file that has the name now";
}

// A file that is opened just before its holder removes it is not the one that the next holder locks.
TEST_F(Holding, IsForOneAtATimeAlsoWhereEachRemovesTheFile)
{
    constexpr int turns = 2000;
    std::atomic<int> holders = 0;
    std::atomic<int> most = 0;
    const auto take_turns = [&] {
        for (int turn = 0; turn < turns; ++turn) {
            const std::unique_ptr<FileHold> held = files.hold(path, 0ms);
            if (!held)
                continue;
            if (++holders > 1)
                most = 2;
            std::this_thread::yield();
            --holders;
            files.remove(path);
        }
    };
    std::thread second(take_turns);
    std::thread third(take_turns);
    take_turns();
    second.join();
    third.join();
    EXPECT_EQ(most, 0);
}

TEST_F(Holding, NamesThePathAndTheReasonOfAnError)
{
    path = folder.file("missing/lock");
    EXPECT_EQ(words([&] { static_cast<void>(hold()); }), "Cannot lock " + path + ": No such file or directory.");
    path = "";
    EXPECT_EQ(words([&] { static_cast<void>(hold()); }), "Cannot lock : Invalid argument.");
}

} // namespace
} // namespace cuedrill::platform::system
