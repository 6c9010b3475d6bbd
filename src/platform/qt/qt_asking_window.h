#pragma once

#include <QMainWindow>
#include <functional>

namespace cuedrill::platform::qt {

/// A top-level window that asks a hook whether it may close.
class AskingWindow : public QMainWindow {
public:
    std::function<void()> close_asked;

    /// Shows the window, brings it to the front and gives it the keyboard focus.
    void show_in_front();

protected:
    void closeEvent(QCloseEvent* event) override;
};

} // namespace cuedrill::platform::qt
