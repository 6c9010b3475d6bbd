#include "fakes/temp_folder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace cuedrill::fakes {
namespace {

namespace fs = std::filesystem;

TEST(TempFolder, is_new_and_empty_each_time)
{
    const TempFolder a;
    const TempFolder b;
    EXPECT_NE(a.path(), b.path());
    EXPECT_TRUE(fs::is_empty(a.path()));
}

TEST(TempFolder, gives_back_the_bytes_written_to_it)
{
    const TempFolder folder;
    const std::string bytes("a\0\r\n\xff", 5);
    EXPECT_EQ(folder.write("x.txt", bytes), folder.file("x.txt"));
    EXPECT_EQ(folder.read("x.txt"), bytes);
    EXPECT_THROW((void)folder.read("y.txt"), std::runtime_error);
    EXPECT_THROW((void)folder.write("no/such/folder.txt", bytes), std::runtime_error);
}

TEST(TempFolder, is_gone_at_the_end_even_with_locked_folders_in_it)
{
    fs::path kept;
    {
        const TempFolder folder;
        kept = folder.path();
        fs::create_directory(kept / "locked");
        folder.write("locked/x.txt", "x");
        fs::permissions(kept / "locked", fs::perms::none);
        fs::permissions(kept, fs::perms::owner_read | fs::perms::owner_exec);
    }
    EXPECT_FALSE(fs::exists(kept));
}

} // namespace
} // namespace cuedrill::fakes
