#pragma once

#include <exception>
#include <functional>

class QWidget;

namespace cuedrill::platform::qt {

/// The border between the toolkit and the logic: every event reaches the logic through it, and no exception of the
/// logic gets past it.
class QtGuard {
public:
    QtGuard() = default;
    QtGuard(const QtGuard&) = delete;
    QtGuard& operator=(const QtGuard&) = delete;

    /// Runs `handler`. common::ProgramEnded ends the program; any other exception is passed to `on_error`. Does nothing
    /// once the program is ending.
    void run(const std::function<void()>& handler) noexcept;

    /// Ends the program: all event loops, including modal ones, return with exit code 0.
    void end() noexcept;

    /// True once the program is ending. Check it after every nested event loop and after the pump.
    [[nodiscard]] bool ending() const { return ending_; }

    /// Reports an unexpected error to the user. It may show boxes and may itself throw.
    std::function<void(const std::exception&)> on_error;

private:
    void report(const std::exception& error) noexcept;

    bool ending_ = false;
    bool reporting_ = false;
};

/// Runs one user action of a window at a time: an action that arrives while another one is running, or while a modal
/// box blocks the window, is dropped. The toolkit does not guarantee this: assistive technology presses buttons through
/// a channel of its own, which neither the event pump nor a modal box holds back.
class QtActionGate {
public:
    QtActionGate(QtGuard& guard, const QWidget& window) : guard_(guard), window_(window) {}

    /// Runs `action` through the guard.
    /// @return false if it was dropped.
    bool run(const std::function<void()>& action) noexcept;

    [[nodiscard]] QtGuard& guard() { return guard_; }

private:
    QtGuard& guard_;
    const QWidget& window_;
    bool running_ = false;
};

} // namespace cuedrill::platform::qt
