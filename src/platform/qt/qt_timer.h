#pragma once

#include "platform/controls.h"
#include "platform/qt/qt_guard.h"

#include <QTimer>
#include <chrono>
#include <functional>

namespace cuedrill::platform::qt {

/// A tick that falls due while the previous one is still being handled is skipped.
class QtTimer final : public Timer {
public:
    explicit QtTimer(QtGuard& guard);
    /// A timer that skips its ticks while an action of the window is running or a box is open.
    /// @param longest_wait a skipped tick comes again after twice the time of the one before, up to this; by default
    /// after the period. So a timer of a short period ticks soon after an action, and does not wake the program again
    /// and again as long as a box is open.
    explicit QtTimer(QtActionGate& gate, std::chrono::milliseconds longest_wait = std::chrono::milliseconds::zero());

    void start(std::chrono::milliseconds period) override;
    void stop() override;

    /// The time from the last tick, skipped or not, to the next one.
    [[nodiscard]] std::chrono::milliseconds wait() const { return timer_.intervalAsDuration(); }

private:
    using Handler = std::function<void()>;
    /// Runs the hook; false if that was skipped.
    using Run = std::function<bool(const Handler&)>;

    QtTimer(Run run, std::chrono::milliseconds longest_wait);
    void tick();
    [[nodiscard]] std::chrono::milliseconds wait_after_skipped_tick() const;

    Run run_;
    std::chrono::milliseconds longest_wait_;
    std::chrono::milliseconds period_{0};
    QTimer timer_;
    bool ticking_ = false;
};

} // namespace cuedrill::platform::qt
