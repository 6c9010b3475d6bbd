#pragma once

#include "platform/f_msgbox.h"
#include "platform/qt/qt_button.h"
#include "platform/qt/qt_message_window.h"
#include "platform/qt/qt_text_box.h"

#include <QSizeGrip>

namespace cuedrill::platform::qt {

/// The message window. Its text is read-only and can be copied; long lines scroll.
class QtFMsgbox {
public:
    /// @param main_window must outlive this object.
    /// @param keys the key filter for all windows of the program.
    QtFMsgbox(QtGuard& guard, QWidget& main_window, QtKeyFilter& keys);
    QtFMsgbox(const QtFMsgbox&) = delete;
    QtFMsgbox& operator=(const QtFMsgbox&) = delete;

    [[nodiscard]] FMsgbox& controls() { return f_msgbox_; }

    [[nodiscard]] QWidget& widget() { return window_.widget(); }

private:
    class Grip final : public QtControl<Control> {
    public:
        Grip(const char* name, QWidget& widget) : QtControl(widget, name) {}
    };

    QtMessageWindow window_;
    QtTextBox text_;
    QtButton ok_;
    QSizeGrip& size_grip_;
    Grip grip_;
    FMsgbox f_msgbox_{window_, text_, ok_, grip_};
};

} // namespace cuedrill::platform::qt
