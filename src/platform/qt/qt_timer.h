#pragma once

#include "platform/controls.h"
#include "platform/qt/qt_guard.h"

#include <QTimer>

namespace cuedrill::platform::qt {

/// A tick that falls due while the previous one is still being handled is skipped.
class QtTimer final : public Timer {
public:
    explicit QtTimer(QtGuard& guard);

    void start(std::chrono::milliseconds period) override;
    void stop() override;

private:
    void tick();

    QtGuard& guard_;
    QTimer timer_;
    bool ticking_ = false;
};

} // namespace cuedrill::platform::qt
