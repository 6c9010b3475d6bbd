#pragma once

#include "platform/f_msgbox.h"

#include <string>
#include <string_view>

namespace cuedrill::support {

/// The message window, for texts too long for a box. It stays open next to the main window until it is closed.
class BigBox {
public:
    explicit BigBox(platform::FMsgbox& f_msgbox) : f_msgbox_(f_msgbox) {}

    /// Sets up the controls and connects their hooks.
    void attach();

    /// Shows `text` in the window. It covers the main window the first time, and later reopens where it was left.
    void big_box(std::string_view text, std::string_view caption);

    /// The text last passed to `big_box`.
    [[nodiscard]] const std::string& big_box_text() const { return big_box_text_; }

private:
    [[nodiscard]] bool take_key(const platform::KeyPress& press);
    void place_controls();

    platform::FMsgbox& f_msgbox_;
    std::string big_box_text_;
    bool created_ = false;
};

} // namespace cuedrill::support
