#include "app/base/paths.h"

#include "common/text.h"

namespace cuedrill::app {
namespace {

/// Index of the last separator; npos if there is none.
std::size_t last_separator(std::string_view path)
{
    const std::size_t slash = path.rfind('/');
    return slash != std::string_view::npos ? slash : path.find_last_of("\\:");
}

} // namespace

void strip_quotes(std::string& path)
{
    if (path.starts_with('"'))
        path.erase(0, 1);
    if (path.ends_with('"'))
        path.pop_back();
}

std::string dir_of(std::string_view path)
{
    const std::size_t separator = last_separator(path);
    return separator == std::string_view::npos ? std::string() : std::string(path.substr(0, separator));
}

std::string file_of(std::string_view path)
{
    const std::size_t separator = last_separator(path);
    return std::string(separator == std::string_view::npos ? path : path.substr(separator + 1));
}

std::string name_of(std::string_view path)
{
    const std::string file = file_of(path);
    return file.substr(0, file.rfind('.'));
}

std::string join_path(std::string_view folder, std::string_view name)
{
    std::string path(folder);
    if (!path.ends_with('/'))
        path += '/';
    return path.append(name);
}

bool file_exists(const platform::Files& files, const std::string& path)
{
    return !common::trim_blanks(path).empty() && files.exists(path);
}

} // namespace cuedrill::app
