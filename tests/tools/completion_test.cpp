#include "tools/completion.h"
#include "tools/tool_fixture.h"
#include "tools/verb.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <string>

namespace cuedrill::tools {
namespace {

class Completion : public ToolFixture {
protected:
    /// What bash offers for the last of these words, one offer a line.
    [[nodiscard]] std::string offers(const std::string& words, int last) const
    {
        const std::string script = folder.write("completion.bash", bash_completion());
        const std::string line = "cd '" + folder.path().string() + "' && bash -c 'source " + script + "; COMP_WORDS=(" +
                                 words + "); COMP_CWORD=" + std::to_string(last) +
                                 "; _cuedrill_course; printf \"%s\\n\" \"${COMPREPLY[@]}\"' 2>&1";
        std::string offered;
        FILE* const output = popen(line.c_str(), "r");
        for (int c = std::fgetc(output); c != EOF; c = std::fgetc(output))
            offered += static_cast<char>(c);
        EXPECT_EQ(pclose(output), 0);
        return offered;
    }
};

TEST_F(Completion, offers_verbs_and_files_first)
{
    folder.write("restless.crs", "");
    EXPECT_EQ(offers("cuedrill-course re", 1), "renumber\nrestore\nrestless.crs\n");
    for (const Verb& verb : all_verbs())
        EXPECT_NE(offers("cuedrill-course \"\"", 1).find(std::string(verb.name) + "\n"), std::string::npos);
}

TEST_F(Completion, offers_the_options_of_the_verb)
{
    for (const Verb& verb : all_verbs()) {
        std::string expected;
        for (const Option& option : verb.syntax.options)
            expected += std::string(option.name) + "\n";
        EXPECT_EQ(offers("cuedrill-course " + std::string(verb.name) + " a.crs --", 3), expected + "--help\n");
    }
}

TEST_F(Completion, offers_files_behind_a_verb)
{
    folder.write("my verbs.crs", "");
    EXPECT_EQ(offers("cuedrill-course info my", 2), "my verbs.crs\n");
}

TEST_F(Completion, of_zsh_names_all_verbs_and_options)
{
    EXPECT_EQ(run({"completion", "zsh"}), 0);
    EXPECT_EQ(out, zsh_completion());
    EXPECT_TRUE(out.starts_with("#compdef cuedrill-course\n"));
    for (const Verb& verb : all_verbs()) {
        EXPECT_NE(out.find("        '" + std::string(verb.name) + ":"), std::string::npos);
        for (const Option& option : verb.syntax.options)
            EXPECT_NE(out.find("'" + std::string(option.name) + "["), std::string::npos) << option.name;
    }
}

TEST_F(Completion, of_another_shell_is_refused)
{
    EXPECT_EQ(run({"completion", "bash"}), 0);
    EXPECT_EQ(out, bash_completion());
    EXPECT_EQ(run({"completion", "fish"}), 2);
}

} // namespace
} // namespace cuedrill::tools
