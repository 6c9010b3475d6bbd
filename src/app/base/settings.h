#pragma once

#include "app/base/trace_log.h"
#include "platform/settings_store.h"

#include <string>
#include <string_view>

namespace cuedrill::app {

/// The program's own settings, independent of a course: application "CUEDRILL", section "general".
class Settings {
public:
    Settings(platform::SettingsStore& store, TraceLog& trace) : store_(store), trace_(trace) {}

    /// The stored text; "" if the key is absent or cannot be read.
    [[nodiscard]] std::string get_setting(std::string_view key) const;

    /// Stores `value` if it differs from the stored text. A failure to write is only noted in the trace.
    void save_setting(std::string_view key, std::string_view value);

private:
    platform::SettingsStore& store_;
    TraceLog& trace_;
};

} // namespace cuedrill::app
