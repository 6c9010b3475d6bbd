#pragma once

#include "platform/controls.h"

#include <QObject>
#include <functional>
#include <optional>

class QInputMethodEvent;
class QKeyEvent;
class QWidget;

namespace cuedrill::platform::qt {

/// What the program's key rules see of a key press; nothing for keys that are none of theirs (combinations with Ctrl,
/// Alt or Meta, cursor and function keys).
/// @param typing whether the key goes into editable text: then a letter is the one that is typed, on every layout.
std::optional<KeyPress> to_key_press(const QKeyEvent& event, bool typing);

/// Shows the keys of one window to a hook before the window's own controls get them. Keys of its menus, and of other
/// windows, go their way. Enter and Space that the hook leaves alone click the button that has the focus, once however
/// long they are held.
class QtKeyFilter : public QObject {
public:
    /// @param hook returns whether the key is swallowed.
    QtKeyFilter(QWidget& window, std::function<bool(const KeyPress&)> hook);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void note_release(const QKeyEvent& event);
    [[nodiscard]] bool is_repeated(const QKeyEvent& event) const;
    bool filter_key(QWidget& focus, const QKeyEvent& event);
    bool filter_commit(QWidget& focus, const QInputMethodEvent& event);

    QWidget& m_window;
    std::function<bool(const KeyPress&)> m_hook;
    quint32 m_released_key = 0;
    quint64 m_released_at = 0;
};

} // namespace cuedrill::platform::qt
