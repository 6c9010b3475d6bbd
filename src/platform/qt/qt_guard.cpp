#include "platform/qt/qt_guard.h"

#include "common/errors.h"

#include <QApplication>
#include <QWidget>
#include <cstdio>
#include <stdexcept>

namespace cuedrill::platform::qt {

void QtGuard::run(const std::function<void()>& handler) noexcept
{
    if (ending_ || !handler)
        return;
    try {
        handler();
    } catch (const common::ProgramEnded&) {
        end();
    } catch (const std::exception& error) {
        report(error);
    } catch (...) {
        report(std::runtime_error("Unknown error"));
    }
}

void QtGuard::end() noexcept
{
    ending_ = true;
    QCoreApplication::exit(0);
}

void QtGuard::report(const std::exception& error) noexcept
{
    // While one error is displayed, further ones (a timer that fails at every tick) must not pile up boxes.
    if (reporting_ || !on_error) {
        std::fprintf(stderr, "cuedrill: %s\n", error.what());
        return;
    }
    reporting_ = true;
    try {
        on_error(error);
    } catch (const common::ProgramEnded&) {
        end();
    } catch (const std::exception& second) {
        std::fprintf(stderr, "cuedrill: %s (while reporting: %s)\n", second.what(), error.what());
    } catch (...) {
        std::fprintf(stderr, "cuedrill: unknown error (while reporting: %s)\n", error.what());
    }
    reporting_ = false;
}

bool QtActionGate::run(const std::function<void()>& action) noexcept
{
    const QWidget* modal = QApplication::activeModalWidget();
    if (running_ || (modal != nullptr && modal != &window_))
        return false;
    running_ = true;
    guard_.run(action);
    running_ = false;
    return true;
}

} // namespace cuedrill::platform::qt
