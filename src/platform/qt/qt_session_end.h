#pragma once

#include "platform/qt/qt_guard.h"

#include <QObject>
#include <array>
#include <csignal>
#include <memory>

class QSocketNotifier;

namespace cuedrill::platform::qt {

/// Lets the program end in good order when the session ends or the process is asked to (SIGTERM, SIGHUP, SIGINT; a
/// signal that the process was started to ignore stays ignored). A second signal of the same kind ends the process at
/// once. There can be one object of this class at a time.
class QtSessionEnd {
public:
    /// @param before_end is run through `guard` first; afterwards the program ends in any case.
    /// @throws common::Error when the system gives no pipe.
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
