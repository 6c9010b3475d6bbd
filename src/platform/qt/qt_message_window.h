#pragma once

#include "platform/f_msgbox.h"
#include "platform/qt/qt_asking_window.h"
#include "platform/qt/qt_context_help.h"
#include "platform/qt/qt_event_watcher.h"
#include "platform/qt/qt_guard.h"
#include "platform/qt/qt_key_filter.h"

#include <vector>

namespace cuedrill::platform::qt {

/// A second window, independent of the main one: either can lie over the other, and the program can end while both are
/// shown.
class QtMessageWindow final : public MessageWindow {
public:
    /// @param main_window must outlive this one.
    /// @param keys the key filter for all windows of the program.
    QtMessageWindow(const char* name, QtGuard& guard, QWidget& main_window, QtKeyFilter& keys);
    QtMessageWindow(const QtMessageWindow&) = delete;
    QtMessageWindow& operator=(const QtMessageWindow&) = delete;

    /// Puts `widget`, the widget of `control`, into the window. The first one added gets the keyboard focus with the
    /// window.
    void add(Control& control, QWidget& widget);

    void set_caption(std::string_view text) override;
    void cover_main_window() override;
    [[nodiscard]] common::Twips inner_width() const override;
    [[nodiscard]] common::Twips inner_height() const override;
    [[nodiscard]] bool minimised() const override;
    void place(Control& control, const Place& place) override;
    void show() override;
    void hide() override;

    [[nodiscard]] QWidget& widget() { return window_; }
    /// The gate for user actions in this window.
    [[nodiscard]] QtActionGate& gate() { return gate_; }

private:
    struct Entry {
        Control* control;
        QWidget* widget;
    };

    QWidget& main_window_;
    AskingWindow window_;
    QtActionGate gate_;
    QtContextHelp context_help_;
    EventWatcher watcher_;
    std::vector<Entry> controls_;
};

} // namespace cuedrill::platform::qt
