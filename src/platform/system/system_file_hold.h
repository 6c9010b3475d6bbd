#pragma once

#include "platform/files.h"

#include <chrono>
#include <memory>
#include <string>

namespace cuedrill::platform::system {

/// A lock by flock(2). It belongs to the open file, so a second one in the same process is refused like one of another
/// process.
class SystemFileHold : public FileHold {
public:
    /// As `Files::hold`.
    [[nodiscard]] static std::unique_ptr<FileHold> take(const std::string& path, std::chrono::milliseconds patience);

    /// Takes over `handle`.
    SystemFileHold(int handle, bool is_sure) : handle_(handle), is_sure_(is_sure) {}
    ~SystemFileHold() override;

    [[nodiscard]] bool is_sure() const override { return is_sure_; }

private:
    int handle_;
    bool is_sure_;
};

} // namespace cuedrill::platform::system
