#include "app/base/program_folder.h"

#include "app/base/paths.h"
#include "app/base/trace_log.h"
#include "common/errors.h"

namespace cuedrill::app {
namespace {

bool is_portable(const platform::Files& files, const std::string& executable_folder)
{
    return files.is_writable_folder(executable_folder) ||
           (!executable_folder.empty() && file_exists(files, join_path(executable_folder, trace_switch_file)));
}

} // namespace

std::string data_folder(const std::string& program_folder, const std::string& data_home)
{
    return data_home.empty() ? program_folder : join_path(data_home, "cuedrill");
}

std::string program_folder(platform::Files& files, const std::string& executable_folder, const std::string& data_home)
{
    if (data_home.empty() || is_portable(files, executable_folder))
        return executable_folder;

    const std::string folder = data_folder({}, data_home);
    try {
        files.create_folder(folder);
    } catch (const common::Error&) {
        // Nothing can be reported this early: there is neither a window nor the trace log.
    }
    return folder;
}

} // namespace cuedrill::app
