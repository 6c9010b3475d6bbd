#include "app/base/sound_courses.h"
#include "fakes/fake_settings.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

namespace cuedrill::app {
namespace {

class SoundCoursesTest : public testing::Test {
protected:
    [[nodiscard]] std::string& kept() { return store.values["CUEDRILL/window/sound_courses"]; }

    fakes::FakeSettings store;
    SoundCourses courses{store};
};

TEST_F(SoundCoursesTest, KnowAMarkUntilTheCourseGetsAnother)
{
    EXPECT_FALSE(courses.is_noted("/a b.crs", "1.2"));
    courses.note("/a b.crs", "1.2");
    EXPECT_TRUE(courses.is_noted("/a b.crs", "1.2"));
    EXPECT_FALSE(courses.is_noted("/a b.crs", "1.3"));
    EXPECT_FALSE(courses.is_noted("/b.crs", "1.2"));
    courses.note("/a b.crs", "1.3");
    EXPECT_FALSE(courses.is_noted("/a b.crs", "1.2"));
    EXPECT_TRUE(courses.is_noted("/a b.crs", "1.3"));
    EXPECT_EQ(kept(), "1.3 /a b.crs");
}

TEST_F(SoundCoursesTest, AreSeveralTheNewestFirst)
{
    courses.note("/a.crs", "1");
    courses.note("/b.crs", "2");
    courses.note("/c.crs", "3");
    courses.note("/a.crs", "4");
    EXPECT_EQ(kept(), "4 /a.crs\n3 /c.crs\n2 /b.crs");
    EXPECT_TRUE(courses.is_noted("/b.crs", "2"));
}

TEST_F(SoundCoursesTest, AreForgottenBeyondTheirNumber)
{
    for (std::size_t i = 0; i <= SoundCourses::most_courses; ++i)
        courses.note("/" + std::to_string(i), "1");
    EXPECT_FALSE(courses.is_noted("/0", "1"));
    EXPECT_TRUE(courses.is_noted("/1", "1"));
    EXPECT_EQ(std::count(kept().begin(), kept().end(), '\n'), SoundCourses::most_courses - 1);
}

TEST_F(SoundCoursesTest, IgnoreLinesThatAreNoMarks)
{
    kept() = "\nx\n\n5 /a.crs";
    EXPECT_TRUE(courses.is_noted("/a.crs", "5"));
    courses.note("/a.crs", "6");
    EXPECT_EQ(kept(), "6 /a.crs\nx");
}

TEST_F(SoundCoursesTest, HaveNoNameOfTwoLines)
{
    courses.note("/a\n1 /b.crs", "1");
    EXPECT_FALSE(courses.is_noted("/b.crs", "1"));
    EXPECT_FALSE(courses.is_noted("/a\n1 /b.crs", "1"));
}

TEST_F(SoundCoursesTest, WriteNothingThatIsKeptAlready)
{
    courses.note("/a.crs", "1");
    store.write_failure = "must not be written";
    courses.note("/a.crs", "1");
    EXPECT_TRUE(courses.is_noted("/a.crs", "1"));
}

TEST_F(SoundCoursesTest, AreUnknownWhereTheStoreFails)
{
    store.write_failure = "no room";
    courses.note("/a.crs", "1");
    EXPECT_FALSE(courses.is_noted("/a.crs", "1"));
    store.write_failure.clear();
    courses.note("/a.crs", "1");
    store.read_failure = "cannot be read";
    EXPECT_FALSE(courses.is_noted("/a.crs", "1"));
    courses.note("/a.crs", "2");
    store.read_failure.clear();
    EXPECT_TRUE(courses.is_noted("/a.crs", "1"));
}

} // namespace
} // namespace cuedrill::app
