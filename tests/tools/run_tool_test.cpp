#include "tools/tool_fixture.h"
#include "tools/verb.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace cuedrill::tools {
namespace {

class Tool : public ToolFixture {};

TEST_F(Tool, without_a_verb_makes_a_course)
{
    const std::string text = folder.write("questions.txt", "@Q@ Norway? @A@ Oslo");
    EXPECT_EQ(run({folder.file("new.crs"), text}), 0);
    EXPECT_EQ(out, "1 questions and answers insterted.\n");
    EXPECT_EQ(err, "");
    EXPECT_EQ(fakes::read_course(folder.file("new.crs")).qa.size(), 1U);
    EXPECT_EQ(run({folder.file("new.crs"), text}), 1);
    EXPECT_EQ(err, "cuedrill-course: There is a file " + folder.file("new.crs") + " already.\n");
}

TEST_F(Tool, tells_its_usage_when_it_is_not_understood)
{
    for (const std::vector<std::string>& line :
         {std::vector<std::string>{}, {"one"}, {"one", "two", "three"}, {"--version"}}) {
        EXPECT_EQ(run(line), 2);
        EXPECT_EQ(err.substr(0, 41), "usage: cuedrill-course COURSE QUESTIONS\n ");
        EXPECT_EQ(out, "");
    }
}

TEST_F(Tool, tells_all_its_verbs)
{
    EXPECT_EQ(run({"--help"}), 0);
    EXPECT_EQ(err, "");
    for (const Verb& verb : all_verbs())
        EXPECT_NE(out.find("cuedrill-course " + std::string(verb.name) + " " + std::string(verb.syntax.words)),
                  std::string::npos)
            << out;
}

TEST_F(Tool, has_help_for_each_verb)
{
    for (const Verb& verb : all_verbs()) {
        EXPECT_EQ(run({std::string(verb.name), "--help"}), 0);
        EXPECT_EQ(err, "");
        EXPECT_NE(out.find(verb.summary), std::string::npos) << out;
        for (const Option& option : verb.syntax.options)
            EXPECT_NE(out.find(option.help), std::string::npos) << out;
    }
}

TEST_F(Tool, refuses_what_a_verb_does_not_understand)
{
    for (const Verb& verb : all_verbs()) {
        const std::string name(verb.name);
        EXPECT_EQ(run({name}), 2);
        EXPECT_EQ(err, "cuedrill-course: Something is missing. See: cuedrill-course " + name + " --help\n");
        EXPECT_EQ(run({name, "a.crs", "--nothing"}), 2);
        EXPECT_EQ(out, "");
    }
}

/// A stream that takes nothing, like a full disk.
TEST_F(Tool, ends_with_1_when_its_output_cannot_be_written)
{
    const std::string course = many(3).write(folder, "course.crs");
    for (const std::string name : {"info", "list", "due", "stats", "dupes"}) {
        std::ofstream full("/dev/full");
        std::ostringstream messages;
        Surroundings around{full, messages, folder.file("data"), folder.file("runtime"), false};
        EXPECT_EQ(run_tool(std::vector<std::string>{name, course}, around), 1) << name;
        EXPECT_EQ(messages.str(), "cuedrill-course: The output cannot be written.\n");
    }
}

} // namespace
} // namespace cuedrill::tools
