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

/// What the program's key rules see of a key press, but for whether it is held; nothing for keys that are none of
/// theirs (cursor and function keys, combinations with Meta or several modifiers, and Shift+Enter where text is typed:
/// it makes a line there).
/// @param typing whether the key goes into editable text.
std::optional<KeyPress> to_key_press(const QKeyEvent& event, bool typing);

/// Returns whether the key is swallowed.
using KeyHook = std::function<bool(const KeyPress&)>;

/// Calls `hook` through `gate`. A hook that is not set swallows nothing; a key that the gate drops, or whose handling
/// fails, is swallowed.
bool swallows(const KeyHook& hook, const KeyPress& press, QtActionGate& gate);

/// Says what a press of a key is.
using KeyJudge = std::function<KeyJudgement(const KeyEvent&)>;

/// The judge that believes the system.
KeyJudgement as_sent(const KeyEvent& event);

/// Tells each key of the program to a judge, and shows those that are not stray to the hooks of the window and of the
/// control that it goes to, before that control gets them. Keys of menus, and of windows without a hook, then go their
/// way. Enter and Space that the hooks leave alone click the button that has the focus, once however long they are
/// held.
class QtKeyFilter : public QObject {
public:
    explicit QtKeyFilter(KeyJudge judge = as_sent);

    /// Calls `hook` for the keys that go to `widget`, and where that is a window, to any of its controls; no longer
    /// than `widget` lives. The hook that was added first is called first, and sees a key alone that it swallows.
    /// Combinations are shown to windows only.
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
    /// Whether one of the hooks swallows the key.
    [[nodiscard]] bool is_swallowed(const QWidget& focus, const KeyPress& press) const;
    bool filter_key(QWidget& focus, const QKeyEvent& event);
    bool filter_commit(QWidget& focus, const QInputMethodEvent& event);

    KeyJudge judge_;
    std::vector<Entry> entries_;
    QElapsedTimer clock_;
    QtKeyTimes times_;
};

} // namespace cuedrill::platform::qt
