#include "platform/qt/qt_asking_window.h"

#include <QCloseEvent>

namespace cuedrill::platform::qt {

void AskingWindow::show_in_front()
{
    show();
    // By default the focus is drawn only after the first Tab, but the target of Enter must be visible from the start.
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
