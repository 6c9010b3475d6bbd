#include "platform/qt/qt_window.h"

#include "platform/qt/qt_text.h"

#include <QCloseEvent>
#include <QScreen>
#include <QStyle>

namespace cuedrill::platform::qt {

void AskingWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    if (close_asked)
        close_asked();
}

QtWindow::QtWindow(const char* name, QSize size, QtGuard& guard)
    : m_guard(guard), m_size(size), m_gate(guard, m_window),
      m_key_filter(m_window, [this](const KeyPress& press) { return swallows(on_key, press, m_gate); })
{
    m_window.setObjectName(QString::fromLatin1(name));
    m_window.resize(size);
    m_window.close_asked = [this] { ask_to_close(); };
}

void QtWindow::set_caption(std::string_view text)
{
    m_caption = text;
    // "[*]" is where the toolkit marks a changed document; written twice it is shown as it is.
    m_window.setWindowTitle(to_qt(text).replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
}

std::string QtWindow::caption() const
{
    return m_caption;
}

void QtWindow::show()
{
    if (!m_placed)
        place_on_screen();
    m_window.show();
    // Otherwise the focus is drawn only from the first Tab on; but where Enter will go must be seen from the start.
    m_window.setAttribute(Qt::WA_KeyboardFocusChange);
    m_window.raise();
    m_window.activateWindow();
}

void QtWindow::hide()
{
    m_window.hide();
}

void QtWindow::ask_to_close()
{
    m_guard.run(on_close);
}

void QtWindow::end_session()
{
    m_guard.run(on_session_end);
}

void QtWindow::place_on_screen()
{
    m_placed = true;
    const QRect available = m_window.screen()->availableGeometry();
    // Room for the frame, which the system draws around the window and tells only afterwards.
    constexpr QSize frame(16, 48);
    const QSize size = m_size.boundedTo(available.size() - frame);
    m_window.setGeometry(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, available));
}

} // namespace cuedrill::platform::qt
