// Runs the program on a machine without a display; using a display would be an error here.

#include "fakes/temp_folder.h"
#include "support/command_line.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>

namespace cuedrill::support {
namespace {

class PrintedAnswers : public testing::Test {
protected:
    PrintedAnswers() { setenv("QT_QPA_PLATFORM", "no such platform", 1); }

    /// The exit code of the program; -1 if it did not exit by itself.
    [[nodiscard]] int run(const std::string& argument, const std::string& output) const
    {
        const std::string command =
            "'" CUEDRILL "' " + argument + " >'" + output + "' 2>'" + folder.file("errors") + "'";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    fakes::TempFolder folder;
};

TEST_F(PrintedAnswers, are_all_that_is_printed)
{
    for (const char* argument : {"--help", "-h", "--version"}) {
        EXPECT_EQ(run(argument, folder.file("output")), 0) << argument;
        EXPECT_EQ(folder.read("output"), command_line_answer({argument})) << argument;
        EXPECT_EQ(folder.read("errors"), "") << argument;
    }
}

TEST_F(PrintedAnswers, that_cannot_be_printed_are_a_failure)
{
    EXPECT_EQ(run("--version", "/dev/full"), 1);
    EXPECT_EQ(folder.read("errors"), "cuedrill: The text could not be printed.\n");
}

TEST_F(PrintedAnswers, tell_that_there_is_no_display)
{
    EXPECT_EQ(run("course.crs", folder.file("output")), 1);
    EXPECT_TRUE(folder.read("errors").starts_with("cuedrill: ")) << folder.read("errors");
}

} // namespace
} // namespace cuedrill::support
