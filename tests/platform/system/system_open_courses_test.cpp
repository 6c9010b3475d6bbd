#include "fakes/temp_folder.h"
#include "platform/system/system_open_courses.h"

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cuedrill::platform::system {
namespace {

class OpenCoursesTest : public testing::Test {
protected:
    fakes::TempFolder folder;
    std::string runtime = folder.file("run");
    std::string course = folder.write("a.crs", "a");
    SystemOpenCourses one{runtime};
    SystemOpenCourses other{runtime};
};

TEST_F(OpenCoursesTest, TellTheSecondWindowOfTheFirst)
{
    EXPECT_FALSE(one.enter(course));
    EXPECT_TRUE(other.enter(course));
    SystemOpenCourses third(runtime);
    EXPECT_TRUE(third.enter(course));
}

TEST_F(OpenCoursesTest, TellTheThirdOfTheSecondWhenTheFirstHasLeft)
{
    EXPECT_FALSE(one.enter(course));
    EXPECT_TRUE(other.enter(course));
    one.leave();
    SystemOpenCourses third(runtime);
    EXPECT_TRUE(third.enter(course));
    third.leave();
    other.leave();
    EXPECT_FALSE(one.enter(course));
}

TEST_F(OpenCoursesTest, KnowACourseByItsFileNotByItsName)
{
    const std::string link = folder.file("link.crs");
    std::filesystem::create_symlink(course, link);
    EXPECT_FALSE(one.enter(course));
    EXPECT_TRUE(other.enter(link));
    EXPECT_FALSE(other.enter(folder.write("b.crs", "b")));
}

TEST_F(OpenCoursesTest, LeaveTheFormerCourseForTheNextOne)
{
    EXPECT_FALSE(one.enter(course));
    EXPECT_FALSE(one.enter(folder.write("b.crs", "b")));
    EXPECT_FALSE(other.enter(course));
    EXPECT_FALSE(other.enter(course)) << "its own lock is no other's";
}

TEST_F(OpenCoursesTest, ForgetAKilledProcess)
{
    int ready[2] = {-1, -1};
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        SystemOpenCourses held(runtime);
        const char entered = held.enter(course) ? '1' : '0';
        static_cast<void>(::write(ready[1], &entered, 1));
        ::pause();
        ::_exit(0);
    }
    char entered = 0;
    ASSERT_EQ(::read(ready[0], &entered, 1), 1);
    ::close(ready[0]);
    ::close(ready[1]);
    EXPECT_EQ(entered, '0');
    EXPECT_TRUE(one.enter(course));
    ::kill(child, SIGKILL);
    ASSERT_EQ(::waitpid(child, nullptr, 0), child);
    EXPECT_FALSE(one.enter(course));
}

TEST_F(OpenCoursesTest, KnowNothingWithoutAFolderOfTheUser)
{
    SystemOpenCourses nowhere("");
    EXPECT_FALSE(nowhere.enter(course));
    EXPECT_FALSE(one.enter(folder.file("missing.crs")));

    const std::string open_to_all = folder.file("all");
    std::filesystem::create_directory(open_to_all);
    ASSERT_EQ(::chmod(open_to_all.c_str(), 0777), 0);
    SystemOpenCourses first(open_to_all);
    SystemOpenCourses second(open_to_all);
    EXPECT_FALSE(first.enter(course));
    EXPECT_FALSE(second.enter(course));
    EXPECT_TRUE(std::filesystem::is_empty(open_to_all));
}

TEST_F(OpenCoursesTest, KeepTheirFolderForTheUser)
{
    EXPECT_FALSE(one.enter(course));
    struct stat status {};
    ASSERT_EQ(::stat(runtime.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
}

} // namespace
} // namespace cuedrill::platform::system
