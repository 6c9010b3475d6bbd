#include "platform/qt/qt_f_msgbox.h"

#include <QPlainTextEdit>

namespace cuedrill::platform::qt {

QtFMsgbox::QtFMsgbox(QtGuard& guard, QWidget& main_window, QtKeyFilter& keys)
    : window_("f_msgbox", guard, main_window, keys), text_("Text1", window_.gate(), keys), ok_("b_ok", window_.gate()),
      size_grip_(*new QSizeGrip(&window_.widget())), grip_("pic_adjust", size_grip_)
{
    QPlainTextEdit& text = text_.widget();
    text.setLineWrapMode(QPlainTextEdit::NoWrap);
    text.setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    text.setFrameShape(QFrame::StyledPanel);
    text_.set_locked(true);
    window_.add(text_, text);
    window_.add(ok_, ok_.widget());
    size_grip_.setAccessibleName(QStringLiteral("Size of the window"));
    window_.add(grip_, size_grip_);
    size_grip_.raise();
}

} // namespace cuedrill::platform::qt
