#pragma once

#include "platform/controls.h"
#include "platform/desktop.h"
#include "platform/text_compare.h"
#include "store/course.h"
#include "store/course_params.h"

namespace cuedrill::drill {

/// The title of the open course: shows it in the caption of the main window and lets the user change it.
class CourseTitle {
public:
    CourseTitle(store::Course& course, store::CourseParamsStore& params, platform::Window& window,
                platform::Desktop& desktop, const platform::TextCompare& text_compare)
        : course_(course), params_(params), window_(window), desktop_(desktop), text_compare_(text_compare)
    {
    }

    /// Shows the title and the name of the course in the caption of the main window.
    void set_window_title();

    /// Asks for a new title and stores it. An empty answer changes nothing.
    /// @throws platform::DatabaseError; the title is unchanged then.
    void m_change_course_title();

private:
    store::Course& course_;
    store::CourseParamsStore& params_;
    platform::Window& window_;
    platform::Desktop& desktop_;
    const platform::TextCompare& text_compare_;
};

} // namespace cuedrill::drill
