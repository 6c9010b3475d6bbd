#include "app/base/paths.h"
#include "fakes/fake_files.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace cuedrill::app {
namespace {

std::string stripped(std::string path)
{
    strip_quotes(path);
    return path;
}

TEST(StripQuotes, TakesOneQuoteFromEachEnd)
{
    EXPECT_EQ(stripped("\"C:\\a b.crs\""), "C:\\a b.crs");
    EXPECT_EQ(stripped("\"\"x\"\""), "\"x\"");
}

TEST(StripQuotes, TreatsTheEndsIndependently)
{
    EXPECT_EQ(stripped("\"a.crs"), "a.crs");
    EXPECT_EQ(stripped("a.crs\""), "a.crs");
    EXPECT_EQ(stripped("\""), "");
    EXPECT_EQ(stripped("\"\""), "");
    EXPECT_EQ(stripped("\"\"\""), "\"");
}

TEST(StripQuotes, KeepsEverythingElse)
{
    EXPECT_EQ(stripped(""), "");
    EXPECT_EQ(stripped(" a b.crs "), " a b.crs ");
    EXPECT_EQ(stripped("a\"b.crs"), "a\"b.crs");
    EXPECT_EQ(stripped(" \"a\" "), " \"a\" ");
    EXPECT_EQ(stripped("'a'"), "'a'");
}

struct PathCase {
    std::string_view path;
    std::string_view dir;
    std::string_view file;
    std::string_view name;
};

constexpr PathCase path_cases[] = {
    {"C:\\a\\b.crs", "C:\\a", "b.crs", "b"},
    {"C:b.crs", "C", "b.crs", "b"},
    {"C:\\x\\my.course.crs", "C:\\x", "my.course.crs", "my.course"},
    {"archive.tar.crs", "", "archive.tar.crs", "archive.tar"},
    {"C:\\x.y\\course", "C:\\x.y", "course", "course"},
    {"C:\\x\\.crs", "C:\\x", ".crs", ""},
    {"C:\\x\\", "C:\\x", "", ""},
    {"course", "", "course", "course"},
    {"", "", "", ""},
    {"/home/anna/b.crs", "/home/anna", "b.crs", "b"},
    {"/b.crs", "", "b.crs", "b"},
    {"/home/anna/", "/home/anna", "", ""},
    {"./b.crs", ".", "b.crs", "b"},
    {"/home/anna.x/course", "/home/anna.x", "course", "course"},
    // After a "/", the other separators are ordinary characters of a name.
    {"/home/anna/physics: part 1.crs", "/home/anna", "physics: part 1.crs", "physics: part 1"},
    {"/home/anna/a\\b.crs", "/home/anna", "a\\b.crs", "a\\b"},
    {"/home/a:b/c.crs", "/home/a:b", "c.crs", "c"},
};

TEST(PathParts, AreSplitAtTheLastSeparator)
{
    for (const PathCase& expected : path_cases) {
        EXPECT_EQ(dir_of(expected.path), expected.dir) << expected.path;
        EXPECT_EQ(file_of(expected.path), expected.file) << expected.path;
        EXPECT_EQ(name_of(expected.path), expected.name) << expected.path;
    }
}

TEST(JoinPath, PutsOneSlashBetween)
{
    EXPECT_EQ(join_path("/opt/cuedrill", "trace.txt"), "/opt/cuedrill/trace.txt");
    EXPECT_EQ(join_path("/opt/cuedrill/", "trace.txt"), "/opt/cuedrill/trace.txt");
    EXPECT_EQ(join_path("/", "trace.txt"), "/trace.txt");
}

TEST(FileExists, CountsFilesAndFolders)
{
    fakes::FakeFiles files;
    files.files["/home/anna/b.crs"] = "";
    files.folders.insert("/home/anna");
    EXPECT_TRUE(file_exists(files, "/home/anna/b.crs"));
    EXPECT_TRUE(file_exists(files, "/home/anna"));
    EXPECT_FALSE(file_exists(files, "/home/anna/c.crs"));
}

TEST(FileExists, IsFalseForBlanksEvenWhereAFileHasThatName)
{
    fakes::FakeFiles files;
    files.files[""] = "";
    files.files["  "] = "";
    EXPECT_FALSE(file_exists(files, ""));
    EXPECT_FALSE(file_exists(files, "  "));
}

TEST(FileExists, TakesThePathWithItsBlanks)
{
    fakes::FakeFiles files;
    files.files[" b.crs"] = "";
    EXPECT_TRUE(file_exists(files, " b.crs"));
    EXPECT_FALSE(file_exists(files, "b.crs"));
}

} // namespace
} // namespace cuedrill::app
