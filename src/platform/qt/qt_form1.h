#pragma once

#include "platform/form1.h"
#include "platform/qt/qt_guard.h"
#include "platform/qt/qt_key_filter.h"
#include "platform/qt/qt_window_state.h"

#include <QSize>
#include <memory>
#include <string>

class QMainWindow;

namespace cuedrill::platform::qt {

struct QtForm1Controls;

/// Size of the main window when nothing is stored, in pixels. The type has the size laid down for it.
inline constexpr QSize first_size{1000, 720};

/// The main window. If the session ends or the process gets a signal to terminate, it calls its window's
/// `on_session_end`, and the program ends in any case.
class QtForm1 {
public:
    /// @param state stores position and size of the window.
    explicit QtForm1(QtGuard& guard, QtWindowState state = QtWindowState());
    QtForm1(const QtForm1&) = delete;
    QtForm1& operator=(const QtForm1&) = delete;
    ~QtForm1();

    [[nodiscard]] Form1& controls();

    [[nodiscard]] QMainWindow& widget();

    /// The key filter for all windows of the program.
    [[nodiscard]] QtKeyFilter& key_filter();

    /// Writes the window as it looks now to a picture file in the format of the extension (".png").
    /// @throws common::Error if the file cannot be written.
    void save_picture(const std::string& path);

private:
    std::unique_ptr<QtForm1Controls> controls_;
    Form1 form1_;
};

} // namespace cuedrill::platform::qt
