#pragma once

#include "platform/controls.h"
#include "platform/qt/qt_control.h"
#include "platform/qt/qt_guard.h"

#include <QPushButton>
#include <optional>

namespace cuedrill::platform::qt {

/// A push button that tells when a button of the mouse goes down on it, before it acts on that, and when it comes up
/// again, after it has acted.
class PressButton : public QPushButton {
public:
    std::function<void(Qt::MouseButton)> mouse_down;
    std::function<void(Qt::MouseButton)> mouse_up;

    /// The width, in pixels, that the caption just needs.
    [[nodiscard]] int needed_width() const;

    /// Asks the layout for this width, in pixels, instead of the style's own. It gives less where there is no room.
    void ask_for_width(int width);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    /// Does nothing: the second press of a double click must not answer what the first one has just asked. Nor do the
    /// presses that follow it as fast; the toolkit takes the third one for a single press again.
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    std::optional<int> asked_width_;
    std::optional<quint64> last_of_several_; ///< when the button of the mouse last went down in such a row
};

class QtButton final : public QtControl<Button> {
public:
    enum class Kind {
        placed, ///< stands where the logic puts it, as high as the widget it stands in
        toolbar ///< stands in a row, where the layout puts it. A click leaves the keyboard focus where it is
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
