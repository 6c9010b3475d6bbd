#include "platform/qt/qt_screen_room.h"

#include "platform/qt/qt_window_state.h"

#include <QLayout>
#include <QScreen>
#include <QWidget>

namespace cuedrill::platform::qt {

QSize room_on_screen(const QWidget& widget)
{
    return widget.screen()->availableGeometry().size() - frame_room;
}

void draw_together(QLayout& layout)
{
    constexpr int narrow = 2;
    layout.setContentsMargins(narrow, narrow, narrow, narrow);
    layout.setSpacing(narrow);
}

} // namespace cuedrill::platform::qt
