#include "platform/qt/qt_f_msgbox.h"

#include <QPlainTextEdit>

namespace cuedrill::platform::qt {

QtFMsgbox::QtFMsgbox(QtGuard& guard, QWidget& main_window)
    : m_window("f_msgbox", guard, main_window), m_text("Text1", m_window.gate(), m_window.key_filter()),
      m_ok("b_ok", m_window.gate()), m_size_grip(*new QSizeGrip(&m_window.widget())), m_grip("pic_adjust", m_size_grip)
{
    QPlainTextEdit& text = m_text.widget();
    text.setLineWrapMode(QPlainTextEdit::NoWrap);
    text.setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    text.setFrameShape(QFrame::StyledPanel);
    m_text.set_locked(true);
    m_window.add(m_text, text);
    m_window.add(m_ok, m_ok.widget());
    m_size_grip.setAccessibleName(QStringLiteral("Size of the window"));
    m_window.add(m_grip, m_size_grip);
    m_size_grip.raise();
}

} // namespace cuedrill::platform::qt
