#include "drill/key_policy.h"

#include <cstdint>
#include <string_view>

namespace cuedrill::drill {

using platform::Key;
using platform::KeyEvent;
using platform::KeyJudgement;
using platform::KeyKind;
using platform::KeyPress;

namespace {

/// Two presses of one key that lie closer together are one, in milliseconds: nobody has seen, or read, what the first
/// one did.
constexpr std::int64_t bounce = 150;

/// The same behind the Enter that has closed a box: the window to which it leads was seen before. This is the chatter
/// of a contact.
constexpr std::int64_t chatter = 50;

/// A press that follows the release of its key so soon is none of a finger, in milliseconds. By the clock of the system
/// both are at the very same one; our own may have gone on meanwhile.
constexpr std::int64_t repetition = 2;

/// An echo comes within this time of its command, in seconds.
constexpr double echo_seconds = static_cast<double>(bounce) / 1000;

/// An input method does not tell whether a key is held down. This is more than the time before a held key is repeated.
constexpr double composed_echo_seconds = 0.7;

constexpr double pause_seconds = 1;

/// Moments of the two clocks have nothing to do with each other; they lie far apart.
bool is_within(std::int64_t milliseconds, const KeyEvent& from, const KeyEvent& to)
{
    return to.milliseconds >= from.milliseconds && to.milliseconds - from.milliseconds <= milliseconds;
}

/// A letter that follows its command quickly may be the beginning of the answer for which it has opened the box.
bool may_begin_answer(const KeyPress& press)
{
    constexpr std::string_view others = "+-* ";
    return press.key == Key::character && press.modifier == platform::KeyModifier::none &&
           others.find(press.character) == std::string_view::npos;
}

} // namespace

KeyJudgement KeyPolicy::judge(const KeyEvent& event)
{
    if (!event.down) {
        released_ = event;
        return KeyJudgement::meant;
    }
    if (is_held(event))
        return goes_elsewhere(event) ? KeyJudgement::stray : KeyJudgement::held;
    if (is_bounce(event)) {
        // It does nothing, and so leaves the focus where the press before it was made.
        pressed_.milliseconds = event.milliseconds;
        return KeyJudgement::stray;
    }
    pressed_ = event;
    return KeyJudgement::meant;
}

/// Under X11 a held key comes as releases and presses in turn, and the toolkit does not always see that they belong
/// together.
bool KeyPolicy::is_held(const KeyEvent& event) const
{
    if (event.auto_repeat)
        return true;
    return event.scan_code != 0 && event.scan_code == released_.scan_code && is_within(repetition, released_, event);
}

bool KeyPolicy::is_bounce(const KeyEvent& event) const
{
    if (event.kind == KeyKind::other || event.kind != pressed_.kind || event.scan_code != pressed_.scan_code)
        return false;
    if (event.typing && !goes_elsewhere(event))
        return false;
    const bool out_of_box = pressed_.in_box && !event.in_box && event.kind == KeyKind::enter;
    return is_within((out_of_box ? chatter : bounce) - 1, pressed_, event);
}

bool KeyPolicy::goes_elsewhere(const KeyEvent& event) const
{
    return pressed_.focus != nullptr && pressed_.focus != event.focus;
}

bool KeyPolicy::counts(const KeyPress& press, bool editing)
{
    if (is_echo(press))
        return false;
    // A new text may be begun meanwhile.
    return editing || !is_paused(press);
}

bool KeyPolicy::is_echo(const KeyPress& press)
{
    const bool same = listening_ && press.key == command_key_.key && press.character == command_key_.character &&
                      press.modifier == command_key_.modifier;
    if (same && press.auto_repeat)
        return true;
    const double now = clock_.steady_seconds();
    if (same && !box_closed_ && !may_begin_answer(press) &&
        now - command_at_ < (press.composed ? composed_echo_seconds : echo_seconds)) {
        if (press.composed)
            command_at_ = now;
        return true;
    }
    // Who holds a key and presses another one releases neither; only a new press ends the listening.
    if (!press.auto_repeat)
        listening_ = false;
    return false;
}

void KeyPolicy::listen(const KeyPress& press)
{
    command_key_ = press;
    command_at_ = clock_.steady_seconds();
    listening_ = true;
}

void KeyPolicy::pause(Paused keys)
{
    paused_ = keys;
    pause_begun_ = clock_.steady_seconds();
}

bool KeyPolicy::is_paused(const KeyPress& press) const
{
    if (!pause_begun_ || clock_.steady_seconds() - *pause_begun_ >= pause_seconds)
        return false;
    return paused_ == Paused::all || press.key == Key::escape;
}

} // namespace cuedrill::drill
