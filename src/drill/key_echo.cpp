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
    const bool same = m_listening && press.key == m_last.key && press.character == m_last.character &&
                      press.modifier == m_last.modifier;
    if (same && press.auto_repeat)
        return true;
    const double now = m_clock.steady_seconds();
    if (same && !m_box_closed && !may_begin_answer(press) &&
        now - m_at < (press.composed ? composed_echo_seconds : echo_seconds)) {
        if (press.composed)
            m_at = now;
        return true;
    }
    // Who holds a key and presses another one releases neither; only a new press ends the listening.
    if (!press.auto_repeat)
        m_listening = false;
    return false;
}

void KeyEcho::listen(const platform::KeyPress& press)
{
    m_last = press;
    m_at = m_clock.steady_seconds();
    m_listening = true;
}

void KeyEcho::note_box_closed()
{
    m_box_closed = true;
}

} // namespace cuedrill::drill
