#pragma once

#include "platform/qt/qt_guard.h"

#include <QObject>
#include <array>
#include <csignal>
#include <memory>

class QSocketNotifier;

namespace cuedrill::platform::qt {

/// Ends the program cleanly when the session ends or on SIGTERM, SIGHUP and SIGINT (unless the process was started with
/// the signal ignored). A second signal of the same kind ends the process at once. Only one object of this class may
/// exist at a time.
class QtSessionEnd {
public:
    /// @param before_end runs first, through `guard`; the program ends in any case.
    /// @throws common::Error when the system cannot create a pipe.
    QtSessionEnd(QtGuard& guard, std::function<void()> before_end);
    QtSessionEnd(const QtSessionEnd&) = delete;
    QtSessionEnd& operator=(const QtSessionEnd&) = delete;
    ~QtSessionEnd();

private:
    static constexpr std::array signals_of_end{SIGTERM, SIGHUP, SIGINT};

    void install_handlers();
    void end();

    QtGuard& guard_;
    std::function<void()> before_end_;
    QObject context_;
    std::array<int, 2> pipe_{-1, -1};
    std::unique_ptr<QSocketNotifier> notifier_;
    std::array<struct sigaction, signals_of_end.size()> earlier_{};
};

} // namespace cuedrill::platform::qt
