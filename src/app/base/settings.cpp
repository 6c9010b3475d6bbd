#include "app/base/settings.h"

#include "common/errors.h"

namespace cuedrill::app {
namespace {

constexpr std::string_view application = "CUEDRILL";
constexpr std::string_view section = "general";

} // namespace

std::string Settings::get_setting(std::string_view key) const
{
    try {
        return store_.get(application, section, key).value_or("");
    } catch (const common::Error&) {
        return {};
    }
}

void Settings::save_setting(std::string_view key, std::string_view value)
{
    // Losing a setting costs the user one file dialog at the next start; an error here would cost the open course.
    try {
        // Writing waits for the disk, and most starts open the course that is already remembered.
        if (get_setting(key) != value)
            store_.set(application, section, key, value);
    } catch (const common::Error& error) {
        trace_.write_trace("save_setting - " + std::string(key) + " - " + error.what());
    }
}

} // namespace cuedrill::app
