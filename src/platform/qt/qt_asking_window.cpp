#include "platform/qt/qt_asking_window.h"

#include <QCloseEvent>

namespace cuedrill::platform::qt {

void AskingWindow::show_in_front()
{
    show();
    // Otherwise the focus is drawn only from the first Tab on; but where Enter will go must be seen from the start.
    setAttribute(Qt::WA_KeyboardFocusChange);
    raise();
    activateWindow();
}

void AskingWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    if (close_asked)
        close_asked();
}

} // namespace cuedrill::platform::qt
