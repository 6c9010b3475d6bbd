#include "fakes/temp_folder.h"
#include "platform/system/system_directories.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::platform::system {
namespace {

namespace fs = std::filesystem;

class Directories : public testing::Test {
protected:
    fakes::TempFolder folder;
    SystemDirectories directories;
};

TEST_F(Directories, list_ordinary_files_with_their_sizes)
{
    folder.write("one", "12345");
    folder.write("two", "");
    fs::create_directory(folder.file("folder"));
    fs::create_symlink(folder.file("one"), folder.file("link"));
    std::vector<FolderEntry> found = directories.files_in(folder.path().string());
    std::sort(found.begin(), found.end(), [](const FolderEntry& a, const FolderEntry& b) { return a.name < b.name; });
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].name, "one");
    EXPECT_EQ(found[0].bytes, 5U);
    EXPECT_EQ(found[1].name, "two");
    EXPECT_TRUE(directories.files_in(folder.file("nothing")).empty());
}

TEST_F(Directories, tell_the_size_of_a_file)
{
    EXPECT_EQ(directories.size_of(folder.write("one", "12345")), 5U);
    EXPECT_EQ(directories.size_of(folder.file("nothing")), std::nullopt);
}

TEST_F(Directories, tell_the_room_of_the_disk)
{
    const auto room = directories.room_in(folder.path().string());
    ASSERT_TRUE(room);
    EXPECT_GT(*room, 0U);
    EXPECT_LE(*room, fs::space(folder.path()).capacity);
    EXPECT_EQ(directories.room_in(folder.file("nothing")), std::nullopt);
}

TEST_F(Directories, know_a_file_by_any_path)
{
    const std::string real = fs::canonical(folder.path()).string();
    fs::create_directory_symlink(folder.path(), folder.file("link"));
    EXPECT_EQ(directories.canonical(folder.write("one", "")), real + "/one");
    EXPECT_EQ(directories.canonical(folder.file("link/one")), real + "/one");
    EXPECT_EQ(directories.canonical(folder.file("link/nothing")), real + "/nothing");
    EXPECT_EQ(directories.canonical(folder.file("no/folder/./x")), real + "/no/folder/x");
}

TEST_F(Directories, remove_a_file)
{
    EXPECT_TRUE(directories.remove(folder.write("one", "")));
    EXPECT_FALSE(fs::exists(folder.file("one")));
    fs::create_directories(folder.file("full/of"));
    EXPECT_FALSE(directories.remove(folder.file("full")));
}

} // namespace
} // namespace cuedrill::platform::system
