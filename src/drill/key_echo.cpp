#include "drill/key_echo.h"

#include <string_view>

namespace cuedrill::drill {
namespace {

/// Two presses of one key that lie closer together are one, in seconds; nobody reads what has come between them.
constexpr double echo_seconds = 0.15;

/// Letters that follow their command quickly may well be the beginning of a text for the box that it opened.
bool may_begin_text(const platform::KeyPress& press)
{
    constexpr std::string_view others = "+-* ";
    return press.key == platform::Key::character && others.find(press.character) == std::string_view::npos;
}

} // namespace

bool KeyEcho::is_echo(const platform::KeyPress& press)
{
    const bool same = m_listening && press.key == m_last.key && press.character == m_last.character;
    if (same && press.auto_repeat)
        return true;
    if (same && !may_begin_text(press) && m_clock.steady_seconds() - m_at < echo_seconds)
        return true;
    // Who holds a key and presses another one releases neither; only a new press ends the listening.
    if (!press.auto_repeat)
        m_listening = false;
    return false;
}

void KeyEcho::ran_command(const platform::KeyPress& press)
{
    m_last = press;
    m_at = m_clock.steady_seconds();
    m_listening = true;
}

} // namespace cuedrill::drill
