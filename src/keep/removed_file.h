#pragma once

#include "platform/files.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace cuedrill::keep {

/// Name of the file for the texts that leave a course or never reached it.
inline constexpr std::string_view removed_file_name = "removed.txt";

/// Size in bytes from which on "removed.txt" is renamed: small enough for any editor, and far below the longest file
/// that an import reads.
inline constexpr std::uint64_t full_removed_file = 5'000'000;

/// "removed.txt" in the user's data folder: a question text in UTF-8 with a mark, which only grows. A full one becomes
/// "removed.1.txt", and those with a number get the next higher one. Several programs may append to it.
class RemovedFile {
public:
    RemovedFile(platform::Files& files, std::string folder);

    /// Appends an entry and waits until it is on the disk. Creates the folder if it is missing. A file that does not
    /// end as an entry does, or does not begin with the mark, is renamed like a full one, because what follows in it
    /// might be read as a part of something else.
    /// @return empty, or, if the file could not be renamed, the reason; the entry is appended all the same.
    /// @throws common::Error with the path and the reason when the entry could not be written.
    std::string append(std::string_view entry);

private:
    [[nodiscard]] bool make_room();
    void rename_files();
    [[nodiscard]] std::string numbered(int number) const;

    platform::Files& files_;
    std::string folder_;
    std::string path_;
};

} // namespace cuedrill::keep
