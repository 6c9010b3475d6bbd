#include "platform/system/system_folders.h"
#include "scoped_variable.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace cuedrill::platform::system {
namespace {

TEST(ExecutableFolder, HoldsTheRunningProgram)
{
    const std::filesystem::path folder = executable_folder();
    EXPECT_TRUE(folder.is_absolute());
    EXPECT_TRUE(std::filesystem::is_regular_file(folder / "test_platform_system"));
}

TEST(RuntimeFolder, IsWhereTheEnvironmentSays)
{
    const ScopedVariable runtime("XDG_RUNTIME_DIR", "/run/user/1000");
    EXPECT_EQ(runtime_folder(), "/run/user/1000/cuedrill");
}

TEST(RuntimeFolder, IsOneOfTheUserWithoutASession)
{
    const ScopedVariable runtime("XDG_RUNTIME_DIR", nullptr);
    EXPECT_EQ(runtime_folder(), "/tmp/cuedrill-" + std::to_string(getuid()));
}

TEST(DataHome, IsWhereTheEnvironmentSays)
{
    const ScopedVariable data("XDG_DATA_HOME", "/srv/data");
    EXPECT_EQ(data_home(), "/srv/data");
}

TEST(DataHome, IsInTheHomeFolderByDefault)
{
    const ScopedVariable data("XDG_DATA_HOME", nullptr);
    const ScopedVariable home("HOME", "/home/anna");
    EXPECT_EQ(data_home(), "/home/anna/.local/share");
}

TEST(DataHome, IgnoresEmptyAndRelativeValues)
{
    const ScopedVariable data("XDG_DATA_HOME", "");
    const ScopedVariable home("HOME", "/home/anna");
    EXPECT_EQ(data_home(), "/home/anna/.local/share");
    data.assign("relative/data");
    EXPECT_EQ(data_home(), "/home/anna/.local/share");
}

TEST(DataHome, AsksTheListOfUsersWithoutAHomeVariable)
{
    const ScopedVariable data("XDG_DATA_HOME", nullptr);
    const ScopedVariable home("HOME", nullptr);
    const std::string folder = data_home();
    EXPECT_TRUE(folder.empty() || folder.starts_with('/')) << folder;
    home.assign("relative");
    EXPECT_EQ(data_home(), folder);
}

} // namespace
} // namespace cuedrill::platform::system
