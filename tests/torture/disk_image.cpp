#include "torture/disk_image.h"

#include <filesystem>
#include <fstream>
#include <functional>

namespace cuedrill::torture {

namespace fs = std::filesystem;

DiskImage read_image(const std::string& folder)
{
    DiskImage image;
    for (const auto& entry : fs::directory_iterator(folder)) {
        std::ifstream stream(entry.path(), std::ios::binary);
        std::string& bytes = image[entry.path().filename().string()];
        bytes.resize(static_cast<std::size_t>(entry.file_size()));
        stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    return image;
}

void write_image(const DiskImage& image, const std::string& folder)
{
    for (const auto& entry : fs::directory_iterator(folder))
        fs::remove(entry.path());
    for (const auto& [name, bytes] : image) {
        std::ofstream stream(fs::path(folder) / name, std::ios::binary | std::ios::trunc);
        stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
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
