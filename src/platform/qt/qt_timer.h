#pragma once

#include "platform/controls.h"
#include "platform/qt/qt_guard.h"

#include <QTimer>
#include <functional>

namespace cuedrill::platform::qt {

/// A tick that falls due while the previous one is still being handled is skipped.
class QtTimer final : public Timer {
public:
    explicit QtTimer(QtGuard& guard);
    /// A timer that skips its ticks while an action of the window is running or a box is open.
    explicit QtTimer(QtActionGate& gate);

    void start(std::chrono::milliseconds period) override;
    void stop() override;

private:
    using Handler = std::function<void()>;

    explicit QtTimer(std::function<void(const Handler&)> run);
    void tick();

    std::function<void(const Handler&)> run_; ///< runs the hook
    QTimer timer_;
    bool ticking_ = false;
};

} // namespace cuedrill::platform::qt
