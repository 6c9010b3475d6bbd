#pragma once

#include <QSize>

class QLayout;
class QWidget;

namespace cuedrill::platform::qt {

/// The largest size, in pixels, of a window that lies on the screen of `widget` together with its frame.
QSize room_on_screen(const QWidget& widget);

/// Takes the space from between the parts of a dialog for which there is too little room, and from around them.
void draw_together(QLayout& layout);

} // namespace cuedrill::platform::qt
