#pragma once

#include <string>

namespace cuedrill::platform::system {

/// An open folder, kept for an fsync after a name in it has changed.
class OpenFolder {
public:
    explicit OpenFolder(const std::string& path);
    OpenFolder(const OpenFolder&) = delete;
    OpenFolder& operator=(const OpenFolder&) = delete;
    ~OpenFolder();

    /// fsync. Does nothing if the user may not read the folder, and ignores failures: the file already has its new name
    /// and contents.
    void sync() const;

private:
    int handle_;
};

} // namespace cuedrill::platform::system
