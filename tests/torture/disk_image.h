#pragma once

#include <cstddef>
#include <map>
#include <string>

namespace cuedrill::torture {

/// What is in a folder, at any depth: paths from the folder on, and the bytes of the files. The path of a folder ends
/// with a "/", and it has no bytes.
using DiskImage = std::map<std::string, std::string>;

/// What is in the folder now.
[[nodiscard]] DiskImage read_image(const std::string& folder);

/// Makes the folder hold exactly this.
void write_image(const DiskImage& image, const std::string& folder);

/// The folder that the path leads into, with a "/" at its end; "" for the one of the image itself.
[[nodiscard]] std::string parent_of(const std::string& path);

/// For telling images apart.
[[nodiscard]] std::size_t hash_of(const DiskImage& image);

} // namespace cuedrill::torture
