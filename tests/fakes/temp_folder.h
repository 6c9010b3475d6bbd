#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace cuedrill::fakes {

/// A new empty temporary folder, removed with its contents on destruction, even if a test has removed permissions.
class TempFolder {
public:
    TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder();

    [[nodiscard]] const std::filesystem::path& path() const;

    /// The full path of a name in the folder; the file need not exist.
    [[nodiscard]] std::string file(std::string_view name) const;

    /// Creates or replaces a file and returns its full path.
    std::string write(std::string_view name, std::string_view bytes) const;

    /// The bytes of a file in the folder.
    [[nodiscard]] std::string read(std::string_view name) const;

private:
    std::filesystem::path path_;
};

} // namespace cuedrill::fakes
