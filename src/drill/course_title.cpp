#include "drill/course_title.h"

#include "common/text.h"
#include "store/schema.h"

#include <string>

namespace cuedrill::drill {

void CourseTitle::set_window_title()
{
    m_window.set_caption("Cuedrill: " + m_course.params.course_title + " [" +
                         m_text_compare.lower(m_course.course_name) + "]");
}

void CourseTitle::m_change_course_title()
{
    const auto answer = m_desktop.input_box({.prompt = "New title?",
                                             .title = "Course title modification",
                                             .default_text = m_course.params.course_title,
                                             .longest = store::longest_text});
    if (!answer)
        return;
    const std::string title = m_text_compare.nfc(common::trim_blanks(*answer));
    if (title.empty())
        return;
    store::CourseParams changed = m_course.params;
    changed.course_title = title;
    m_params.change_params(changed);
    set_window_title();
}

} // namespace cuedrill::drill
