#pragma once

#include "platform/controls.h"
#include "platform/qt/qt_guard.h"
#include "platform/qt/qt_key_memory.h"
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

/// What the program's key rules see of a key press; nothing for keys that are none of theirs (cursor and function keys,
/// combinations with Meta or several modifiers, and Shift+Enter where text is typed: it makes a line there).
/// @param typing whether the key goes into editable text.
std::optional<KeyPress> to_key_press(const QKeyEvent& event, bool typing);

/// Returns whether the key is swallowed.
using KeyHook = std::function<bool(const KeyPress&)>;

/// Calls `hook` through `gate`. A hook that is not set swallows nothing; a key that the gate drops, or whose handling
/// fails, is swallowed.
bool swallows(const KeyHook& hook, const KeyPress& press, QtActionGate& gate);

/// Shows the keys of one window to a hook, and then to the one of the control that has the focus, before that control
/// gets them. Keys of the window's menus, and of other windows, go their way, but for those that nobody meant. Enter
/// and Space that the hooks leave alone click the button that has the focus, once however long they are held.
class QtKeyFilter : public QObject {
public:
    QtKeyFilter(QWidget& window, KeyHook hook);

    /// Calls `hook` for the keys that the window's hook leaves alone while `control` has the focus; no longer than
    /// `control` lives.
    void add_control(QWidget& control, KeyHook hook);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void settle_time(QKeyEvent& event);
    /// Whether one of the hooks swallows the key.
    [[nodiscard]] bool is_swallowed(const QWidget& focus, const KeyPress& press) const;
    bool filter_key(QWidget& focus, const QKeyEvent& event);
    bool filter_commit(QWidget& focus, const QInputMethodEvent& event);

    struct ControlHook {
        QPointer<QWidget> control;
        KeyHook hook;
    };

    QWidget& window_;
    KeyHook hook_;
    std::vector<ControlHook> controls_;
    QElapsedTimer clock_;
    QtKeyTimes times_;
    QtKeyMemory memory_{[this] { return clock_.elapsed(); }};
};

} // namespace cuedrill::platform::qt
