#pragma once

#include "store/main_window_host.h"

#include <functional>
#include <string>
#include <string_view>

namespace cuedrill::fakes {

/// A main window that only remembers what was asked of it.
class FakeMainWindowHost : public store::MainWindowHost {
public:
    bool loaded = false;
    int loads = 0;
    int unloads = 0;
    std::string caption;
    /// Run by a load and by an unload, after they were counted; may throw.
    std::function<void()> on_load;
    std::function<void()> on_unload;

    void load_main_window() override
    {
        loaded = true;
        ++loads;
        if (on_load)
            on_load();
    }
    void unload_main_window() override
    {
        loaded = false;
        ++unloads;
        if (on_unload)
            on_unload();
    }
    void set_main_window_caption(std::string_view text) override { caption = text; }
};

} // namespace cuedrill::fakes
