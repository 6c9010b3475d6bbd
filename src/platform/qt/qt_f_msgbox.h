#pragma once

#include "platform/f_msgbox.h"
#include "platform/qt/qt_button.h"
#include "platform/qt/qt_message_window.h"
#include "platform/qt/qt_text_box.h"

#include <QSizeGrip>

namespace cuedrill::platform::qt {

/// The message window. Its text can be copied, but not changed; long lines are scrolled to.
class QtFMsgbox {
public:
    /// @param main_window must outlive this object.
    QtFMsgbox(QtGuard& guard, QWidget& main_window);
    QtFMsgbox(const QtFMsgbox&) = delete;
    QtFMsgbox& operator=(const QtFMsgbox&) = delete;

    [[nodiscard]] FMsgbox& controls() { return m_f_msgbox; }

    [[nodiscard]] QWidget& widget() { return m_window.widget(); }

private:
    class Grip final : public QtControl<Control> {
    public:
        Grip(const char* name, QWidget& widget) : QtControl(widget, name) {}
    };

    QtMessageWindow m_window;
    QtTextBox m_text;
    QtButton m_ok;
    QSizeGrip& m_size_grip;
    Grip m_grip;
    FMsgbox m_f_msgbox{m_window, m_text, m_ok, m_grip};
};

} // namespace cuedrill::platform::qt
