#include "drill/key_echo.h"

#include <string_view>

namespace cuedrill::drill {
namespace {

/// Two presses of one key that lie closer together are one, in seconds; nobody reads what has come between them.
constexpr double echo_seconds = 0.15;

/// An input method does not tell whether a key is held down. This is more than the time before a held key is repeated.
constexpr double composed_echo_seconds = 0.7;

/// A letter that follows its command quickly may be the beginning of the answer for which it has opened the box.
bool may_begin_answer(const platform::KeyPress& press)
{
    constexpr std::string_view others = "+-* ";
    return press.key == platform::Key::character && press.modifier == platform::KeyModifier::none &&
           others.find(press.character) == std::string_view::npos;
}

} // namespace

bool KeyEcho::is_echo(const platform::KeyPress& press)
{
    const bool same =
        listening_ && press.key == last_.key && press.character == last_.character && press.modifier == last_.modifier;
    if (same && press.auto_repeat)
        return true;
    const double now = clock_.steady_seconds();
    if (same && !box_closed_ && !may_begin_answer(press) &&
        now - at_ < (press.composed ? composed_echo_seconds : echo_seconds)) {
        if (press.composed)
            at_ = now;
        return true;
    }
    // Who holds a key and presses another one releases neither; only a new press ends the listening.
    if (!press.auto_repeat)
        listening_ = false;
    return false;
}

void KeyEcho::listen(const platform::KeyPress& press)
{
    last_ = press;
    at_ = clock_.steady_seconds();
    listening_ = true;
}

void KeyEcho::note_box_closed()
{
    box_closed_ = true;
}

} // namespace cuedrill::drill
