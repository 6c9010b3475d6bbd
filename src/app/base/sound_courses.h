#pragma once

#include "platform/settings_store.h"
#include "platform/sound_files.h"

#include <cstddef>
#include <string>

namespace cuedrill::app {

/// The marks of courses that were closed soundly, in the file that also keeps the window's place.
class SoundCourses final : public platform::SoundFiles {
public:
    /// The courses used last; older ones are forgotten, so that the file stays small.
    static constexpr std::size_t most_courses = 32;

    explicit SoundCourses(platform::SettingsStore& store) : store_(store) {}

    [[nodiscard]] bool is_noted(const std::string& path, const std::string& mark) const noexcept override;
    void note(const std::string& path, const std::string& mark) noexcept override;

private:
    /// One line a course, the newest first: the mark, a blank, the path.
    [[nodiscard]] std::string lines() const;

    platform::SettingsStore& store_;
};

} // namespace cuedrill::app
