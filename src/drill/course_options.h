#pragma once

#include "drill/command_controls.h"
#include "store/course.h"

namespace cuedrill::drill {

/// The menu entries that show the options of the course.
class CourseOptions {
public:
    CourseOptions(CommandControls& commands, const store::Course& course) : commands_(commands), course_(course) {}

    /// Shows the options and the target level of a course that has just been opened.
    void show_course();

    /// Updates the check marks after an option has changed.
    void show_options();

    /// Updates the entry that shows the target level after it has changed.
    void show_target_level();

    /// Says that the option is on or off, for assistive technology.
    [[nodiscard]] static std::string words_for(Command option, bool on);

private:
    CommandControls& commands_;
    const store::Course& course_;
};

} // namespace cuedrill::drill
