#include "platform/qt/qt_focus_holder.h"

#include <QWidget>

namespace cuedrill::platform::qt {

QtFocusHolder::QtFocusHolder(const char* name) : widget_(*new QWidget)
{
    widget_.setObjectName(QString::fromLatin1(name));
    widget_.resize(0, 0);
    widget_.setFocusPolicy(Qt::NoFocus);
    // Assistive technology announces the focus here, too, so the widget needs a name.
    widget_.setAccessibleName(QStringLiteral("Commands"));
}

void QtFocusHolder::set_focus()
{
    widget_.setFocus(Qt::OtherFocusReason);
}

} // namespace cuedrill::platform::qt
