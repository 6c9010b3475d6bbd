#pragma once

#include "platform/controls.h"
#include "platform/qt/qt_guard.h"
#include "platform/qt/qt_key_times.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

class QInputMethodEvent;
class QKeyEvent;

namespace cuedrill::platform::qt {

/// Converts a key event to the form that the key rules use, except for auto-repeat. std::nullopt for keys that they do
/// not handle: cursor and function keys, combinations with Meta or several modifiers, and Shift+Enter in text that is
/// being edited, which inserts a line break.
/// @param typing whether the key goes into editable text.
std::optional<KeyPress> to_key_press(const QKeyEvent& event, bool typing);

/// Returns whether the key is consumed.
using KeyHook = std::function<bool(const KeyPress&)>;

/// Calls `hook` through `gate` and returns whether the key is consumed. An empty hook consumes nothing. If the gate
/// drops the key, or handling it fails, the key is consumed.
bool swallows(const KeyHook& hook, const KeyPress& press, QtActionGate& gate);

/// Judges a key event.
using KeyJudge = std::function<KeyJudgement(const KeyEvent&)>;

/// A judge that takes each event as the system reports it.
KeyJudgement as_sent(const KeyEvent& event);

/// Reports every key event of the program to a judge. A press that is not stray is offered to the hooks of the window
/// and of the control with the focus, before that control gets it. Keys in menus, and in windows without a hook, are
/// then handled as usual. If the hooks do not consume Enter or Space, the button that has the focus is clicked, once
/// however long the key is held.
class QtKeyFilter : public QObject {
public:
    explicit QtKeyFilter(KeyJudge judge = as_sent);

    /// Calls `hook` for keys that go to `widget` or, if `widget` is a window, to any of its controls, for as long as
    /// `widget` exists. Hooks are called in the order in which they were added; if one consumes a key, the later ones
    /// are not called. Combinations with Ctrl or Alt are offered to windows only.
    void add(QWidget& widget, KeyHook hook);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Entry {
        QPointer<QWidget> widget;
        KeyHook hook;
    };

    void settle_time(QKeyEvent& event);
    KeyJudgement judge(const QKeyEvent& event, const QWidget* station);
    [[nodiscard]] bool has_hook(const QWidget& focus) const;
    /// Whether a hook consumes the key.
    [[nodiscard]] bool is_swallowed(const QWidget& focus, const KeyPress& press) const;
    bool filter_key(QWidget& focus, const QKeyEvent& event);
    bool filter_commit(QWidget& focus, const QInputMethodEvent& event);

    KeyJudge judge_;
    std::vector<Entry> entries_;
    QElapsedTimer clock_;
    QtKeyTimes times_;
};

} // namespace cuedrill::platform::qt
