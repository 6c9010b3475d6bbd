#include "support/command_line.h"
#include "support/version_history.h"

#include <gtest/gtest.h>
#include <string>

namespace cuedrill::support {
namespace {

TEST(CommandLine, that_asks_for_help_is_answered_with_the_usage)
{
    const std::string usage = command_line_answer({"--help"}).value_or("");
    EXPECT_EQ(usage.substr(0, usage.find('\n')), "usage: cuedrill [COURSE]");
    for (const char* told :
         {"COURSE is a course file (.crs).", "  -h, --help ", "  --version ", "\n  0  ", "\n  1  ", "general.ini",
          "trace.txt", "trace.flg", "agenda.txt", "$XDG_CONFIG_HOME/CUEDRILL", "$XDG_DATA_HOME/cuedrill"})
        EXPECT_NE(usage.find(told), std::string::npos) << told;
    EXPECT_TRUE(usage.ends_with(".\n"));
    EXPECT_EQ(command_line_answer({"-h"}), usage);
}

TEST(CommandLine, has_a_usage_that_fits_a_terminal)
{
    const std::string usage = command_line_answer({"--help"}).value();
    for (std::size_t begin = 0; begin < usage.size(); begin = usage.find('\n', begin) + 1) {
        const std::string line = usage.substr(begin, usage.find('\n', begin) - begin);
        EXPECT_LE(line.size(), 80U) << line;
    }
}

TEST(CommandLine, that_asks_for_the_version_is_answered_with_it)
{
    EXPECT_EQ(command_line_answer({"--version"}), "Cuedrill version " + program_version() + "\n");
}

TEST(CommandLine, is_otherwise_for_the_program)
{
    EXPECT_EQ(command_line_answer({}), std::nullopt);
    EXPECT_EQ(command_line_answer({"verbs.crs"}), std::nullopt);
    EXPECT_EQ(command_line_answer({"./--help"}), std::nullopt);
    EXPECT_EQ(command_line_answer({"--Help"}), std::nullopt);
    EXPECT_EQ(command_line_answer({"-v"}), std::nullopt);
    EXPECT_EQ(command_line_answer({"--help", "--version"}), std::nullopt);
    EXPECT_EQ(command_line_answer({"--help", "verbs.crs"}), std::nullopt);
    EXPECT_EQ(command_line_answer({"verbs.crs", "--version"}), std::nullopt);
}

TEST(CommandLine, that_sets_the_style_is_told_from_others)
{
    for (const char* option : {"-style", "--style", "-style=windows", "--style=windows"})
        EXPECT_TRUE(sets_style({"verbs.crs", option})) << option;
    for (const char* other : {"verbs.crs", "style", "-stylesheet", "-stylesheet=x.qss", "---style"})
        EXPECT_FALSE(sets_style({other})) << other;
    EXPECT_FALSE(sets_style({}));
}

} // namespace
} // namespace cuedrill::support
