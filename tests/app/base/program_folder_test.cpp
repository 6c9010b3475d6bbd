#include "app/base/program_folder.h"
#include "fakes/fake_files.h"

#include <gtest/gtest.h>

namespace cuedrill::app {
namespace {

class ProgramFolder : public testing::Test {
protected:
    ProgramFolder() { files.folders.insert("/opt/cuedrill"); }

    fakes::FakeFiles files;
};

TEST_F(ProgramFolder, IsTheExecutablesFolderWhenThatIsWritable)
{
    EXPECT_EQ(program_folder(files, "/opt/cuedrill", "/home/anna/.local/share"), "/opt/cuedrill");
    EXPECT_FALSE(files.folders.contains("/home/anna/.local/share/cuedrill")) << "created without need";
}

TEST_F(ProgramFolder, IsTheExecutablesFolderWhenThatHoldsTheTraceSwitch)
{
    files.read_only_folders.insert("/opt/cuedrill");
    files.files["/opt/cuedrill/trace.flg"] = "";
    EXPECT_EQ(program_folder(files, "/opt/cuedrill", "/home/anna/.local/share"), "/opt/cuedrill");
}

TEST_F(ProgramFolder, IsOtherwiseInTheUsersDataFolderAndCreated)
{
    files.read_only_folders.insert("/opt/cuedrill");
    EXPECT_EQ(program_folder(files, "/opt/cuedrill", "/home/anna/.local/share"), "/home/anna/.local/share/cuedrill");
    EXPECT_TRUE(files.folders.contains("/home/anna/.local/share/cuedrill"));
}

TEST_F(ProgramFolder, IsTheDataFolderWhenTheExecutableIsNotKnown)
{
    files.files["/trace.flg"] = "";
    EXPECT_EQ(program_folder(files, "", "/home/anna/.local/share"), "/home/anna/.local/share/cuedrill");
}

TEST_F(ProgramFolder, IsTheExecutablesFolderForAUserWithoutAHome)
{
    files.read_only_folders.insert("/opt/cuedrill");
    EXPECT_EQ(program_folder(files, "/opt/cuedrill", ""), "/opt/cuedrill");
}

// If the data folder cannot be created, the program still starts; writing into the folder reports its own error later.
TEST_F(ProgramFolder, IsTheDataFolderEvenWhenThatCannotBeCreated)
{
    files.read_only_folders.insert("/opt/cuedrill");
    files.create_folder_failure = "Cannot create the folder /home/anna: Read-only file system.";
    EXPECT_EQ(program_folder(files, "/opt/cuedrill", "/home/anna/.local/share"), "/home/anna/.local/share/cuedrill");
}

TEST(DataFolder, IsInTheUsersDataFolderIfThereIsOne)
{
    EXPECT_EQ(data_folder("/opt/cuedrill", "/home/anna/.local/share"), "/home/anna/.local/share/cuedrill");
    EXPECT_EQ(data_folder("/opt/cuedrill", ""), "/opt/cuedrill");
}

} // namespace
} // namespace cuedrill::app
