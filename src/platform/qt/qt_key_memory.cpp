#include "platform/qt/qt_key_memory.h"

#include <QKeyEvent>
#include <QWidget>

namespace cuedrill::platform::qt {

namespace {

/// Two presses of one key that lie closer together are one, in milliseconds: nobody has seen what the first one did.
constexpr qint64 bounce = 150;

/// The same behind the Enter that has closed a box: the window to which it leads was seen before. This is the chatter
/// of a contact.
constexpr qint64 chatter = 50;

/// A press that follows the release of its key so soon is none of a finger, in milliseconds. By the clock of the system
/// both are at the very same one; our own may have gone on meanwhile.
constexpr qint64 repetition = 2;

/// Moments of the two clocks have nothing to do with each other; they lie far apart.
bool is_within(qint64 milliseconds, qint64 from, qint64 to)
{
    return to >= from && to - from <= milliseconds;
}

bool is_enter(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

bool acts_at_once(int key)
{
    return is_enter(key) || key == Qt::Key_Escape || key == Qt::Key_Space;
}

} // namespace

QtKeyMemory::QtKeyMemory(std::function<qint64()> clock) : m_clock(std::move(clock))
{
}

/// When the event was made; of one that has no time, when it arrives.
qint64 QtKeyMemory::moment(const QKeyEvent& event) const
{
    return event.timestamp() != 0 ? static_cast<qint64>(event.timestamp()) : m_clock();
}

void QtKeyMemory::note_release(const QKeyEvent& event)
{
    m_released_key = event.nativeScanCode();
    m_released_at = moment(event);
}

/// Under X11 a held key comes as releases and presses in turn, and the toolkit does not always see that they belong
/// together.
bool QtKeyMemory::is_repeated(const QKeyEvent& event) const
{
    if (event.isAutoRepeat())
        return true;
    return event.nativeScanCode() != 0 && event.nativeScanCode() == m_released_key &&
           is_within(repetition, m_released_at, moment(event));
}

bool QtKeyMemory::is_stray(const QWidget& widget, const QKeyEvent& event)
{
    const bool elsewhere = m_pressed_in != nullptr && m_pressed_in != &widget;
    if (is_repeated(event))
        return elsewhere;
    const qint64 now = moment(event);
    const bool box = widget.window()->isModal();
    const bool out_of_box = m_pressed_in_box && !box && is_enter(event.key());
    const bool soon = is_within((out_of_box ? chatter : bounce) - 1, m_pressed_at, now);
    const bool typing = widget.testAttribute(Qt::WA_InputMethodEnabled);
    const bool again = soon && event.key() == m_pressed_key && acts_at_once(event.key()) && (elsewhere || !typing);
    m_pressed_at = now;
    // A press that does nothing leaves the focus where the one before it was made.
    if (again)
        return true;
    m_pressed_in = &widget;
    m_pressed_in_box = box;
    m_pressed_key = event.key();
    return false;
}

} // namespace cuedrill::platform::qt
