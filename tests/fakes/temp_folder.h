#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace cuedrill::fakes {

/// A new empty folder of its own, removed with all it holds at the end, also where a test took its rights away.
class TempFolder {
public:
    TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder();

    [[nodiscard]] const std::filesystem::path& path() const;

    /// The full path of a name in the folder, whether it exists or not.
    [[nodiscard]] std::string file(std::string_view name) const;

    /// Makes (or replaces) a file and gives its full path.
    std::string write(std::string_view name, std::string_view bytes) const;

    /// The bytes of a file in the folder.
    [[nodiscard]] std::string read(std::string_view name) const;

private:
    std::filesystem::path path_;
};

} // namespace cuedrill::fakes
