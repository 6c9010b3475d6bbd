#pragma once

#include <exception>
#include <functional>

class QWidget;

namespace cuedrill::platform::qt {

/// Stands between the toolkit and the logic: every event reaches the logic through it, and nothing that the logic
/// throws leaves it.
class QtGuard {
public:
    QtGuard() = default;
    QtGuard(const QtGuard&) = delete;
    QtGuard& operator=(const QtGuard&) = delete;

    /// Runs `handler`. common::ProgramEnded ends the program; any other exception goes to `on_error`. Once the program
    /// is ending nothing is run any more.
    void run(const std::function<void()>& handler) noexcept;

    /// Ends the program: all event loops, modal ones too, return with exit code 0.
    void end() noexcept;

    /// Whether the program is ending. Who builds on a modal loop or on the pump asks this when it returns.
    [[nodiscard]] bool ending() const { return ending_; }

    /// Tells the user about an error that nobody expected. It may show boxes and may itself throw.
    std::function<void(const std::exception&)> on_error;

private:
    void report(const std::exception& error) noexcept;

    bool ending_ = false;
    bool reporting_ = false;
};

/// Lets one user action of a window run at a time: what arrives while another one is running, or while a modal box
/// blocks the window, is dropped. The toolkit itself does not promise that: assistive technology presses buttons
/// through a channel of its own, which neither the event pump nor a modal box holds back.
class QtActionGate {
public:
    QtActionGate(QtGuard& guard, const QWidget& window) : guard_(guard), window_(window) {}

    /// Runs `action` through the guard.
    /// @return false when it was dropped.
    bool run(const std::function<void()>& action) noexcept;

    [[nodiscard]] QtGuard& guard() { return guard_; }

private:
    QtGuard& guard_;
    const QWidget& window_;
    bool running_ = false;
};

} // namespace cuedrill::platform::qt
