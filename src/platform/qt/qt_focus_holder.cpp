#include "platform/qt/qt_focus_holder.h"

#include <QWidget>

namespace cuedrill::platform::qt {

QtFocusHolder::QtFocusHolder(const char* name) : m_widget(*new QWidget)
{
    m_widget.setObjectName(QString::fromLatin1(name));
    m_widget.resize(0, 0);
    m_widget.setFocusPolicy(Qt::NoFocus);
    // Assistive technology tells where the focus is, also here.
    m_widget.setAccessibleName(QStringLiteral("Commands"));
}

void QtFocusHolder::set_focus()
{
    m_widget.setFocus(Qt::OtherFocusReason);
}

} // namespace cuedrill::platform::qt
