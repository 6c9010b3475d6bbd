#pragma once

#include "platform/qt/qt_control.h"
#include "platform/qt/qt_guard.h"

#include <QPushButton>

namespace cuedrill::platform::qt {

/// A push button that tells when a button of the mouse goes down on it, before it acts on that, and when it comes up
/// again, after it has acted.
class PressButton : public QPushButton {
public:
    std::function<void(Qt::MouseButton)> mouse_down;
    std::function<void(Qt::MouseButton)> mouse_up;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    /// Does nothing: the second press of a double click must not answer what the first one has just asked.
    void mouseDoubleClickEvent(QMouseEvent* event) override;
};

/// Stands where the logic puts it; its height is that of the widget it stands in.
class QtButton final : public QtControl<Button> {
public:
    QtButton(const char* name, QtActionGate& gate);

    void set_caption(std::string_view text) override;
    [[nodiscard]] std::string caption() const override;
    void set_left(common::Twips left) override;
    void set_width(common::Twips width) override;
    void set_focus() override;
    [[nodiscard]] bool has_focus() const override;

    [[nodiscard]] PressButton& widget() { return m_button; }

private:
    QtButton(const char* name, QtActionGate& gate, PressButton& button);
    void place();
    void clicked();
    void mouse_went_down(Qt::MouseButton button);
    void mouse_came_up(Qt::MouseButton button);

    PressButton& m_button;
    QtActionGate& m_gate;
    std::string m_caption;
    common::Twips m_left = 0;
    common::Twips m_width = 0;
    Qt::MouseButtons m_down;
};

} // namespace cuedrill::platform::qt
