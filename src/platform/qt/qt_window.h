#pragma once

#include "platform/controls.h"
#include "platform/qt/qt_announcement.h"
#include "platform/qt/qt_asking_window.h"
#include "platform/qt/qt_context_help.h"
#include "platform/qt/qt_event_watcher.h"
#include "platform/qt/qt_guard.h"
#include "platform/qt/qt_key_filter.h"
#include "platform/qt/qt_window_state.h"

#include <QSize>
#include <QTimer>

namespace cuedrill::platform::qt {

class QtWindow final : public Window {
public:
    /// @param size initial size in pixels, centred on the screen; smaller if the screen is smaller.
    /// @param state stores position and size, which replace `size` from the second run of the program on. They are
    /// saved when the window is hidden, when the session ends, and when the window is destroyed.
    QtWindow(const char* name, QSize size, QtGuard& guard, QtWindowState state = QtWindowState());
    QtWindow(const QtWindow&) = delete;
    QtWindow& operator=(const QtWindow&) = delete;
    ~QtWindow() override;

    void set_caption(std::string_view text) override;
    [[nodiscard]] std::string caption() const override;
    void show() override;
    void hide() override;
    void announce(std::string_view text) override;
    void announce_last(std::string_view text) override;

    /// Calls `on_close`, as a click on the window's close button does.
    void ask_to_close();

    /// Calls `on_session_end`.
    void end_session();

    [[nodiscard]] AskingWindow& widget() { return window_; }
    /// The gate for user actions in this window.
    [[nodiscard]] QtActionGate& gate() { return gate_; }
    /// For announcements of the controls in this window.
    [[nodiscard]] QtAnnouncer& announcer() { return announcer_; }
    /// The key filter for all windows of the program.
    [[nodiscard]] QtKeyFilter& key_filter() { return key_filter_; }

private:
    KeyJudgement judge(const KeyEvent& event);
    void place_on_screen();
    void keep_state();
    void tell_first_picture();

    QtGuard& guard_;
    QSize size_;
    QtWindowState state_;
    AskingWindow window_;
    QtActionGate gate_;
    QtKeyFilter key_filter_;
    QtContextHelp context_help_;
    QtAnnouncer announcer_;
    EventWatcher paint_watcher_;
    QTimer after_paint_;      ///< runs out when the events after the first paint event are done
    bool shown_anew_ = false; ///< not painted yet since `show`
    std::string caption_;
    bool placed_ = false;
};

} // namespace cuedrill::platform::qt
