#pragma once

#include "platform/controls.h"
#include "platform/qt/qt_control.h"
#include "platform/qt/qt_guard.h"

#include <QPushButton>
#include <optional>

namespace cuedrill::platform::qt {

/// A push button that reports mouse buttons: a press before the button acts on it, and a release after the button has
/// acted.
class PressButton : public QPushButton {
public:
    std::function<void(Qt::MouseButton)> mouse_down;
    std::function<void(Qt::MouseButton)> mouse_up;

    /// The width, in pixels, that just fits the caption.
    [[nodiscard]] int needed_width() const;

    /// Requests this width, in pixels, from the layout instead of the style's default. The layout gives less if there
    /// is no room.
    void ask_for_width(int width);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    /// Does nothing: the second press of a double click must not answer what the first one has just asked. Further
    /// presses in fast succession are ignored, too; the toolkit reports the third one as a single press.
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    std::optional<int> asked_width_;
    std::optional<quint64> last_of_several_; ///< when a mouse button last went down in fast succession
};

class QtButton final : public QtControl<Button> {
public:
    enum class Kind {
        placed, ///< positioned by the logic, as high as its parent widget
        toolbar ///< positioned by the layout in a row; a click does not move the keyboard focus
    };

    QtButton(const char* name, QtActionGate& gate, Kind kind = Kind::placed);

    void offer_help(std::function<void()> ask) override;
    void set_caption(std::string_view text) override;
    [[nodiscard]] std::string caption() const override;
    void set_left(common::Twips left) override;
    void set_width(common::Twips width) override;
    [[nodiscard]] common::Twips width() const override;
    void set_tool_tip(std::string_view text) override;
    void show_access_letter(bool shown) override;
    void set_focus() override;
    [[nodiscard]] bool has_focus() const override;

    [[nodiscard]] PressButton& widget() { return button_; }

private:
    QtButton(const char* name, QtActionGate& gate, Kind kind, PressButton& button);
    void place();
    void show_caption();
    void clicked();
    void mouse_went_down(Qt::MouseButton button);
    void mouse_came_up(Qt::MouseButton button);

    PressButton& button_;
    QtActionGate& gate_;
    Kind kind_;
    std::string caption_;
    bool access_letter_shown_ = true;
    common::Twips left_ = 0;
    std::optional<common::Twips> width_;
    Qt::MouseButtons down_;
};

} // namespace cuedrill::platform::qt
