#include "torture/disk_image.h"

#include <filesystem>
#include <fstream>
#include <functional>

namespace cuedrill::torture {

namespace fs = std::filesystem;

DiskImage read_image(const std::string& folder)
{
    DiskImage image;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::string path = entry.path().lexically_relative(folder).string();
        if (entry.is_directory())
            image[path + "/"];
        if (!entry.is_regular_file())
            continue;
        std::ifstream stream(entry.path(), std::ios::binary);
        std::string& bytes = image[path];
        bytes.resize(static_cast<std::size_t>(entry.file_size()));
        stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    return image;
}

void write_image(const DiskImage& image, const std::string& folder)
{
    for (const auto& entry : fs::directory_iterator(folder))
        fs::remove_all(entry.path());
    for (const auto& [name, bytes] : image) {
        // A folder comes before what is in it.
        if (name.ends_with('/')) {
            fs::create_directory(fs::path(folder) / name);
            continue;
        }
        std::ofstream stream(fs::path(folder) / name, std::ios::binary | std::ios::trunc);
        stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
}

std::string parent_of(const std::string& path)
{
    const std::size_t end = path.find_last_not_of('/');
    const std::size_t slash = end == std::string::npos ? end : path.rfind('/', end);
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

std::size_t hash_of(const DiskImage& image)
{
    constexpr std::size_t factor = 1099511628211U;
    std::size_t hash = 0;
    for (const auto& [name, bytes] : image)
        hash = ((hash * factor) ^ std::hash<std::string>()(name)) * factor ^ std::hash<std::string>()(bytes);
    return hash;
}

} // namespace cuedrill::torture
