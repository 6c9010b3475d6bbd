#pragma once

#include "platform/files.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::packing {

/// A file to be put into an archive.
struct PackedFile {
    std::string name{};
    std::string bytes{};
    std::int32_t method = 8; ///< of compression, in the numbers of the zip format: 0 stored, 8 deflated, 12 bzip2
    std::string password{};  ///< empty for none
};

/// The bytes of a zip archive.
[[nodiscard]] std::string zip_of(const std::vector<PackedFile>& files);

/// One frame of the Zstandard format.
/// @param states_size whether it says how many bytes it holds.
/// @param window_log the size of the window as a power of two; 0 for the usual one.
[[nodiscard]] std::string zstandard_of(std::string_view bytes, bool states_size = true, int window_log = 0);

/// The bytes of a database file in which these statements were run. There is a collation "unicase".
[[nodiscard]] std::string database_of(const std::string& sql);

/// A file in memory, read in pieces of at most `longest_piece` bytes.
[[nodiscard]] std::unique_ptr<platform::FileReading> file_of(std::string bytes, std::size_t longest_piece = 1000);

} // namespace cuedrill::packing
