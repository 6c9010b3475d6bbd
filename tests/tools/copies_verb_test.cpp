#include "tools/tool_fixture.h"

#include <cstddef>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace cuedrill::tools {
namespace {

class CopiesVerb : public ToolFixture {
protected:
    CopiesVerb()
    {
        make_copy(course, clock.time);
        make_copy(course, clock.time.plus_days(1));
    }

    std::string course = many().write(folder, "verbs.crs");
    const std::string bytes = std::to_string(std::filesystem::file_size(course));
};

TEST_F(CopiesVerb, lists_them)
{
    EXPECT_EQ(run({"copies", course}), 0);
    EXPECT_EQ(out, "TIME                    RECORDS       BYTES  STATE\n"
                   "2026-11-15_05-47-17         400" +
                       std::string(12 - bytes.size(), ' ') + bytes +
                       "  sound\n"
                       "2026-11-16_05-47-17         400" +
                       std::string(12 - bytes.size(), ' ') + bytes + "  sound\n");
    EXPECT_EQ(err, "");
}

TEST_F(CopiesVerb, lists_them_when_the_course_is_gone)
{
    std::filesystem::remove(course);
    EXPECT_EQ(run({"copies", course}), 0);
    EXPECT_NE(out.find("2026-11-16_05-47-17"), std::string::npos) << out;
}

TEST_F(CopiesVerb, says_which_one_is_not_sound)
{
    overwrite_page(copies.of(course).at(0).path, 3);
    EXPECT_EQ(run({"copies", course}), 0);
    EXPECT_NE(out.find("2026-11-15_05-47-17           -"), std::string::npos) << out;
    EXPECT_NE(out.find("  not sound: "), std::string::npos) << out;
    EXPECT_NE(out.find("2026-11-16_05-47-17         400"), std::string::npos) << out;
}

TEST_F(CopiesVerb, lists_them_in_json)
{
    EXPECT_EQ(run({"copies", "--json", course}), 0);
    const auto all = copies.of(course);
    const auto entry = [&](std::size_t i, const std::string& time) {
        return "{\"time\": \"" + time + "\", \"path\": \"" + all.at(i).path +
               "\", \"records\": 400, \"bytes\": " + bytes + ", \"sound\": true, \"findings\": []}";
    };
    EXPECT_EQ(out, "[" + entry(0, "2026-11-15_05-47-17") + ", " + entry(1, "2026-11-16_05-47-17") + "]\n");
}

TEST_F(CopiesVerb, says_that_there_are_none)
{
    EXPECT_EQ(run({"copies", folder.file("other.crs")}), 1);
    EXPECT_EQ(out, "");
    EXPECT_EQ(err, "cuedrill-course: There is no copy of " + folder.file("other.crs") + ".\n");
}

TEST_F(CopiesVerb, changes_no_copy)
{
    const std::string before = files.begin_reading(copies.of(course).at(0).path, 10'000'000)->read(10'000'000);
    EXPECT_EQ(run({"copies", course}), 0);
    EXPECT_TRUE(files.begin_reading(copies.of(course).at(0).path, 10'000'000)->read(10'000'000) == before);
}

} // namespace
} // namespace cuedrill::tools
