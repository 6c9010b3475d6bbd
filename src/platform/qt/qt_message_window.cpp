#include "platform/qt/qt_message_window.h"

#include "platform/qt/qt_look.h"
#include "platform/qt/qt_text.h"

namespace cuedrill::platform::qt {

namespace {

/// Fits the smallest screen together with its frame.
constexpr QSize smallest_window{240, 150};
constexpr Qt::WindowStates filling = Qt::WindowMaximized | Qt::WindowFullScreen;

} // namespace

QtMessageWindow::QtMessageWindow(const char* name, QtGuard& guard, QWidget& main_window, QtKeyFilter& keys)
    : main_window_(main_window), gate_(guard, window_), context_help_(window_, gate_, {}),
      watcher_(window_, [this, &guard](QEvent::Type event) {
          if (event == QEvent::Resize || event == QEvent::WindowStateChange)
              guard.run(on_resize);
      })
{
    window_.setObjectName(QString::fromLatin1(name));
    window_.setMinimumSize(smallest_window);
    keys.add(window_, [this](const KeyPress& press) { return swallows(on_key, press, gate_); });
    window_.close_asked = [this, &guard] { guard.run(on_close); };
}

void QtMessageWindow::add(Control& control, QWidget& widget)
{
    widget.setParent(&window_);
    controls_.push_back({&control, &widget});
}

void QtMessageWindow::set_caption(std::string_view text)
{
    window_.setWindowTitle(to_title(text));
}

void QtMessageWindow::cover_main_window()
{
    window_.setGeometry(main_window_.normalGeometry());
    window_.setWindowState((window_.windowState() & ~filling) | (main_window_.windowState() & filling));
}

common::Twips QtMessageWindow::inner_width() const
{
    return to_twips(window_.width());
}

common::Twips QtMessageWindow::inner_height() const
{
    return to_twips(window_.height());
}

bool QtMessageWindow::minimised() const
{
    return window_.isMinimized();
}

void QtMessageWindow::place(Control& control, const Place& place)
{
    // Each edge is rounded on its own, so that gaps equal in twips look equal.
    const QPoint first(to_pixels(place.left), to_pixels(place.top));
    const QPoint end(to_pixels(place.left + place.width), to_pixels(place.top + place.height));
    for (const Entry& entry : controls_) {
        if (entry.control == &control)
            entry.widget->setGeometry(QRect(first, end - QPoint(1, 1)));
    }
}

void QtMessageWindow::show()
{
    window_.setWindowState(window_.windowState() & ~Qt::WindowMinimized);
    window_.show_in_front();
    if (!controls_.empty())
        controls_.front().widget->setFocus(Qt::OtherFocusReason);
}

void QtMessageWindow::hide()
{
    const bool has_keyboard = window_.isActiveWindow();
    window_.hide();
    if (has_keyboard && main_window_.isVisible())
        main_window_.activateWindow();
}

} // namespace cuedrill::platform::qt
