#include "torture/victim.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace cuedrill::torture {
namespace {

/// Reads what is there; returns false at the end.
bool read_some(int descriptor, std::string& output)
{
    std::array<char, 4096> bytes{};
    const ssize_t count = ::read(descriptor, bytes.data(), bytes.size());
    if (count > 0)
        output.append(bytes.data(), static_cast<std::size_t>(count));
    return count > 0 || (count < 0 && errno == EINTR);
}

} // namespace

Remains run_and_kill(const std::string& course, std::uint64_t script_seed, const Kill& kill)
{
    const std::string seed_text = std::to_string(script_seed);
    const std::string calls_text = std::to_string(kill.calls);
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0)
        throw std::runtime_error("no pipe");
    const pid_t driver = ::fork();
    if (driver == 0) {
        ::dup2(ends[1], STDOUT_FILENO);
        ::close(ends[0]);
        ::close(ends[1]);
        ::execl(TORTURE_DRIVER, TORTURE_DRIVER, course.c_str(), seed_text.c_str(), calls_text.c_str(),
                static_cast<char*>(nullptr));
        ::_exit(EXIT_FAILURE);
    }
    ::close(ends[1]);
    if (driver < 0)
        throw std::runtime_error("no driver");
    Remains remains;
    const bool has_begun = read_some(ends[0], remains.output);
    if (has_begun && kill.calls == 0) {
        ::usleep(static_cast<useconds_t>(kill.microseconds));
        ::kill(driver, SIGKILL);
    }
    while (read_some(ends[0], remains.output)) {
    }
    ::close(ends[0]);
    int status = 0;
    ::waitpid(driver, &status, 0);
    remains.was_killed = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    return remains;
}

} // namespace cuedrill::torture
