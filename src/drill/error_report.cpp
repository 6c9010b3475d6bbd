#include "drill/error_report.h"

#include "common/errors.h"

#include <string>

namespace cuedrill::drill {

void ErrorReport::report(const std::exception& error)
{
    std::string text = common::words_of(error);
    if (const auto* const failure = dynamic_cast<const platform::DatabaseError*>(&error)) {
        text = "The course " + m_course.db_path + " could not be read or written.\r\n\r\n" + text;
        m_trace.write_trace("error - " + m_course.db_path + " - code " + std::to_string(failure->code()) + " - " +
                            failure->what());
    } else {
        m_trace.write_trace("error - " + text);
    }
    m_desktop.message_box({.text = text, .icon = platform::BoxIcon::exclamation});
}

} // namespace cuedrill::drill
