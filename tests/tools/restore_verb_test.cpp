#include "tools/tool_fixture.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>

namespace cuedrill::tools {
namespace {

class RestoreVerb : public ToolFixture {
protected:
    RestoreVerb()
    {
        make_copy(course, clock.time); // 2026-11-15_05-47-17
        make_copy(course, clock.time.plus_days(1));
    }

    void expect_restored(const std::string& path)
    {
        EXPECT_EQ(out, path + "\n");
        EXPECT_EQ(err, "");
        EXPECT_EQ(fakes::read_course(path), contents);
    }

    std::string course = many().write(folder, "verbs.crs");
    fakes::CourseContents contents = fakes::read_course(course);
};

TEST_F(RestoreVerb, writes_the_newest_copy_beside_the_course)
{
    EXPECT_EQ(run({"restore", course}), 0);
    expect_restored(folder.file("verbs restored 2026-11-16_05-47-17.crs"));
}

TEST_F(RestoreVerb, writes_it_when_the_course_is_gone)
{
    std::filesystem::remove(course);
    EXPECT_EQ(run({"restore", course}), 0);
    expect_restored(folder.file("verbs restored 2026-11-16_05-47-17.crs"));
}

TEST_F(RestoreVerb, writes_the_copy_of_a_time)
{
    for (const std::string time : {"2026-11-15_05-47-17", "2026-11-15", "2026-11-15 05:47"}) {
        EXPECT_EQ(run({"restore", course, time}), 0) << err;
        expect_restored(folder.file("verbs restored 2026-11-15_05-47-17.crs"));
        std::filesystem::remove(folder.file("verbs restored 2026-11-15_05-47-17.crs"));
    }
}

TEST_F(RestoreVerb, writes_a_file_of_the_users_choice)
{
    EXPECT_EQ(run({"restore", course, "--to", folder.file("back.crs")}), 0);
    expect_restored(folder.file("back.crs"));
    const mode_t mask = ::umask(0);
    ::umask(mask);
    struct stat status {};
    ASSERT_EQ(::stat(folder.file("back.crs").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0666U & ~mask) << "as of any new file";
}

TEST_F(RestoreVerb, refuses_a_time_of_several_copies_or_of_none)
{
    EXPECT_EQ(run({"restore", course, "2026-11"}), 2);
    EXPECT_EQ(err, "cuedrill-course: There are 2 copies of the time 2026-11. Give more of it, such as "
                   "2026-11-16_05-47-17.\n");
    EXPECT_EQ(run({"restore", course, "2025"}), 2);
    EXPECT_EQ(err, "cuedrill-course: There is no copy of the time 2025.\n");
    EXPECT_EQ(out, "");
}

TEST_F(RestoreVerb, never_replaces_a_file)
{
    const std::string there = folder.write("verbs restored 2026-11-16_05-47-17.crs", "something dear");
    EXPECT_EQ(run({"restore", course}), 2);
    EXPECT_EQ(err, "cuedrill-course: There is a file " + there + " already.\n");
    EXPECT_EQ(folder.read("verbs restored 2026-11-16_05-47-17.crs"), "something dear");
    EXPECT_EQ(run({"restore", course, "--to", course}), 2);
    EXPECT_EQ(fakes::read_course(course), contents);
}

TEST_F(RestoreVerb, refuses_a_copy_that_is_not_sound)
{
    overwrite_page(copies.newest(course)->path, 3);
    EXPECT_EQ(run({"restore", course}), 2);
    EXPECT_NE(err.find("is not sound."), std::string::npos) << err;
    EXPECT_FALSE(std::filesystem::exists(folder.file("verbs restored 2026-11-16_05-47-17.crs")));
    EXPECT_EQ(run({"restore", course, "2026-11-15"}), 0) << "the other one is";
}

TEST_F(RestoreVerb, says_that_there_is_no_copy)
{
    EXPECT_EQ(run({"restore", folder.file("other.crs")}), 1);
    EXPECT_EQ(err, "cuedrill-course: There is no copy of " + folder.file("other.crs") + ".\n");
}

TEST_F(RestoreVerb, says_why_the_file_cannot_be_written)
{
    const std::string target = folder.file("nowhere/back.crs");
    EXPECT_EQ(run({"restore", course, "--to", target}), 1);
    EXPECT_EQ(err, "cuedrill-course: The copy " + copies.newest(course)->path + " could not be restored to " + target +
                       ". There is no such file or folder.\n");
}

} // namespace
} // namespace cuedrill::tools
