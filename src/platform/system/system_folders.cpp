#include "platform/system/system_folders.h"

#include <cstdlib>
#include <filesystem>
#include <pwd.h>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace cuedrill::platform::system {
namespace {

/// The value of an environment variable that must hold an absolute path; otherwise "".
std::string path_variable(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr && std::string_view(value).starts_with('/') ? value : "";
}

std::string home_folder()
{
    const std::string home = path_variable("HOME");
    if (!home.empty())
        return home;
    const passwd* const user = getpwuid(getuid());
    return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "";
}

} // namespace

std::string executable_folder()
{
    std::error_code error;
    const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::string() : executable.parent_path().string();
}

std::string data_home()
{
    const std::string data = path_variable("XDG_DATA_HOME");
    if (!data.empty())
        return data;
    const std::string home = home_folder();
    return home.empty() ? std::string() : home + "/.local/share";
}

std::string runtime_folder()
{
    const std::string runtime = path_variable("XDG_RUNTIME_DIR");
    if (!runtime.empty())
        return runtime + "/cuedrill";
    // Where a shell lacks the variable, as under su, the window has it all the same: systemd names this folder so.
    const std::string user = std::to_string(getuid());
    const std::string usual = "/run/user/" + user;
    struct stat status {};
    const bool is_own = ::stat(usual.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == getuid();
    return is_own ? usual + "/cuedrill" : "/tmp/cuedrill-" + user;
}

} // namespace cuedrill::platform::system
