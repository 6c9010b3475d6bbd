#pragma once

#include "platform/qt/qt_control.h"
#include "platform/qt/qt_event_watcher.h"
#include "platform/qt/qt_guard.h"

class QLabel;

namespace cuedrill::platform::qt {

class QtFrame final : public QtControl<Frame> {
public:
    /// @param heading shows the caption, as long as there is one; null where the frame has no room for it.
    QtFrame(const char* name, QWidget& widget, QLabel* heading, QtGuard& guard);

    void set_caption(std::string_view text) override;
    [[nodiscard]] common::Twips width() const override;

    [[nodiscard]] QWidget& widget() { return m_frame; }

private:
    QWidget& m_frame;
    QLabel* m_heading;
    EventWatcher m_watcher;
};

} // namespace cuedrill::platform::qt
