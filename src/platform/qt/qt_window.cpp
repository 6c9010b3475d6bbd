#include "platform/qt/qt_window.h"

#include "platform/qt/qt_text.h"

#include <QScreen>
#include <QStyle>

namespace cuedrill::platform::qt {

QtWindow::QtWindow(const char* name, QSize size, QtGuard& guard, QtWindowState state)
    : m_guard(guard), m_size(size), m_state(std::move(state)), m_gate(guard, m_window),
      m_key_filter(m_window, [this](const KeyPress& press) { return swallows(on_key, press, m_gate); }),
      m_context_help(m_window, m_gate,
                     [this] {
                         if (on_help)
                             on_help();
                     }),
      m_announcer(m_window)
{
    m_window.setObjectName(QString::fromLatin1(name));
    m_window.resize(size);
    m_window.close_asked = [this] { ask_to_close(); };
}

QtWindow::~QtWindow()
{
    keep_state();
}

void QtWindow::set_caption(std::string_view text)
{
    m_caption = text;
    m_window.setWindowTitle(to_title(text));
}

std::string QtWindow::caption() const
{
    return m_caption;
}

void QtWindow::show()
{
    if (!m_placed)
        place_on_screen();
    m_window.show_in_front();
}

void QtWindow::hide()
{
    keep_state();
    m_window.hide();
}

void QtWindow::announce(std::string_view text)
{
    m_announcer.tell(to_qt(text));
}

void QtWindow::ask_to_close()
{
    m_guard.run(on_close);
}

void QtWindow::end_session()
{
    // At once, because the system may not wait until everything has been cleared away.
    keep_state();
    m_guard.run(on_session_end);
}

void QtWindow::place_on_screen()
{
    m_placed = true;
    if (m_state.restore(m_window))
        return;
    const QRect available = m_window.screen()->availableGeometry();
    const QSize size = m_size.boundedTo(available.size() - frame_room);
    m_window.setGeometry(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, available));
}

/// A hidden window was kept when it was hidden.
void QtWindow::keep_state()
{
    if (m_window.isVisible())
        m_state.save(m_window);
}

} // namespace cuedrill::platform::qt
