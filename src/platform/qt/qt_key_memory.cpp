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

QtKeyMemory::QtKeyMemory(std::function<qint64()> clock) : clock_(std::move(clock))
{
}

/// When the event was made; of one that has no time, when it arrives.
qint64 QtKeyMemory::moment(const QKeyEvent& event) const
{
    return event.timestamp() != 0 ? static_cast<qint64>(event.timestamp()) : clock_();
}

void QtKeyMemory::note_release(const QKeyEvent& event)
{
    released_key_ = event.nativeScanCode();
    released_at_ = moment(event);
}

/// Under X11 a held key comes as releases and presses in turn, and the toolkit does not always see that they belong
/// together.
bool QtKeyMemory::is_repeated(const QKeyEvent& event) const
{
    if (event.isAutoRepeat())
        return true;
    return event.nativeScanCode() != 0 && event.nativeScanCode() == released_key_ &&
           is_within(repetition, released_at_, moment(event));
}

bool QtKeyMemory::is_stray(const QWidget& widget, const QKeyEvent& event)
{
    const bool elsewhere = pressed_in_ != nullptr && pressed_in_ != &widget;
    if (is_repeated(event))
        return elsewhere;
    const qint64 now = moment(event);
    const bool box = widget.window()->isModal();
    const bool out_of_box = pressed_in_box_ && !box && is_enter(event.key());
    const bool soon = is_within((out_of_box ? chatter : bounce) - 1, pressed_at_, now);
    const bool typing = widget.testAttribute(Qt::WA_InputMethodEnabled);
    const bool again = soon && event.key() == pressed_key_ && acts_at_once(event.key()) && (elsewhere || !typing);
    pressed_at_ = now;
    // A press that does nothing leaves the focus where the one before it was made.
    if (again)
        return true;
    pressed_in_ = &widget;
    pressed_in_box_ = box;
    pressed_key_ = event.key();
    return false;
}

} // namespace cuedrill::platform::qt
