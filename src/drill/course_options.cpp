#include "drill/course_options.h"

#include "common/text.h"

#include <string>

namespace cuedrill::drill {

void CourseOptions::show_course()
{
    show_options();
    commands_.entry(Command::change_target)
        .set_caption("Change &target level  (now " + std::to_string(course_.params.target_level) + ")");
}

void CourseOptions::show_options()
{
    commands_.entry(Command::always_type).set_checked(course_.params.always_type);
    commands_.entry(Command::always_hint).set_checked(course_.params.list_mode);
    commands_.entry(Command::random_extraction).set_checked(course_.params.random_mode);
    commands_.entry(Command::invert).set_checked(course_.params.invert);
}

void CourseOptions::show_target_level()
{
    commands_.entry(Command::change_target)
        .set_caption("Change target level (now " + std::to_string(course_.params.target_level) + ")");
}

std::string CourseOptions::words_for(Command option, bool on)
{
    return common::replace_all(row_of(option).entry->caption, "&", "") + (on ? ": on." : ": off.");
}

} // namespace cuedrill::drill
