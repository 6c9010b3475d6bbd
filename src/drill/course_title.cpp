#include "drill/course_title.h"

#include "common/text.h"
#include "store/schema.h"

#include <string>

namespace cuedrill::drill {

void CourseTitle::set_window_title()
{
    window_.set_caption("Cuedrill: " + course_.params.course_title + " [" + text_compare_.lower(course_.course_name) +
                        "]");
}

void CourseTitle::m_change_course_title()
{
    const auto answer = desktop_.input_box({.prompt = "New title?",
                                            .title = "Course title modification",
                                            .default_text = course_.params.course_title,
                                            .longest = store::longest_text});
    if (!answer)
        return;
    const std::string title = text_compare_.nfc(common::trim_blanks(*answer));
    if (title.empty())
        return;
    params_.change_params([&title](store::CourseParams& params) { params.course_title = title; });
    set_window_title();
}

} // namespace cuedrill::drill
