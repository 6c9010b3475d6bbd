#include "fakes/file_size_limit.h"
#include "tools/tool_fixture.h"

#include <cstddef>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace cuedrill::tools {
namespace {

class CheckVerb : public ToolFixture {
protected:
    [[nodiscard]] std::string course() const { return folder.file("verbs.crs"); }
    [[nodiscard]] std::string target() const { return folder.file("salvaged.crs"); }

    void write(const fakes::CourseBuilder& builder = many())
    {
        ASSERT_EQ(builder.write(folder, "verbs.crs"), course());
    }
};

TEST_F(CheckVerb, finds_nothing_wrong_with_a_sound_course)
{
    write();
    const std::string before = folder.read("verbs.crs");
    EXPECT_EQ(run({"check", course()}), 0);
    EXPECT_EQ(out, course() + " is sound: 400 records.\n");
    EXPECT_EQ(err, "");
    EXPECT_EQ(run({"check", course(), "--json"}), 0);
    EXPECT_EQ(out, "{\"course\": \"" + course() + "\", \"sound\": true, \"records\": 400, \"findings\": []}\n");
    EXPECT_TRUE(folder.read("verbs.crs") == before);
}

TEST_F(CheckVerb, tells_what_is_wrong)
{
    write();
    overwrite_page(course(), 6);
    const std::string before = folder.read("verbs.crs");
    EXPECT_EQ(run({"check", course()}), 1);
    EXPECT_TRUE(out.starts_with(course() + " is not sound:\n")) << out;
    EXPECT_NE(out.find("Page 6 holds something else than a page of a course.\n"), std::string::npos) << out;
    EXPECT_EQ(run({"check", course(), "--json"}), 1);
    EXPECT_NE(out.find("\"sound\": false, \"records\": null, \"findings\": [\""), std::string::npos) << out;
    EXPECT_TRUE(folder.read("verbs.crs") == before);
}

TEST_F(CheckVerb, tells_that_an_index_and_its_table_differ)
{
    write();
    std::string bytes = folder.read("verbs.crs");
    const std::size_t place = bytes.find("question 123");
    ASSERT_NE(place, std::string::npos);
    bytes.replace(place, 12, "question abc"); // in the table or in the index, which come to differ
    folder.write("verbs.crs", bytes);
    EXPECT_EQ(run({"check", course()}), 1);
    EXPECT_NE(out.find("Row 123 is missing from index qa_q."), std::string::npos) << out;
}

TEST_F(CheckVerb, tells_which_rules_of_the_program_are_broken)
{
    fakes::CourseBuilder builder;
    builder.question("France?", "Paris").level(11);
    builder.question("", "Rome");
    builder.question("Spain?", "Madrid").number(40000);
    write(builder);
    EXPECT_EQ(run({"check", course()}), 1);
    EXPECT_EQ(out, course() + " is not sound:\n"
                              "1 record has a number outside 1 to 32767 and cannot be asked.\n"
                              "1 record has a level outside 0 to 10.\n"
                              "1 record has an empty question or answer.\n");
}

TEST_F(CheckVerb, refuses_what_is_no_course)
{
    folder.write("verbs.crs", "no course");
    EXPECT_EQ(run({"check", course()}), 2);
    EXPECT_EQ(err, "cuedrill-course: The course " + course() + " cannot be checked. It is not a course.\n");
    EXPECT_EQ(run({"check", folder.file("none.crs")}), 2);
    EXPECT_EQ(out, "");
}

TEST_F(CheckVerb, salvages_all_of_a_sound_course)
{
    write();
    EXPECT_EQ(run({"check", course(), "--salvage", target()}), 0) << out << err;
    EXPECT_EQ(out, course() + " is sound: 400 records.\n400 records were read into " + target() + ".\n");
    EXPECT_EQ(fakes::read_course(target()), fakes::read_course(course()));
}

TEST_F(CheckVerb, salvages_what_can_be_read)
{
    write();
    const fakes::CourseContents before = fakes::read_course(course());
    overwrite_page(course(), 7);
    const int code = run({"check", course(), "--json", "--salvage=" + target()});
    const fakes::CourseContents after = fakes::read_course(target());
    EXPECT_EQ(code == 0, after == before) << out;
    EXPECT_NE(out.find("\"salvaged\": {\"file\": \"" + target() + "\""), std::string::npos) << out;
}

TEST_F(CheckVerb, never_salvages_over_a_file)
{
    write();
    folder.write("salvaged.crs", "something dear");
    EXPECT_EQ(run({"check", course(), "--salvage", target()}), 2);
    EXPECT_EQ(folder.read("salvaged.crs"), "something dear");
    EXPECT_EQ(run({"check", course(), "--salvage", course()}), 2);
}

TEST_F(CheckVerb, says_why_the_new_course_cannot_be_written)
{
    write();
    {
        const fakes::FileSizeLimit full(8192);
        EXPECT_EQ(run({"check", course(), "--salvage", target()}), 1);
    }
    EXPECT_NE(err.find("The course " + course() + " could not be salvaged to " + target() + ". "), std::string::npos)
        << err;
    EXPECT_FALSE(std::filesystem::exists(target()));
}

TEST_F(CheckVerb, makes_no_course_where_nothing_can_be_read)
{
    write(fakes::CourseBuilder());
    EXPECT_EQ(run({"check", course(), "--salvage", target()}), 1);
    EXPECT_EQ(out, course() + " is sound: 0 records.\n0 records were read.\n");
    EXPECT_FALSE(std::filesystem::exists(target()));
    overwrite_page(course(), 1);
    EXPECT_EQ(run({"check", course(), "--salvage", target()}), 2) << out;
    EXPECT_FALSE(std::filesystem::exists(target()));
}

TEST_F(CheckVerb, salvages_a_course_that_is_cut_short)
{
    write();
    const auto size = std::filesystem::file_size(course());
    std::filesystem::resize_file(course(), size / 2 / 4096 * 4096);
    EXPECT_EQ(run({"check", course(), "--salvage", target()}), 1) << out << err;
    EXPECT_FALSE(fakes::read_course(target()).qa.empty());
}

} // namespace
} // namespace cuedrill::tools
