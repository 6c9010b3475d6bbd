#include "drill/error_report.h"

#include "common/errors.h"

#include <string>

namespace cuedrill::drill {

void ErrorReport::report(const std::exception& error)
{
    std::string text = common::words_of(error);
    if (const auto* const failure = dynamic_cast<const platform::DatabaseError*>(&error)) {
        text = "The course " + course_.db_path + " could not be read or written.\r\n\r\n" + text;
        trace_.write_trace("error - " + course_.db_path + " - code " + std::to_string(failure->code()) + " - " +
                           failure->what());
        if (failure->kind() == platform::DatabaseErrorKind::damaged)
            text += copies_.words_about_newest(course_.db_path);
    } else {
        trace_.write_trace("error - " + text);
    }
    desktop_.message_box({.text = text, .icon = platform::BoxIcon::exclamation});
}

} // namespace cuedrill::drill
