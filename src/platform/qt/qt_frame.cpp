#include "platform/qt/qt_frame.h"

#include "platform/qt/qt_look.h"
#include "platform/qt/qt_text.h"

#include <QLabel>

namespace cuedrill::platform::qt {

QtFrame::QtFrame(const char* name, QWidget& widget, QLabel* heading, QtGuard& guard)
    : QtControl(widget, name), m_frame(widget), m_heading(heading),
      m_watcher(widget, [this, &guard](QEvent::Type event) {
          if (event == QEvent::Resize)
              guard.run(on_resize);
      })
{
    if (m_heading != nullptr)
        m_heading->hide();
}

void QtFrame::set_caption(std::string_view text)
{
    m_frame.setAccessibleName(to_qt(text));
    if (m_heading == nullptr)
        return;
    m_heading->setText(to_qt(text));
    m_heading->setVisible(!text.empty());
}

common::Twips QtFrame::width() const
{
    return to_twips(m_frame.width());
}

} // namespace cuedrill::platform::qt
