#include "platform/qt/qt_message_window.h"

#include "platform/qt/qt_look.h"
#include "platform/qt/qt_text.h"

namespace cuedrill::platform::qt {

namespace {

constexpr QSize smallest_window{240, 160};
constexpr Qt::WindowStates filling = Qt::WindowMaximized | Qt::WindowFullScreen;

} // namespace

QtMessageWindow::QtMessageWindow(const char* name, QtGuard& guard, QWidget& main_window)
    : m_main_window(main_window), m_gate(guard, m_window),
      m_key_filter(m_window, [this](const KeyPress& press) { return swallows(on_key, press, m_gate); }),
      m_context_help(m_window, m_gate, {}), m_watcher(m_window, [this, &guard](QEvent::Type event) {
          if (event == QEvent::Resize || event == QEvent::WindowStateChange)
              guard.run(on_resize);
      })
{
    m_window.setObjectName(QString::fromLatin1(name));
    m_window.setMinimumSize(smallest_window);
    m_window.close_asked = [this, &guard] { guard.run(on_close); };
}

void QtMessageWindow::add(Control& control, QWidget& widget)
{
    widget.setParent(&m_window);
    m_controls.push_back({&control, &widget});
}

void QtMessageWindow::set_caption(std::string_view text)
{
    m_window.setWindowTitle(to_title(text));
}

void QtMessageWindow::cover_main_window()
{
    m_window.setGeometry(m_main_window.normalGeometry());
    m_window.setWindowState((m_window.windowState() & ~filling) | (m_main_window.windowState() & filling));
}

common::Twips QtMessageWindow::inner_width() const
{
    return to_twips(m_window.width());
}

common::Twips QtMessageWindow::inner_height() const
{
    return to_twips(m_window.height());
}

bool QtMessageWindow::minimised() const
{
    return m_window.isMinimized();
}

void QtMessageWindow::place(Control& control, const Place& place)
{
    // All edges are rounded by themselves, so that equal gaps in twips stay equal to the eye.
    const QPoint first(to_pixels(place.left), to_pixels(place.top));
    const QPoint end(to_pixels(place.left + place.width), to_pixels(place.top + place.height));
    for (const Entry& entry : m_controls) {
        if (entry.control == &control)
            entry.widget->setGeometry(QRect(first, end - QPoint(1, 1)));
    }
}

void QtMessageWindow::show()
{
    m_window.setWindowState(m_window.windowState() & ~Qt::WindowMinimized);
    m_window.show_in_front();
    if (!m_controls.empty())
        m_controls.front().widget->setFocus(Qt::OtherFocusReason);
}

void QtMessageWindow::hide()
{
    const bool has_keyboard = m_window.isActiveWindow();
    m_window.hide();
    if (has_keyboard && m_main_window.isVisible())
        m_main_window.activateWindow();
}

} // namespace cuedrill::platform::qt
