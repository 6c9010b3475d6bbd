#include "torture/bounded_child.h"

#include <array>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cuedrill::torture {
namespace {

/// In the child; its argument is the descriptor for the words.
using Child = std::function<void(int)>;

void tell_result(int descriptor, const std::function<std::string()>& work)
{
    std::string words;
    try {
        words = work();
    } catch (const std::exception& error) {
        words = std::string("an unexpected exception: ") + error.what();
    }
    const bool told = ::write(descriptor, words.data(), words.size()) == static_cast<ssize_t>(words.size());
    ::_exit(told ? EXIT_SUCCESS : EXIT_FAILURE);
}

std::string death_of(int status)
{
    if (WIFSIGNALED(status))
        return "killed by signal " + std::to_string(WTERMSIG(status));
    return WEXITSTATUS(status) == EXIT_SUCCESS ? std::string() : "ended with " + std::to_string(WEXITSTATUS(status));
}

double seconds_of(const timeval& time)
{
    constexpr double microseconds = 1e6;
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / microseconds;
}

ChildOutcome outcome_of(const Child& be_child)
{
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0)
        throw std::runtime_error("no pipe");
    const pid_t child = ::fork();
    if (child == 0) {
        const rlimit limit{most_child_seconds, most_child_seconds + 1};
        ::setrlimit(RLIMIT_CPU, &limit);
        be_child(ends[1]);
        ::_exit(EXIT_FAILURE);
    }
    ::close(ends[1]);
    if (child < 0)
        throw std::runtime_error("no child process");
    ChildOutcome outcome;
    std::array<char, 4096> bytes{};
    for (ssize_t count = 0; (count = ::read(ends[0], bytes.data(), bytes.size())) > 0;)
        outcome.words.append(bytes.data(), static_cast<std::size_t>(count));
    ::close(ends[0]);
    int status = 0;
    rusage usage{};
    ::wait4(child, &status, 0, &usage);
    outcome.death = death_of(status);
    outcome.seconds = seconds_of(usage.ru_utime) + seconds_of(usage.ru_stime);
    outcome.peak_kilobytes = usage.ru_maxrss;
    return outcome;
}

void become(const std::vector<std::string>& line, int descriptor)
{
    std::vector<std::string> words = line;
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    ::dup2(descriptor, told_descriptor);
    ::execv(arguments.front(), arguments.data());
}

} // namespace

ChildOutcome run_bounded(const std::function<std::string()>& work)
{
    return outcome_of([&work](int descriptor) { tell_result(descriptor, work); });
}

ChildOutcome run_program_bounded(const std::vector<std::string>& line, const std::function<void()>& prepare)
{
    return outcome_of([&](int descriptor) {
        prepare();
        become(line, descriptor);
    });
}

} // namespace cuedrill::torture
