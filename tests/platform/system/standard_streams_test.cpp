#include "platform/system/standard_streams.h"

#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace cuedrill::platform::system {
namespace {

/// Whether `check` holds in a child process that was started with these streams closed.
bool holds_without(const std::vector<int>& closed, bool (*check)())
{
    const pid_t child = ::fork();
    if (child == 0) {
        for (const int stream : closed)
            ::close(stream);
        occupy_standard_streams();
        std::_Exit(check() ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS;
}

bool next_file_is_no_stream()
{
    return ::open("/dev/null", O_RDWR) > STDERR_FILENO;
}

TEST(StandardStreams, GiveTheirDescriptorsToNoOtherFile)
{
    EXPECT_TRUE(holds_without({}, next_file_is_no_stream));
    EXPECT_TRUE(holds_without({STDERR_FILENO}, next_file_is_no_stream));
    EXPECT_TRUE(holds_without({STDIN_FILENO, STDERR_FILENO}, next_file_is_no_stream));
    EXPECT_TRUE(holds_without({STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}, next_file_is_no_stream));
}

TEST(StandardStreams, StillFailWhereTheyWereClosed)
{
    const auto fail = [] {
        char byte = 0;
        return ::read(STDIN_FILENO, &byte, 1) == -1 && ::write(STDOUT_FILENO, &byte, 1) == -1 &&
               ::write(STDERR_FILENO, &byte, 1) == -1;
    };
    EXPECT_TRUE(holds_without({STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}, fail));
}

TEST(StandardStreams, StayAsTheyAreWhereTheyAreOpen)
{
    const auto work = [] { return ::write(STDERR_FILENO, "", 0) == 0; };
    EXPECT_TRUE(holds_without({STDIN_FILENO}, work));
}

} // namespace
} // namespace cuedrill::platform::system
