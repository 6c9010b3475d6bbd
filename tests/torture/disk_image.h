#pragma once

#include <cstddef>
#include <map>
#include <string>

namespace cuedrill::torture {

/// The files of a folder: names without the folder, and their bytes.
using DiskImage = std::map<std::string, std::string>;

/// The files that are in the folder now.
[[nodiscard]] DiskImage read_image(const std::string& folder);

/// Makes the folder hold exactly these files.
void write_image(const DiskImage& image, const std::string& folder);

/// For telling images apart.
[[nodiscard]] std::size_t hash_of(const DiskImage& image);

} // namespace cuedrill::torture
