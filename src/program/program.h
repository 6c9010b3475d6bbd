#pragma once

#include "drill/drill_state.h"
#include "platform/qt/qt_form1.h"
#include "store/course.h"

#include <functional>
#include <memory>
#include <string>

namespace cuedrill::program {

struct Logic;

/// The whole program: the adapters, the objects that live as long as the program, and the logic connected to them.
class Program {
public:
    /// Requires a QApplication.
    /// @param keep_style keeps the widget style that the command line has set.
    /// @throws common::Error if the platform cannot be used.
    explicit Program(bool keep_style = false);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program();

    /// Opens the first course and runs until the program ends.
    /// @param command_line everything after the program's name.
    /// @param once_running called when the main window is shown; may be empty.
    /// @return the exit code of the process.
    int run(const std::string& command_line, const std::function<void()>& once_running = {});

    [[nodiscard]] platform::qt::QtForm1& form1();
    [[nodiscard]] store::Course& course();
    [[nodiscard]] const drill::ShownRecord& shown() const;

private:
    struct Platform;

    std::unique_ptr<Platform> platform_;
    std::unique_ptr<Logic> logic_;
};

} // namespace cuedrill::program
