#include "torture/window_life.h"

#include "fakes/course_builder.h"
#include "torture/window_folder.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <poll.h>
#include <stdexcept>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace cuedrill::torture {
namespace {

using Clock = std::chrono::steady_clock;

void set(const char* name, const std::string& value)
{
    ::setenv(name, value.c_str(), 1);
}

/// Waits for output until this time.
/// @return whether there is some, or the end of it.
bool wait_for(int descriptor, std::optional<Clock::time_point> end)
{
    for (;;) {
        int milliseconds = -1;
        if (end)
            milliseconds = static_cast<int>(
                std::max<std::int64_t>(0, std::chrono::ceil<std::chrono::milliseconds>(*end - Clock::now()).count()));
        pollfd poll{.fd = descriptor, .events = POLLIN, .revents = 0};
        const int ready = ::poll(&poll, 1, milliseconds);
        if (ready >= 0 || errno != EINTR)
            return ready > 0;
    }
}

} // namespace

WindowPlace::WindowPlace() : folder_(std::filesystem::canonical(disk_.path()).string())
{
    // The names of these folders are on the disk from the beginning, as those of every user.
    for (const char* const name : {window_config, window_data})
        std::filesystem::create_directory(folder_ + "/" + name);
}

void WindowPlace::make_course() const
{
    fakes::CourseBuilder builder;
    for (const char* const number : {"one", "two", "three", "four", "five", "six"})
        builder.question(std::string("Frage ") + number, std::string("answer ") + number);
    static_cast<void>(builder.write(disk_, window_course));
}

void WindowPlace::be_driver(const WindowLife& life) const
{
    const std::string outside = std::filesystem::canonical(outside_.path()).string();
    set("XDG_CONFIG_HOME", folder_ + "/" + window_config);
    set("XDG_DATA_HOME", folder_ + "/" + window_data);
    set("XDG_CACHE_HOME", outside);
    set("XDG_RUNTIME_DIR", outside);
    set("HOME", outside);
    set("QT_QPA_PLATFORM", "offscreen");
    set("FONTCONFIG_FILE", CUEDRILL_TEST_FONTS);
    set("CUEDRILL_TORTURE_FOLDER", folder_);
    set("CUEDRILL_TORTURE_CALLS", std::to_string(life.calls));
    if (life.logged)
        set("CUEDRILL_TORTURE_LOG", outside + "/log");
    set("LD_PRELOAD", TORTURE_PRELOAD);
    // The library comes before that of the address sanitizer, which would refuse to start. Either order does: each
    // one's calls lead to the other's or to the system. What a killed program has not freed is no leak.
    set("ASAN_OPTIONS", "verify_asan_link_order=0:detect_leaks=0");
    const int errors = ::open((outside + "/errors").c_str(), O_WRONLY | O_CREAT | O_TRUNC, S_IRUSR | S_IWUSR);
    ::dup2(errors, STDERR_FILENO);
    const std::string seed = std::to_string(life.script_seed);
    const std::string acts = std::to_string(life.acts);
    ::execl(TORTURE_WINDOW_DRIVER, TORTURE_WINDOW_DRIVER, folder_.c_str(), outside.c_str(), seed.c_str(), acts.c_str(),
            static_cast<char*>(nullptr));
    ::_exit(EXIT_FAILURE);
}

WindowEnd WindowPlace::live(const WindowLife& life, WindowCheck& check) const
{
    std::filesystem::remove(outside_.file("log"));
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0)
        throw std::runtime_error("no pipe");
    const pid_t driver = ::fork();
    if (driver == 0) {
        ::dup2(ends[1], STDOUT_FILENO);
        ::close(ends[0]);
        ::close(ends[1]);
        be_driver(life);
    }
    ::close(ends[1]);
    if (driver < 0)
        throw std::runtime_error("no driver");
    std::optional<Clock::time_point> end;
    bool has_begun = false;
    std::array<char, 65536> bytes{};
    for (;;) {
        if (!wait_for(ends[0], end)) {
            ::kill(driver, SIGKILL);
            end.reset();
        }
        const ssize_t count = ::read(ends[0], bytes.data(), bytes.size());
        if (count == 0 || (count < 0 && errno != EINTR))
            break;
        if (count > 0)
            check.take({bytes.data(), static_cast<std::size_t>(count)});
        if (!std::exchange(has_begun, true) && life.milliseconds != 0)
            end = Clock::now() + std::chrono::milliseconds(life.milliseconds);
    }
    ::close(ends[0]);
    int status = 0;
    ::waitpid(driver, &status, 0);
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL)
        return WindowEnd::killed;
    return WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS ? WindowEnd::by_itself : WindowEnd::failed;
}

} // namespace cuedrill::torture
