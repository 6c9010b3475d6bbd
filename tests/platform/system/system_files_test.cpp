#include "files_support.h"

#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace cuedrill::platform::system {
namespace {

constexpr std::uint64_t no_limit = 1U << 30U;

class SystemFilesTest : public FilesTest {
protected:
    /// All bytes of the file, read in pieces of `most`.
    [[nodiscard]] std::string contents(const std::string& path, std::uint64_t longest = no_limit,
                                       std::size_t most = 65536) const
    {
        const auto file = files.begin_reading(path, longest);
        std::string all;
        for (std::string piece = file->read(most); !piece.empty(); piece = file->read(most)) {
            EXPECT_LE(piece.size(), most);
            all += piece;
        }
        return all;
    }

    [[nodiscard]] std::string read_words(const std::string& path, std::uint64_t longest = no_limit) const
    {
        return words([&] { static_cast<void>(contents(path, longest)); });
    }

    [[nodiscard]] std::string append_words(const std::string& path)
    {
        return words([&] { files.append_below(path, no_limit, "line"); });
    }
};

using Existence = SystemFilesTest;
using Absolute = SystemFilesTest;
using Reading = SystemFilesTest;
using Appending = SystemFilesTest;
using Folders = SystemFilesTest;

TEST_F(Existence, CountsFilesFoldersAndEverythingElse)
{
    EXPECT_TRUE(files.exists(folder.write("a.crs", "")));
    EXPECT_TRUE(files.exists(folder.path().string()));
    EXPECT_TRUE(files.exists(make_pipe()));
    EXPECT_TRUE(files.exists("/dev/null"));
}

TEST_F(Existence, IsFalseForEveryError)
{
    const std::string file = folder.write("a", "");
    EXPECT_FALSE(files.exists(""));
    EXPECT_FALSE(files.exists(folder.file("missing")));
    EXPECT_FALSE(files.exists(file + "/below-a-file"));
    EXPECT_FALSE(files.exists(std::string(100000, 'x')));
    EXPECT_FALSE(files.exists(make_link(folder.file("missing"), "dangling")));
    EXPECT_FALSE(files.exists(make_link(folder.file("circle"), "circle")));
    EXPECT_FALSE(files.exists(file + std::string("\0tail", 5))) << "not the name before the zero byte";
}

TEST_F(Existence, OfARegularFileMayBeThroughLinks)
{
    const std::string file = folder.write("a.crs", "x");
    EXPECT_TRUE(files.is_regular_file(file));
    EXPECT_TRUE(files.is_regular_file(make_link(file, "link")));
    EXPECT_FALSE(files.is_regular_file(folder.path().string()));
    EXPECT_FALSE(files.is_regular_file(make_pipe()));
    EXPECT_FALSE(files.is_regular_file("/dev/null"));
    EXPECT_FALSE(files.is_regular_file(""));
    EXPECT_FALSE(files.is_regular_file(folder.file("missing")));
}

TEST_F(Existence, OfAFolderMayBeThroughLinks)
{
    const std::string directory = folder.path().string();
    EXPECT_TRUE(files.is_folder(directory));
    EXPECT_TRUE(files.is_folder(make_link(directory, "link")));
    EXPECT_FALSE(files.is_folder(folder.write("a.crs", "x")));
    EXPECT_FALSE(files.is_folder(make_pipe()));
    EXPECT_FALSE(files.is_folder(""));
    EXPECT_FALSE(files.is_folder(folder.file("missing")));
}

TEST_F(Existence, SameFileIsToldByWhatTheNamesLeadTo)
{
    const std::string file = folder.write("a.crs", "x");
    const std::string twin = folder.write("b.crs", "x");
    const std::string hard = folder.file("hard");
    std::filesystem::create_hard_link(file, hard);
    EXPECT_TRUE(files.is_same_file(file, file));
    EXPECT_TRUE(files.is_same_file(file, make_link(file, "link")));
    EXPECT_TRUE(files.is_same_file(hard, file));
    EXPECT_TRUE(files.is_same_file(file, folder.path().string() + "/./a.crs"));
    EXPECT_FALSE(files.is_same_file(file, twin)) << "equal contents";
    EXPECT_FALSE(files.is_same_file(folder.file("missing"), folder.file("missing")));
    EXPECT_FALSE(files.is_same_file("", ""));
}

TEST_F(Absolute, StartsAtTheWorkingFolder)
{
    const std::string here = std::filesystem::current_path().string();
    EXPECT_EQ(files.absolute("a.crs"), here + "/a.crs");
    EXPECT_EQ(files.absolute("sub/a.crs"), here + "/sub/a.crs");
    EXPECT_EQ(files.absolute("/x/a.crs"), "/x/a.crs");
    EXPECT_EQ(files.absolute(""), "");
}

TEST_F(Absolute, LeavesAPathAloneWhenTheWorkingFolderIsGone)
{
    const KeptWorkingFolder before;
    const std::string gone = folder.file("gone");
    std::filesystem::create_directory(gone);
    std::filesystem::current_path(gone);
    std::filesystem::remove(gone);
    EXPECT_EQ(files.absolute("a.crs"), "a.crs");
}

TEST_F(Reading, GivesEveryByte)
{
    std::string bytes;
    for (int i = 0; i < 200000; ++i)
        bytes += static_cast<char>(i % 256);
    for (const std::size_t most : {1000U, 65536U, 1000000U})
        EXPECT_EQ(contents(folder.write("bytes", bytes), no_limit, most), bytes);
    EXPECT_EQ(contents(folder.write("empty", "")), "");
}

TEST_F(Reading, TellsTheSizeAndCanBeBegunAgain)
{
    const auto file = files.begin_reading(folder.write("ten", "0123456789"), 10);
    EXPECT_EQ(file->size(), 10U);
    EXPECT_EQ(file->read(7), "0123456");
    file->rewind();
    EXPECT_EQ(file->read(20), "0123456789") << "the limit counts from the first byte again";
    EXPECT_EQ(file->read(20), "");
}

TEST_F(Reading, NoticesAFileThatGrowsBeyondTheLongest)
{
    const std::string path = folder.write("ten", "0123456789");
    const auto file = files.begin_reading(path, 10);
    EXPECT_EQ(file->read(10), "0123456789");
    files.append_below(path, no_limit, "x");
    EXPECT_EQ(words([&] { static_cast<void>(file->read(10)); }),
              "Cannot read " + path + ": it is longer than 10 bytes.");
}

TEST_F(Reading, DoesNotRelyOnTheSizeTold)
{
    EXPECT_FALSE(contents("/proc/self/status").empty()) << "its size is told as 0";
}

TEST_F(Reading, AcceptsExactlyTheLongest)
{
    const std::string path = folder.write("ten", "0123456789");
    EXPECT_EQ(contents(path, 10), "0123456789");
    EXPECT_EQ(read_words(path, 9), "Cannot read " + path + ": it is longer than 9 bytes.");
    EXPECT_EQ(contents(folder.write("empty", ""), 0), "");
}

TEST_F(Reading, NamesThePathAndTheReasonOfAnError)
{
    const std::string missing = folder.file("missing");
    const std::string directory = folder.path().string();
    EXPECT_EQ(read_words(missing), "Cannot read " + missing + ": No such file or directory.");
    EXPECT_EQ(read_words(directory), "Cannot read " + directory + ": Is a directory.");
    EXPECT_EQ(read_words(""), "Cannot read : Invalid argument.");
    EXPECT_EQ(read_words(std::string("/dev/null\0x", 11)), std::string("Cannot read /dev/null"));
}

TEST_F(Reading, RefusesPipesAndDevicesAtOnce)
{
    const std::string pipe = make_pipe();
    EXPECT_EQ(read_words(pipe), "Cannot read " + pipe + ": it is not a regular file.");
    EXPECT_EQ(read_words("/dev/zero"), "Cannot read /dev/zero: it is not a regular file.");
}

// The first page of this process's memory is not mapped: the file opens, but reading it fails.
TEST_F(Reading, ReportsAnErrorInTheMiddle)
{
    EXPECT_EQ(read_words("/proc/self/mem"), "Cannot read /proc/self/mem: Input/output error.");
}

TEST_F(Appending, CreatesAMissingFileAndThenAddsToIt)
{
    const std::string path = folder.file("trace.txt");
    EXPECT_TRUE(files.append_below(path, 100, "one\r\n"));
    EXPECT_TRUE(files.append_below(path, 100, "two\r\n"));
    EXPECT_EQ(folder.read("trace.txt"), "one\r\ntwo\r\n");
}

TEST_F(Appending, StopsAtTheLimitNotBefore)
{
    const std::string path = folder.write("trace.txt", "123456789");
    EXPECT_TRUE(files.append_below(path, 10, "abc")) << "one byte below";
    EXPECT_FALSE(files.append_below(path, 12, "def")) << "exactly the limit";
    EXPECT_FALSE(files.append_below(path, 10, "def"));
    EXPECT_EQ(folder.read("trace.txt"), "123456789abc");
}

TEST_F(Appending, NamesThePathAndTheReasonOfAnError)
{
    const std::string below_missing = folder.file("missing/trace.txt");
    const std::string directory = folder.path().string();
    EXPECT_EQ(append_words(below_missing), "Cannot write " + below_missing + ": No such file or directory.");
    EXPECT_EQ(append_words(directory), "Cannot write " + directory + ": Is a directory.");
    EXPECT_EQ(append_words("/dev/null"), "Cannot write /dev/null: it is not a regular file.");
    EXPECT_EQ(append_words(""), "Cannot write : Invalid argument.");
}

TEST_F(Appending, NeverWaitsForTheReaderOfAPipe)
{
    const std::string pipe = make_pipe();
    EXPECT_EQ(append_words(pipe), "Cannot write " + pipe + ": No such device or address.");
}

// The system writes some of the bytes and refuses the rest, like a full disk.
TEST_F(Appending, ReportsAWriteThatIsCutShort)
{
    const std::string path = folder.write("trace.txt", "12345678");
    std::string error;
    {
        const FileSizeLimit limit(10);
        error = append_words(path);
    }
    EXPECT_EQ(error, "Cannot write " + path + ": File too large.");
    EXPECT_TRUE(folder.read("trace.txt").starts_with("12345678"));
}

TEST_F(Folders, AreWritableWhenTheirRightsSaySo)
{
    EXPECT_TRUE(files.is_writable_folder(folder.path().string()));
    EXPECT_FALSE(files.is_writable_folder(folder.write("a", "")));
    EXPECT_FALSE(files.is_writable_folder(folder.file("missing")));
    EXPECT_FALSE(files.is_writable_folder(""));
}

TEST_F(Folders, OfAnotherUserAreNotWritable)
{
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0555));
    bool seen = false;
    bool writable = true;
    {
        const AsNobody nobody;
        seen = files.exists(folder.path().string());
        writable = files.is_writable_folder(folder.path().string());
    }
    EXPECT_TRUE(seen);
    EXPECT_FALSE(writable);
}

TEST_F(Folders, AreCreatedWithAllAboveThemForThisUserOnly)
{
    const std::string path = folder.file("share/cuedrill");
    files.create_folder(path);
    for (const std::string& created : {path, folder.file("share")})
        EXPECT_EQ(std::filesystem::status(created).permissions(), std::filesystem::perms::owner_all) << created;
}

TEST_F(Folders, ThatExistAreLeftAsTheyAre)
{
    folder.write("a", "x");
    files.create_folder(folder.path().string());
    files.create_folder(folder.path().string() + "/");
    EXPECT_EQ(folder.read("a"), "x");
}

TEST_F(Folders, CannotReplaceAFileOrStandBelowOne)
{
    const std::string file = folder.write("a", "x");
    const std::string expected = "Cannot create the folder " + file + ": Not a directory.";
    EXPECT_EQ(words([&] { files.create_folder(file); }), expected);
    EXPECT_EQ(words([&] { files.create_folder(file + "/b"); }), expected);
    EXPECT_EQ(words([&] { files.create_folder(""); }), "Cannot create the folder : Invalid argument.");
    EXPECT_EQ(words([&] { files.create_folder("/proc/cuedrill"); }),
              "Cannot create the folder /proc/cuedrill: No such file or directory.");
}

class WorkingFolder : public SystemFilesTest {
protected:
    [[nodiscard]] std::string change_words(const std::string& path)
    {
        return words([&] { files.change_folder(path); });
    }

    KeptWorkingFolder before;
};

TEST_F(WorkingFolder, IsWhereRelativeNamesStart)
{
    folder.write("a.crs", "x");
    files.change_folder(folder.path().string());
    EXPECT_EQ(files.absolute("a.crs"), folder.file("a.crs"));
    EXPECT_EQ(files.begin_reading("a.crs", no_limit)->read(2), "x");
}

TEST_F(WorkingFolder, StaysAsItIsAfterAnError)
{
    const std::string file = folder.write("a", "x");
    const std::string missing = folder.file("missing");
    EXPECT_EQ(change_words(missing), "Cannot change to the folder " + missing + ": No such file or directory.");
    EXPECT_EQ(change_words(file), "Cannot change to the folder " + file + ": Not a directory.");
    EXPECT_EQ(change_words(""), "Cannot change to the folder : Invalid argument.");
    EXPECT_EQ(change_words(folder.path().string() + std::string("\0", 1)).find("no error"), std::string::npos);
    EXPECT_EQ(std::filesystem::current_path(), before.path());
}

} // namespace
} // namespace cuedrill::platform::system
