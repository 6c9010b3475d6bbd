#pragma once

#include "platform/qt/qt_control.h"
#include "platform/qt/qt_event_watcher.h"
#include "platform/qt/qt_guard.h"

namespace cuedrill::platform::qt {

class QtFrame final : public QtControl<Frame> {
public:
    QtFrame(const char* name, QWidget& widget, QtGuard& guard);

    [[nodiscard]] common::Twips width() const override;

    [[nodiscard]] QWidget& widget() { return frame_; }

private:
    QWidget& frame_;
    EventWatcher watcher_;
};

} // namespace cuedrill::platform::qt
