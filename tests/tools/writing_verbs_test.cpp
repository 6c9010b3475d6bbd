#include "fakes/file_size_limit.h"
#include "fakes/super_journal.h"
#include "platform/system/system_open_courses.h"
#include "tools/tool_fixture.h"
#include "tools/verb.h"

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace cuedrill::tools {
namespace {

using namespace std::chrono_literals;

class WritingVerb : public ToolFixture {
protected:
    void SetUp() override
    {
        fakes::CourseBuilder builder;
        builder.question("Frnace?", "Paris").level(2).attempts(3).tested_ago(24h);
        builder.question("Italy?", "Rome").number(40);
        course = builder.write(folder, "course.crs");
        fakes::CourseBuilder other_builder;
        other_builder.question("Italy?", "Rome").level(4);
        other_builder.question("Italy?", "Roma").level(3);
        other_builder.question("Spain?", "Madrid").level(2);
        other = other_builder.write(folder, "other.crs");
    }

    [[nodiscard]] std::vector<fakes::QaRow> rows(const std::string& path) const { return fakes::read_course(path).qa; }
    [[nodiscard]] std::size_t number_of_copies() const { return copies.of(course).size(); }
    /// All lines that write to the course.
    [[nodiscard]] std::vector<std::vector<std::string>> writing_lines() const
    {
        return {{"fix", course, "1", "--question", "France?"},
                {"font", course, "Noto Sans"},
                {"merge", course, other},
                {"renumber", course, folder.file("renumbered.crs")}};
    }

    std::string course;
    std::string other;
};

TEST_F(WritingVerb, new_makes_a_course_without_records)
{
    const std::string path = folder.file("new.crs");
    EXPECT_EQ(run({"new", path, "--title", "Verbs"}), 0);
    EXPECT_EQ(out, path + "\n");
    const fakes::CourseContents contents = fakes::read_course(path);
    EXPECT_TRUE(contents.qa.empty());
    EXPECT_EQ(contents.param("course_title")->string_value, "Verbs");
    EXPECT_EQ(run({"new", path}), 2);
    EXPECT_EQ(err, "cuedrill-course: There is a file " + path + " already.\n");
    EXPECT_EQ(run({"new", folder.file("plain.crs")}), 0);
    EXPECT_TRUE(fakes::read_course(folder.file("plain.crs")).params.empty());
}

TEST_F(WritingVerb, touches_no_file_that_a_journal_beside_the_course_names)
{
    const std::vector<fakes::QaRow> before = rows(course);
    const std::string precious = folder.write("diary.txt", "precious");
    const std::string name = fakes::naming(precious);
    const std::string bytes = std::string(512 - name.size(), 'j') + name;
    const std::string journal = folder.write("course.crs-journal", bytes);
    std::vector<std::vector<std::string>> lines = writing_lines();
    lines.push_back({"info", course});
    for (const std::vector<std::string>& line : lines) {
        SCOPED_TRACE(line.front());
        EXPECT_EQ(run(line), 2);
        EXPECT_EQ(out, "");
        EXPECT_EQ(err, "cuedrill-course: The course " + course +
                           " cannot be opened. The file beside it, course.crs-journal, names another file that would "
                           "be deleted. Nothing was changed or deleted. No course of this program has such a file: get "
                           "the course once more from where it came from.\n");
        EXPECT_EQ(folder.read("diary.txt"), "precious");
        EXPECT_EQ(folder.read("course.crs-journal"), bytes);
    }
    EXPECT_FALSE(std::filesystem::exists(folder.file("renumbered.crs")));
    std::filesystem::remove(journal);
    EXPECT_EQ(rows(course), before);
    EXPECT_EQ(run({"info", course}), 0) << "nothing but the journal was in the way";
}

TEST_F(WritingVerb, fix_corrects_a_text_and_leaves_the_history)
{
    std::vector<fakes::QaRow> expected = rows(course);
    EXPECT_EQ(run({"fix", course, "1", "--question", "France?"}), 0);
    EXPECT_EQ(err, "");
    expected[0].q = "France?";
    EXPECT_EQ(rows(course), expected);
    EXPECT_EQ(run({"fix", course, "40", "--answer", "Rome\nRoma"}), 0);
    EXPECT_EQ(rows(course)[1].a, "Rome\r\nRoma");
}

TEST_F(WritingVerb, fix_makes_a_copy_and_keeps_the_old_texts)
{
    EXPECT_EQ(run({"fix", course, "1", "--question", "France?"}), 0);
    ASSERT_EQ(number_of_copies(), 1U);
    EXPECT_EQ(rows(copies.newest(course)->path)[0].q, "Frnace?");
    EXPECT_NE(folder.read("data/removed.txt").find("Frnace?"), std::string::npos);
}

TEST_F(WritingVerb, fix_refuses_what_the_editor_would_refuse)
{
    const std::vector<fakes::QaRow> before = rows(course);
    EXPECT_EQ(run({"fix", course, "1", "--question", "italy?"}), 2);
    EXPECT_EQ(err, "cuedrill-course: The record 40 has this question.\n");
    EXPECT_EQ(run({"fix", course, "2", "--question", "a"}), 2);
    EXPECT_EQ(err, "cuedrill-course: There is no record 2.\n");
    EXPECT_EQ(run({"fix", course, "1"}), 2);
    EXPECT_EQ(run({"fix", course, "0", "--answer", "a"}), 2);
    EXPECT_EQ(run({"fix", course, "one", "--answer", "a"}), 2);
    EXPECT_EQ(rows(course), before);
}

TEST_F(WritingVerb, goes_on_where_no_copy_can_be_made)
{
    folder.write("data", "a file where the folder should be");
    EXPECT_EQ(run({"fix", course, "1", "--question", "France?"}), 0);
    EXPECT_NE(err.find("No copy of the course could be made. "), std::string::npos) << err;
    EXPECT_NE(err.find("The old texts could not be kept. "), std::string::npos) << err;
    EXPECT_EQ(rows(course)[0].q, "France?");
}

TEST_F(WritingVerb, font_sets_prints_and_clears_the_font)
{
    EXPECT_EQ(run({"font", course}), 0);
    EXPECT_EQ(out, "The standard font\n");
    EXPECT_EQ(run({"font", course, "Noto Sans"}), 0);
    EXPECT_EQ(fakes::read_course(course).param("font")->string_value, "Noto Sans");
    EXPECT_EQ(run({"font", course}), 0);
    EXPECT_EQ(out, "Noto Sans\n");
    EXPECT_EQ(run({"font", course, "--clear"}), 0);
    EXPECT_EQ(run({"font", course}), 0);
    EXPECT_EQ(out, "The standard font\n");
    EXPECT_EQ(run({"font", course, "Noto Sans", "--clear"}), 2);
    EXPECT_EQ(run({"font", course, "  "}), 2);
    EXPECT_EQ(run({"font", course, std::string(201, 'a')}), 2);
}

TEST_F(WritingVerb, merge_adds_the_records_of_the_other_course)
{
    EXPECT_EQ(run({"merge", course, other}), 1);
    EXPECT_EQ(out, "2 records were added.\n1 left out, because the course has them already:\n  1: Italy?\n");
    const std::vector<fakes::QaRow> found = rows(course);
    ASSERT_EQ(found.size(), 4U);
    EXPECT_EQ(found[2].cnt, 41);
    EXPECT_EQ(found[3].q_side.successes, 2);
    EXPECT_EQ(number_of_copies(), 1U);
    EXPECT_EQ(rows(other).size(), 3U);
}

TEST_F(WritingVerb, merge_can_leave_out_all_known_questions)
{
    EXPECT_EQ(run({"merge", course, other, "--skip-duplicates"}), 1);
    EXPECT_TRUE(out.starts_with("1 record was added.\n2 left out")) << out;
}

TEST_F(WritingVerb, merge_refuses_a_course_with_itself)
{
    std::filesystem::create_symlink(course, folder.file("link.crs"));
    EXPECT_EQ(run({"merge", course, folder.file("link.crs")}), 2);
    EXPECT_EQ(err, "cuedrill-course: Both are the same course.\n");
}

TEST_F(WritingVerb, merge_refuses_what_does_not_fit)
{
    fakes::CourseBuilder full;
    full.question("last").number(32766);
    const std::string path = full.write(folder, "full.crs");
    EXPECT_EQ(run({"merge", path, other}), 2);
    EXPECT_TRUE(err.find(" Nothing was added. ") != std::string::npos) << err;
    EXPECT_EQ(rows(path).size(), 1U);
}

TEST_F(WritingVerb, renumber_makes_a_new_course)
{
    const std::string target = folder.file("renumbered.crs");
    EXPECT_EQ(run({"renumber", course, target}), 0);
    EXPECT_EQ(out, target + "\n");
    const std::vector<fakes::QaRow> found = rows(target);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[1].cnt, 2);
    EXPECT_EQ(found[0], rows(course)[0]);
    EXPECT_EQ(rows(course)[1].cnt, 40);
    EXPECT_EQ(number_of_copies(), 1U);
    EXPECT_EQ(run({"renumber", course, target}), 2);
    EXPECT_EQ(err, "cuedrill-course: There is a file " + target + " already.\n");
}

TEST_F(WritingVerb, refuses_a_course_that_a_window_has_open)
{
    const std::vector<fakes::QaRow> before = rows(course);
    platform::system::SystemOpenCourses window(folder.file("runtime"));
    window.enter(course);
    for (const std::vector<std::string>& line : writing_lines()) {
        EXPECT_EQ(run(line), 2) << line.front();
        EXPECT_EQ(err,
                  "cuedrill-course: The course " + course + " is open in another program. Close it there first.\n");
    }
    EXPECT_EQ(rows(course), before);
    EXPECT_EQ(number_of_copies(), 0U);
    window.leave();
    for (const std::vector<std::string>& line : writing_lines())
        EXPECT_LT(run(line), 2) << line.front() << err;
}

TEST_F(WritingVerb, changes_nothing_where_the_disk_is_full)
{
    const std::string before = folder.read("course.crs");
    for (const std::vector<std::string>& line : writing_lines()) {
        {
            const fakes::FileSizeLimit limit(100);
            EXPECT_EQ(run(line), 1) << line.front();
        }
        EXPECT_NE(err, "") << line.front();
        EXPECT_EQ(folder.read("course.crs"), before) << line.front();
    }
    EXPECT_FALSE(files.exists(folder.file("renumbered.crs")));
}

} // namespace
} // namespace cuedrill::tools
