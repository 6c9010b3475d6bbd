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

/// Debounce time in milliseconds: a second press of the same key within it is ignored, because the user has not yet
/// seen what the first one did.
constexpr std::int64_t bounce = 150;

/// Debounce time in milliseconds after the Enter that has closed a box. It is shorter, because the user saw the window
/// behind the box before; it only filters contact chatter.
constexpr std::int64_t chatter = 50;

/// A press at most this many milliseconds after the release of the same key is auto-repeat: no finger is that fast. The
/// system gives such a pair the same timestamp; our own clock, for events without one, may advance between the two.
constexpr std::int64_t repetition = 2;

/// Time in seconds after a command within which another press of its key is ignored as an echo.
constexpr double echo_seconds = static_cast<double>(bounce) / 1000;

/// The same for a character composed by an input method, which does not report auto-repeat. Longer than the usual delay
/// before auto-repeat starts.
constexpr double composed_echo_seconds = 0.7;

constexpr double pause_seconds = 1;

/// Whether `to` is at most `milliseconds` after `from`. The timestamps come from two clocks (see KeyEvent); times of
/// different clocks are so far apart that the result is false.
bool is_within(std::int64_t milliseconds, const KeyEvent& from, const KeyEvent& to)
{
    return to.milliseconds >= from.milliseconds && to.milliseconds - from.milliseconds <= milliseconds;
}

/// A letter right after its command may be the beginning of the answer: the command has moved the focus into the answer
/// box.
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
    down_at_ = clock_.steady_seconds();
    if (is_held(event))
        return goes_elsewhere(event) ? KeyJudgement::stray : KeyJudgement::held;
    if (is_bounce(event)) {
        // A stray press changes nothing, so the focus recorded with the last meant press stays.
        pressed_.milliseconds = event.milliseconds;
        return KeyJudgement::stray;
    }
    pressed_ = event;
    if (event.in_box)
        box_closed_ = true;
    return KeyJudgement::meant;
}

bool KeyPolicy::pressed_within(double seconds) const
{
    return down_at_ && clock_.steady_seconds() - *down_at_ < seconds;
}

/// X11 reports a held key as alternating releases and presses, and the toolkit does not always recognise them as
/// auto-repeat.
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
    // The user may type a new text during the pause.
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
    // A second key may go down while the first is held. Ignore repeats until a fresh press arrives.
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
