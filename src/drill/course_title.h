#pragma once

#include "platform/controls.h"
#include "platform/desktop.h"
#include "platform/text_compare.h"
#include "store/course.h"
#include "store/course_params.h"

namespace cuedrill::drill {

/// The title of the open course: in the caption of the main window, and changed by the user.
class CourseTitle {
public:
    CourseTitle(store::Course& course, store::CourseParamsStore& params, platform::Window& window,
                platform::Desktop& desktop, const platform::TextCompare& text_compare)
        : m_course(course), m_params(params), m_window(window), m_desktop(desktop), m_text_compare(text_compare)
    {
    }

    /// Shows the title and the name of the course in the caption of the main window.
    void set_window_title();

    /// Asks for a new title and stores it. An empty answer changes nothing.
    /// @throws platform::DatabaseError; the title is unchanged then.
    void m_change_course_title();

private:
    store::Course& m_course;
    store::CourseParamsStore& m_params;
    platform::Window& m_window;
    platform::Desktop& m_desktop;
    const platform::TextCompare& m_text_compare;
};

} // namespace cuedrill::drill
