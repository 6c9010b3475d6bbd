#include "platform/qt/qt_session_end.h"

#include "common/errors.h"

#include <QGuiApplication>
#include <QSessionManager>
#include <QSocketNotifier>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace cuedrill::platform::qt {

namespace {

// Global, because a signal handler can reach nothing else.
std::atomic<int> wake_up{-1};
static_assert(std::atomic<int>::is_always_lock_free);

// Only async-signal-safe calls are allowed here: writes one byte into a pipe, which wakes the event loop.
extern "C" void note_signal(int /*signal*/)
{
    const int earlier_errno = errno;
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(wake_up.load(), &byte, 1);
    errno = earlier_errno;
}

} // namespace

QtSessionEnd::QtSessionEnd(QtGuard& guard, std::function<void()> before_end)
    : guard_(guard), before_end_(std::move(before_end))
{
    if (::pipe2(pipe_.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        throw common::Error(std::string("No pipe for signals: ") + std::strerror(errno));
    notifier_ = std::make_unique<QSocketNotifier>(pipe_[0], QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, &context_, [this] {
        char byte = 0;
        while (::read(pipe_[0], &byte, 1) == 1) {
        }
        end();
    });
    QObject::connect(
        qGuiApp, &QGuiApplication::commitDataRequest, &context_, [this](QSessionManager&) { end(); },
        Qt::DirectConnection);
    install_handlers();
}

QtSessionEnd::~QtSessionEnd()
{
    for (std::size_t i = 0; i < signals_of_end.size(); ++i)
        ::sigaction(signals_of_end[i], &earlier_[i], nullptr);
    wake_up = -1;
    notifier_.reset();
    ::close(pipe_[0]);
    ::close(pipe_[1]);
}

void QtSessionEnd::install_handlers()
{
    wake_up = pipe_[1];
    struct sigaction action = {};
    action.sa_handler = note_signal;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < signals_of_end.size(); ++i) {
        ::sigaction(signals_of_end[i], nullptr, &earlier_[i]);
        if (earlier_[i].sa_handler != SIG_IGN)
            ::sigaction(signals_of_end[i], &action, nullptr);
    }
}

void QtSessionEnd::end()
{
    guard_.run(before_end_);
    guard_.end();
}

} // namespace cuedrill::platform::qt
