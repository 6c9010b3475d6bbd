#include "platform/qt/qt_guard.h"

#include "common/errors.h"

#include <QApplication>
#include <QWidget>
#include <cstdio>
#include <stdexcept>

namespace cuedrill::platform::qt {

void QtGuard::run(const std::function<void()>& handler) noexcept
{
    if (m_ending || !handler)
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
    m_ending = true;
    QCoreApplication::exit(0);
}

void QtGuard::report(const std::exception& error) noexcept
{
    // While one error is on display, further ones (a timer that fails again with every tick) must not pile up boxes.
    if (m_reporting || !on_error) {
        std::fprintf(stderr, "cuedrill: %s\n", error.what());
        return;
    }
    m_reporting = true;
    try {
        on_error(error);
    } catch (const common::ProgramEnded&) {
        end();
    } catch (const std::exception& second) {
        std::fprintf(stderr, "cuedrill: %s (while reporting: %s)\n", second.what(), error.what());
    } catch (...) {
        std::fprintf(stderr, "cuedrill: unknown error (while reporting: %s)\n", error.what());
    }
    m_reporting = false;
}

bool QtActionGate::run(const std::function<void()>& action) noexcept
{
    const QWidget* modal = QApplication::activeModalWidget();
    if (m_running || (modal != nullptr && modal != &m_window))
        return false;
    m_running = true;
    m_guard.run(action);
    m_running = false;
    return true;
}

} // namespace cuedrill::platform::qt
