#pragma once

#include "common/twips.h"
#include "platform/controls.h"

namespace cuedrill::platform {

/// Where a control stands in its window, from the upper left corner of the window's inside.
struct Place {
    common::Twips left = 0;
    common::Twips top = 0;
    common::Twips width = 0;
    common::Twips height = 0;

    friend bool operator==(const Place&, const Place&) = default;
};

/// A further window, whose controls the logic places. While it is shown, the main window can be used too.
class MessageWindow {
public:
    virtual ~MessageWindow() = default;

    virtual void set_caption(std::string_view text) = 0;
    /// Takes position and size of the main window, so that it lies exactly over it.
    virtual void cover_main_window() = 0;
    [[nodiscard]] virtual common::Twips inner_width() const = 0;
    [[nodiscard]] virtual common::Twips inner_height() const = 0;
    [[nodiscard]] virtual bool minimised() const = 0;
    /// Requires one of this window's controls.
    virtual void place(Control& control, const Place& place) = 0;
    /// Brings the window to the front, with the keyboard; one that is minimised is restored.
    virtual void show() = 0;
    virtual void hide() = 0;

    std::function<void()> on_resize;
    /// A key that the window sees before its controls. Returns whether it is swallowed.
    std::function<bool(const KeyPress&)> on_key;
    /// The user asks the window to close.
    std::function<void()> on_close;
};

/// The controls of the message window, by their own names.
struct FMsgbox {
    MessageWindow& window;
    TextBox& Text1;
    Button& b_ok;
    Control& pic_adjust; ///< the picture in the lower right corner, by which the window's size is adjusted
};

} // namespace cuedrill::platform
