#include "platform/qt/qt_window.h"

#include "platform/qt/qt_text.h"

#include <QScreen>
#include <QStyle>
#include <chrono>
#include <utility>

namespace cuedrill::platform::qt {

QtWindow::QtWindow(const char* name, QSize size, QtGuard& guard, QtWindowState state)
    : guard_(guard), size_(size), state_(state), gate_(guard, window_),
      key_filter_([this](const KeyEvent& event) { return judge(event); }), context_help_(window_, gate_,
                                                                                         [this] {
                                                                                             if (on_help)
                                                                                                 on_help();
                                                                                         }),
      announcer_(window_), paint_watcher_(window_, [this](QEvent::Type type) {
          if (type == QEvent::Paint && std::exchange(shown_anew_, false))
              after_paint_.start(0);
      })
{
    after_paint_.setSingleShot(true);
    QObject::connect(&after_paint_, &QTimer::timeout, &after_paint_, [this] { tell_first_picture(); });
    window_.setObjectName(QString::fromLatin1(name));
    window_.resize(size);
    key_filter_.add(window_, [this](const KeyPress& press) { return swallows(on_key, press, gate_); });
    window_.close_asked = [this] { ask_to_close(); };
}

QtWindow::~QtWindow()
{
    keep_state();
}

void QtWindow::set_caption(std::string_view text)
{
    caption_ = text;
    window_.setWindowTitle(to_title(text));
}

std::string QtWindow::caption() const
{
    return caption_;
}

void QtWindow::show()
{
    if (!placed_)
        place_on_screen();
    shown_anew_ = true;
    window_.show_in_front();
}

void QtWindow::hide()
{
    keep_state();
    after_paint_.stop();
    window_.hide();
}

void QtWindow::announce(std::string_view text)
{
    announcer_.tell(to_qt(text));
}

void QtWindow::announce_last(std::string_view text)
{
    announcer_.tell_last(to_qt(text));
}

void QtWindow::ask_to_close()
{
    guard_.run(on_close);
}

void QtWindow::end_session()
{
    // At once, because the system may not wait for an orderly shutdown.
    keep_state();
    guard_.run(on_session_end);
}

KeyJudgement QtWindow::judge(const KeyEvent& event)
{
    KeyJudgement judgement = as_sent(event);
    // Bypasses the gate, which drops events while an action is running: every key event must be judged.
    guard_.run([&] {
        if (on_key_event)
            judgement = on_key_event(event);
    });
    return judgement;
}

void QtWindow::place_on_screen()
{
    placed_ = true;
    if (state_.restore(window_))
        return;
    const QRect available = window_.screen()->availableGeometry();
    const QSize size = size_.boundedTo(available.size() - frame_room);
    window_.setGeometry(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, available));
}

void QtWindow::tell_first_picture()
{
    constexpr std::chrono::milliseconds until_next_try{50};
    // A box that is shown at the start, or an action of the user, comes first.
    const bool told = gate_.run([this] {
        if (on_first_picture)
            on_first_picture();
    });
    if (!told)
        after_paint_.start(until_next_try);
}

/// The state of a hidden window was saved when it was hidden.
void QtWindow::keep_state()
{
    if (window_.isVisible())
        state_.save(window_);
}

} // namespace cuedrill::platform::qt
