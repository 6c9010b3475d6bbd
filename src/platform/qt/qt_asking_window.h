#pragma once

#include <QMainWindow>
#include <functional>

namespace cuedrill::platform::qt {

/// A top-level window that leaves it to others whether it closes.
class AskingWindow : public QMainWindow {
public:
    std::function<void()> close_asked;

    /// Shows the window before all others, with the keyboard.
    void show_in_front();

protected:
    void closeEvent(QCloseEvent* event) override;
};

} // namespace cuedrill::platform::qt
