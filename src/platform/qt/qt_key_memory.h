#pragma once

#include <QtGlobal>
#include <functional>

class QKeyEvent;
class QWidget;

namespace cuedrill::platform::qt {

/// Remembers which key went down last and where, and tells presses that nobody meant: those of a key that is held on,
/// and the second one of a finger that trembles.
class QtKeyMemory {
public:
    /// @param clock gives milliseconds that only go forward, for events that have lost their time.
    explicit QtKeyMemory(std::function<qint64()> clock);

    /// To be told of every key that comes up.
    void note_release(const QKeyEvent& event);

    /// Whether the key is held down.
    [[nodiscard]] bool is_repeated(const QKeyEvent& event) const;

    /// To be asked once for each press, when it reaches the first widget. Whether it must do nothing there: it is held
    /// on while the focus has moved, or it is Enter, Escape or the blank a second time so soon that nobody has seen
    /// what the first one did. In text that is being edited the second one counts. An Enter that has closed a box is
    /// followed so soon only by the chatter of its contact.
    [[nodiscard]] bool is_stray(const QWidget& widget, const QKeyEvent& event);

private:
    [[nodiscard]] qint64 moment(const QKeyEvent& event) const;

    std::function<qint64()> clock_;
    const QWidget* pressed_in_ = nullptr; ///< only compared
    bool pressed_in_box_ = false;
    int pressed_key_ = 0;
    qint64 pressed_at_ = 0; ///< milliseconds
    quint32 released_key_ = 0;
    qint64 released_at_ = 0;
};

} // namespace cuedrill::platform::qt
