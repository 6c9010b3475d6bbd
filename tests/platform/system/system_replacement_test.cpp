#include "common/text.h"
#include "files_support.h"

#include <csignal>
#include <cstddef>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cuedrill::platform::system {
namespace {

namespace fs = std::filesystem;

/// Sets the umask while an object of this class lives.
class FileMask {
public:
    explicit FileMask(mode_t mask) : before_(::umask(mask)) {}
    FileMask(const FileMask&) = delete;
    FileMask& operator=(const FileMask&) = delete;
    ~FileMask() { ::umask(before_); }

private:
    mode_t before_;
};

class ReplacementTest : public FilesTest {
protected:
    /// The text of the error with which a replacement of `name` is refused.
    [[nodiscard]] std::string refusal(const std::string& name)
    {
        return words([&] { static_cast<void>(files.begin_replacement(name)); });
    }

    static fs::perms permissions(const std::string& name) { return fs::status(name).permissions(); }

    /// The number of names in the folder.
    [[nodiscard]] std::ptrdiff_t names() const
    {
        return std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator());
    }

    std::string path = folder.file("list.txt");
};

using NewContents = ReplacementTest;
using PartFile = ReplacementTest;
using RefusedReplacement = ReplacementTest;
using FailedReplacement = ReplacementTest;

TEST_F(NewContents, MakeAFileThatDidNotExist)
{
    const FileMask mask(027);
    const auto replacement = files.begin_replacement(path);
    replacement->write("one\r\n");
    replacement->write("two\r\n");
    EXPECT_FALSE(files.exists(path));
    replacement->finish();
    EXPECT_EQ(folder.read("list.txt"), "one\r\ntwo\r\n");
    EXPECT_EQ(permissions(path), fs::perms(0640)) << "as the mask has it";
    EXPECT_EQ(names(), 1);
}

TEST_F(NewContents, TakeTheNameOnlyWhenTheyAreComplete)
{
    folder.write("list.txt", "old");
    const auto replacement = files.begin_replacement(path);
    replacement->write(std::string(200000, 'x'));
    EXPECT_EQ(folder.read("list.txt"), "old");
    replacement->finish();
    EXPECT_EQ(folder.read("list.txt"), std::string(200000, 'x'));
    EXPECT_EQ(names(), 1);
}

TEST_F(NewContents, KeepEveryByteOfPiecesOfAnySize)
{
    std::string all;
    const auto replacement = files.begin_replacement(path);
    for (const std::size_t size : {0U, 1U, 65534U, 1U, 65536U, 3U, 200001U, 0U, 65535U}) {
        std::string piece;
        while (piece.size() < size)
            piece += static_cast<char>((all.size() + piece.size()) % 251);
        replacement->write(piece);
        all += piece;
    }
    replacement->finish();
    EXPECT_EQ(folder.read("list.txt"), all);
}

TEST_F(NewContents, MayBeNone)
{
    folder.write("list.txt", "old");
    files.begin_replacement(path)->finish();
    EXPECT_EQ(folder.read("list.txt"), "");
}

TEST_F(NewContents, KeepThePermissionsOfTheFile)
{
    const FileMask mask(077);
    folder.write("list.txt", "old");
    fs::permissions(path, fs::perms(0664));
    const auto replacement = files.begin_replacement(path);
    EXPECT_EQ(permissions(replacement->path()), fs::perms(0664));
    replacement->finish();
    EXPECT_EQ(permissions(path), fs::perms(0664)) << "whatever the mask is";
}

TEST_F(NewContents, AreNoMoreReadableThanTheOld)
{
    const FileMask mask(0);
    folder.write("list.txt", "old");
    fs::permissions(path, fs::perms(0600));
    EXPECT_EQ(permissions(files.begin_replacement(path)->path()), fs::perms(0600));
}

TEST_F(NewContents, GoToTheFileThatALinkLeadsTo)
{
    fs::create_directory(folder.file("lists"));
    folder.write("lists/real.txt", "old");
    const std::string link = make_link("lists/real.txt", "link.txt");
    const std::string link_to_link = make_link(link, "second.txt");
    const auto replacement = files.begin_replacement(link_to_link);
    EXPECT_EQ(replacement->path(), folder.file("lists/real.txt.cuedrill-part"));
    replacement->write("new");
    replacement->finish();
    EXPECT_EQ(folder.read("lists/real.txt"), "new");
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_TRUE(fs::is_symlink(link_to_link));
}

TEST_F(NewContents, OfARelativeNameStayInTheirFolder)
{
    const KeptWorkingFolder before;
    fs::create_directory(folder.file("elsewhere"));
    fs::current_path(folder.path());
    const auto replacement = files.begin_replacement("list.txt");
    fs::current_path(folder.file("elsewhere"));
    EXPECT_EQ(replacement->path(), path + ".cuedrill-part");
    replacement->write("new");
    replacement->finish();
    EXPECT_EQ(folder.read("list.txt"), "new");
}

TEST_F(NewContents, CanBeBegunAgain)
{
    const auto replacement = files.begin_replacement(path);
    replacement->write(std::string(100000, 'x'));
    replacement->restart();
    EXPECT_EQ(folder.read("list.txt.cuedrill-part"), "");
    replacement->write("short");
    replacement->finish();
    EXPECT_EQ(folder.read("list.txt"), "short");
}

TEST_F(NewContents, CanBeMadeInAFolderThatMayNotBeListed)
{
    fs::permissions(folder.path(), fs::perms(0333));
    std::string error;
    {
        const AsNobody nobody;
        error = words([&] {
            const auto replacement = files.begin_replacement(path);
            replacement->write("new");
            replacement->finish();
        });
    }
    fs::permissions(folder.path(), fs::perms(0700));
    EXPECT_EQ(error, "no error");
    EXPECT_EQ(folder.read("list.txt"), "new");
}

TEST_F(PartFile, StaysWhereTheContentsAreNotCompleted)
{
    folder.write("list.txt", "old");
    {
        const auto replacement = files.begin_replacement(path);
        replacement->write(std::string(100000, 'x'));
        replacement->write("the end");
    }
    EXPECT_EQ(folder.read("list.txt"), "old");
    EXPECT_EQ(folder.read("list.txt.cuedrill-part"), std::string(100000, 'x') + "the end");
}

/// A file with this name that somebody is writing.
class HeldFile {
public:
    explicit HeldFile(const std::string& name) : handle_(::open(name.c_str(), O_RDWR | O_CLOEXEC))
    {
        EXPECT_EQ(::flock(handle_, LOCK_EX | LOCK_NB), 0);
    }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;
    ~HeldFile() { ::close(handle_); }

private:
    int handle_;
};

TEST_F(PartFile, ThatNobodyIsWritingIsRemovedAtTheNextReplacementInTheFolder)
{
    for (const char* name : {"list.txt.cuedrill-part", "list.txt.cuedrill-part100", "other.cuedrill-part2"})
        folder.write(name, "left by a killed program");
    for (const char* name :
         {"list.txt.part", "x.cuedrill-partial", "cuedrill-part", ".cuedrill-part", "x.cuedrill-part2x"})
        folder.write(name, "of somebody else");
    files.begin_replacement(path)->finish();
    EXPECT_EQ(names(), 6);
    for (const char* name :
         {"list.txt.part", "x.cuedrill-partial", "cuedrill-part", ".cuedrill-part", "x.cuedrill-part2x"})
        EXPECT_EQ(folder.read(name), "of somebody else");
}

TEST_F(PartFile, ThatIsBeingWrittenStays)
{
    const auto first = files.begin_replacement(path);
    const auto second = files.begin_replacement(path);
    first->write("first");
    second->write("second");
    EXPECT_EQ(first->path(), path + ".cuedrill-part");
    EXPECT_EQ(second->path(), path + ".cuedrill-part2");
    first->finish();
    second->finish();
    EXPECT_EQ(folder.read("list.txt"), "second");
    EXPECT_EQ(names(), 1);
}

TEST_F(PartFile, ThatIsNoFileStays)
{
    fs::create_directory(folder.file("a.cuedrill-part"));
    ASSERT_EQ(::mkfifo(folder.file("b.cuedrill-part").c_str(), 0600), 0);
    folder.write("dear", "dear");
    static_cast<void>(make_link(folder.file("dear"), "c.cuedrill-part"));
    files.begin_replacement(path)->finish();
    EXPECT_EQ(names(), 5);
    EXPECT_EQ(folder.read("dear"), "dear");
}

TEST_F(PartFile, OfAKilledProgramHoldsNothingUp)
{
    const pid_t child = ::fork();
    if (child == 0) {
        const auto replacement = files.begin_replacement(path);
        replacement->write(std::string(100000, 'x'));
        ::kill(::getpid(), SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(files.exists(path + ".cuedrill-part"));
    const auto replacement = files.begin_replacement(path);
    EXPECT_EQ(replacement->path(), path + ".cuedrill-part");
    replacement->finish();
    EXPECT_EQ(names(), 1);
}

TEST_F(PartFile, NeverTakesANameThatIsThere)
{
    folder.write("list.txt.cuedrill-part", "of somebody else");
    const HeldFile held(folder.file("list.txt.cuedrill-part"));
    static_cast<void>(make_link(folder.file("missing"), "list.txt.cuedrill-part2"));
    const auto replacement = files.begin_replacement(path);
    EXPECT_EQ(replacement->path(), path + ".cuedrill-part3");
    replacement->write("new");
    replacement->finish();
    EXPECT_EQ(folder.read("list.txt"), "new");
    EXPECT_EQ(folder.read("list.txt.cuedrill-part"), "of somebody else");
    EXPECT_FALSE(files.exists(folder.file("missing")));
}

TEST_F(PartFile, IsNotLookedForWithoutEnd)
{
    fs::create_directory(folder.file("list.txt.cuedrill-part"));
    for (int number = 2; number <= 100; ++number)
        fs::create_directory(folder.file("list.txt.cuedrill-part" + std::to_string(number)));
    EXPECT_EQ(refusal(path), "Cannot write " + path + ".cuedrill-part: File exists.");
    EXPECT_EQ(names(), 100);
}

TEST_F(PartFile, HasAShorterNameWhereTheWholeOneDoesNotFit)
{
    // 255 bytes, the longest name possible; a cut at an arbitrary byte would mostly split a character.
    std::string name = "x";
    while (name.size() < 255)
        name += "é";
    const auto replacement = files.begin_replacement(folder.file(name));
    const std::string part = fs::path(replacement->path()).filename().string();
    EXPECT_EQ(part, name.substr(0, 241) + ".cuedrill-part");
    EXPECT_TRUE(common::is_utf8(part));
    const auto second = files.begin_replacement(folder.file(name));
    EXPECT_EQ(fs::path(second->path()).filename().string(), name.substr(0, 239) + ".cuedrill-part2");
    replacement->write("new");
    replacement->finish();
    EXPECT_EQ(folder.read(name), "new");
}

TEST_F(RefusedReplacement, IsThatOfAnythingButARegularFile)
{
    const std::string directory = folder.path().string();
    const std::string pipe = make_pipe();
    EXPECT_EQ(refusal(directory), "Cannot write " + directory + ": Is a directory.");
    EXPECT_EQ(refusal(folder.file("new/")), "Cannot write " + folder.file("new/") + ": Is a directory.");
    EXPECT_EQ(refusal(pipe), "Cannot write " + pipe + ": it is not a regular file.");
    EXPECT_EQ(refusal(make_link(pipe, "link")), "Cannot write " + folder.file("link") + ": it is not a regular file.");
    EXPECT_EQ(refusal("/dev/null"), "Cannot write /dev/null: it is not a regular file.");
    EXPECT_EQ(names(), 2);
}

TEST_F(RefusedReplacement, IsThatOfALinkThatLeadsNowhere)
{
    const std::string dangling = make_link(folder.file("missing"), "dangling");
    const std::string circle = make_link(folder.file("circle"), "circle");
    EXPECT_EQ(refusal(dangling), "Cannot write " + dangling + ": it is a link to a file that does not exist.");
    EXPECT_EQ(refusal(circle), "Cannot write " + circle + ": Too many levels of symbolic links.");
    EXPECT_EQ(names(), 2);
}

TEST_F(RefusedReplacement, IsThatOfANameThatNoFileCanHave)
{
    const std::string file = folder.write("a", "x");
    const std::string long_name = folder.file(std::string(256, 'x'));
    EXPECT_EQ(refusal(""), "Cannot write : Invalid argument.");
    EXPECT_NE(refusal(file + std::string("\0tail", 5)), "no error");
    EXPECT_EQ(refusal(file + "/below"), "Cannot write " + file + "/below: Not a directory.");
    EXPECT_EQ(refusal(long_name), "Cannot write " + long_name + ": File name too long.");
    EXPECT_EQ(refusal(folder.file("missing/a")),
              "Cannot write " + folder.file("missing/a") + ": No such file or directory.");
    EXPECT_EQ(refusal("/proc/cuedrill"), "Cannot write /proc/cuedrill.cuedrill-part: No such file or directory.");
    EXPECT_EQ(names(), 1);
}

TEST_F(RefusedReplacement, IsThatOfAFileThatMayNotBeWritten)
{
    folder.write("list.txt", "old");
    fs::permissions(path, fs::perms(0444));
    EXPECT_EQ(refusal(path), "Cannot write " + path + ": Permission denied.");
    EXPECT_EQ(names(), 1);
}

TEST_F(RefusedReplacement, IsThatOfAFileOfAnotherUser)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only the superuser can be another user";
    folder.write("list.txt", "old");
    fs::permissions(folder.path(), fs::perms(0777));
    std::string error;
    {
        const AsNobody nobody;
        error = refusal(path);
    }
    EXPECT_EQ(error, "Cannot write " + path + ": Permission denied.");
    EXPECT_EQ(names(), 1);
}

TEST_F(RefusedReplacement, IsThatInAFolderThatMayNotBeWritten)
{
    fs::permissions(folder.path(), fs::perms(0555));
    std::string error;
    {
        const AsNobody nobody;
        error = refusal(path);
    }
    EXPECT_EQ(error, "Cannot write " + path + ".cuedrill-part: Permission denied.");
}

TEST_F(FailedReplacement, LeavesTheFileAsItWas)
{
    folder.write("list.txt", "old");
    auto replacement = files.begin_replacement(path);
    std::string error;
    {
        const FileSizeLimit limit(10);
        error = words([&] { replacement->write(std::string(70000, 'x')); });
    }
    const std::string error_of_next = words([&] { replacement->write("more"); });
    const std::string error_of_end = words([&] { replacement->finish(); });
    EXPECT_EQ(error, "Cannot write " + path + ".cuedrill-part: File too large.");
    EXPECT_EQ(error_of_next, error) << "there would be a hole in the contents";
    EXPECT_EQ(error_of_end, error);
    EXPECT_EQ(folder.read("list.txt"), "old");
    replacement.reset();
    EXPECT_EQ(folder.read("list.txt.cuedrill-part"), std::string(10, 'x'))
        << "nor is anything put behind the hole at the end";
}

TEST_F(FailedReplacement, CanBeBegunAgain)
{
    const auto replacement = files.begin_replacement(path);
    {
        const FileSizeLimit limit(10);
        EXPECT_NE(words([&] { replacement->write(std::string(70000, 'x')); }), "no error");
    }
    replacement->restart();
    replacement->write("new");
    replacement->finish();
    EXPECT_EQ(folder.read("list.txt"), "new");
}

TEST_F(FailedReplacement, IsToldAtTheEndToo)
{
    folder.write("list.txt", "old");
    std::string error;
    {
        const FileSizeLimit limit(1);
        const auto replacement = files.begin_replacement(path);
        replacement->write("new");
        error = words([&] { replacement->finish(); });
    }
    EXPECT_EQ(error, "Cannot write " + path + ".cuedrill-part: File too large.");
    EXPECT_EQ(folder.read("list.txt"), "old");
}

TEST_F(FailedReplacement, IsQuietWhereTheContentsWereGivenUp)
{
    const FileSizeLimit limit(1);
    files.begin_replacement(path)->write("new");
    EXPECT_EQ(folder.read("list.txt.cuedrill-part"), "n");
}

TEST_F(FailedReplacement, KeepsWhatHasTakenTheNameMeanwhile)
{
    const auto replacement = files.begin_replacement(path);
    replacement->write("new");
    fs::create_directory(path);
    EXPECT_EQ(words([&] { replacement->finish(); }), "Cannot write " + path + ": Is a directory.");
    EXPECT_TRUE(fs::is_directory(path));
    EXPECT_EQ(folder.read("list.txt.cuedrill-part"), "new");
}

} // namespace
} // namespace cuedrill::platform::system
