#include "platform/qt/qt_key_memory.h"

#include <QKeyEvent>
#include <QWidget>

namespace cuedrill::platform::qt {

namespace {

/// Two presses of one key that lie closer together are one, in milliseconds.
constexpr quint64 bounce = 150;

bool acts_at_once(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape || key == Qt::Key_Space;
}

} // namespace

void QtKeyMemory::note_release(const QKeyEvent& event)
{
    m_released_key = event.nativeScanCode();
    m_released_at = event.timestamp();
}

/// Under X11 a held key comes as releases and presses in turn, and the toolkit does not always see that they belong
/// together. A press at the very millisecond of the release of the same key is none of a finger.
bool QtKeyMemory::is_repeated(const QKeyEvent& event) const
{
    if (event.isAutoRepeat())
        return true;
    return event.nativeScanCode() != 0 && event.nativeScanCode() == m_released_key &&
           event.timestamp() == m_released_at;
}

bool QtKeyMemory::is_stray(const QWidget& widget, const QKeyEvent& event)
{
    const bool elsewhere = m_pressed_in != nullptr && m_pressed_in != &widget;
    if (is_repeated(event))
        return elsewhere;
    // Events that a program makes up may have no time.
    const bool soon = event.timestamp() != 0 && event.timestamp() - m_pressed_at < bounce;
    const bool typing = widget.testAttribute(Qt::WA_InputMethodEnabled);
    const bool again = soon && event.key() == m_pressed_key && acts_at_once(event.key()) && (elsewhere || !typing);
    m_pressed_in = &widget;
    m_pressed_key = event.key();
    m_pressed_at = event.timestamp();
    return again;
}

} // namespace cuedrill::platform::qt
