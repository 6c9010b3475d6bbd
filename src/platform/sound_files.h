#pragma once

#include <string>

namespace cuedrill::platform {

/// Remembers course files that were sound when they were closed, so that opening an unchanged one need not read all of
/// it again.
class SoundFiles {
public:
    virtual ~SoundFiles() = default;

    /// Whether the file at `path` was noted last with this mark.
    [[nodiscard]] virtual bool is_noted(const std::string& path, const std::string& mark) const noexcept = 0;

    /// Notes that the file at `path` is sound as long as it has this mark. A note that cannot be stored is dropped: the
    /// file is then checked when it is opened again.
    /// @param path absolute path.
    /// @param mark changes with every change of the file; one line of text.
    virtual void note(const std::string& path, const std::string& mark) noexcept = 0;
};

} // namespace cuedrill::platform
