#include "keep/copy_names.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>

namespace cuedrill::keep {
namespace {

const common::DateTime time =
    common::DateTime::from_fields({.year = 2026, .month = 11, .day = 2, .hour = 16, .minute = 5, .second = 9});

TEST(CopyNames, of_a_folder_have_the_name_of_the_course_and_depend_on_its_path)
{
    // The FNV-1a hash of "a" with 64 bits, as its authors give it.
    EXPECT_EQ(folder_name("a"), "a-af63dc4c8601ec8c");
    const std::string one = folder_name("/home/anna/verbs.crs");
    EXPECT_EQ(one.substr(0, 6), "verbs-");
    EXPECT_EQ(one.size(), 6U + 16U);
    EXPECT_NE(folder_name("/home/ben/verbs.crs"), one);
}

TEST(CopyNames, of_a_folder_fit_into_a_file_system)
{
    std::string name;
    for (int i = 0; i < 63; ++i)
        name += "\xF0\x9F\x98\x80";
    const std::string folder = folder_name("/" + name + ".crs");
    EXPECT_EQ(folder.size(), 50U * 4 + 1 + 16);
}

TEST(CopyNames, tell_the_time)
{
    EXPECT_EQ(copy_name(time), "2026-11-02_16-05-09.crs");
    EXPECT_EQ(time_of_copy(copy_name(time)), time);
    EXPECT_EQ(words_of_time(time), "02 Nov 2026 16:05");
}

TEST(CopyNames, of_something_else_tell_no_time)
{
    for (const char* const name :
         {"course.txt", "2026-11-02_16-05-09.crs-journal", "2026-11-02_16-05-09", "2026-11-02 16-05-09.crs",
          "2026-13-02_16-05-09.crs", "2026-11-31_16-05-09.crs", "2026-02-29_16-05-09.crs", "2026-11-02_24-05-09.crs",
          "2026-11-02_16-60-09.crs", "2026-11-02_16-05-60.crs", "2026-11-02_1x-05-09.crs", "0000-11-02_16-05-09.crs",
          "2026-00-02_16-05-09.crs", "2026-11-00_16-05-09.crs"})
        EXPECT_EQ(time_of_copy(name), std::nullopt) << name;
    EXPECT_NE(time_of_copy("2028-02-29_00-00-00.crs"), std::nullopt);
}

} // namespace
} // namespace cuedrill::keep
