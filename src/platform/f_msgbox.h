#pragma once

#include "common/twips.h"
#include "platform/controls.h"

namespace cuedrill::platform {

/// Position and size of a control, relative to the upper left corner of the window's client area.
struct Place {
    common::Twips left = 0;
    common::Twips top = 0;
    common::Twips width = 0;
    common::Twips height = 0;

    friend bool operator==(const Place&, const Place&) = default;
};

/// A second window, whose controls the logic places. The main window stays usable while it is shown.
class MessageWindow {
public:
    virtual ~MessageWindow() = default;

    virtual void set_caption(std::string_view text) = 0;
    /// Takes the position and size of the main window, so that it covers it exactly.
    virtual void cover_main_window() = 0;
    [[nodiscard]] virtual common::Twips inner_width() const = 0;
    [[nodiscard]] virtual common::Twips inner_height() const = 0;
    [[nodiscard]] virtual bool minimised() const = 0;
    /// Requires one of this window's controls.
    virtual void place(Control& control, const Place& place) = 0;
    /// Shows the window, restores it if it is minimised, brings it to the front and gives it the keyboard focus.
    virtual void show() = 0;
    virtual void hide() = 0;

    std::function<void()> on_resize;
    /// Called for a key before the controls see it. Returns whether the key is consumed.
    std::function<bool(const KeyPress&)> on_key;
    /// The user asks the window to close.
    std::function<void()> on_close;
};

/// The controls of the message window.
struct FMsgbox {
    MessageWindow& window;
    TextBox& Text1;
    Button& b_ok;
    Control& pic_adjust; ///< the size grip in the lower right corner
};

} // namespace cuedrill::platform
