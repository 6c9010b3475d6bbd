#pragma once

#include "platform/archive.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace cuedrill::platform::archive {

/// Most entries of an archive. A package has one for each picture and sound.
inline constexpr std::size_t most_entries = 100'000;
/// Most bytes of an archive's directory, where an entry takes 46 bytes and its name.
inline constexpr std::uint64_t longest_directory = 32ULL * 1024 * 1024;

/// Archives read with libzip and libzstd.
class ZipArchives : public Archives {
public:
    [[nodiscard]] std::unique_ptr<Archive> open(std::unique_ptr<FileReading> file) const override;
    [[nodiscard]] std::string unpack_zstandard(std::string_view frames, std::size_t longest) const override;
};

} // namespace cuedrill::platform::archive
