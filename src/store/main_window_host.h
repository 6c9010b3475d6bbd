#pragma once

#include <string_view>

namespace cuedrill::store {

/// What opening a course asks of the main window.
class MainWindowHost {
public:
    virtual ~MainWindowHost() = default;

    /// Shows the window afresh on the course that has just been opened.
    virtual void load_main_window() = 0;

    /// Puts the window away and forgets what it showed, its answer and editing state included.
    virtual void unload_main_window() = 0;

    virtual void set_main_window_caption(std::string_view caption) = 0;
};

} // namespace cuedrill::store
