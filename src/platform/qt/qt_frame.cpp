#include "platform/qt/qt_frame.h"

#include "platform/qt/qt_look.h"

namespace cuedrill::platform::qt {

QtFrame::QtFrame(const char* name, QWidget& widget, QtGuard& guard)
    : QtControl(widget, name), frame_(widget), watcher_(widget, [this, &guard](QEvent::Type event) {
          if (event == QEvent::Resize)
              guard.run(on_resize);
      })
{
}

common::Twips QtFrame::width() const
{
    return to_twips(frame_.width());
}

} // namespace cuedrill::platform::qt
