#include "drill/key_pause.h"

namespace cuedrill::drill {
namespace {

constexpr double pause_seconds = 1;

} // namespace

bool KeyPause::holds(const platform::KeyPress& press) const
{
    if (!m_begun || m_clock.steady_seconds() - *m_begun >= pause_seconds)
        return false;
    return m_keys == Keys::all || press.key == platform::Key::escape;
}

} // namespace cuedrill::drill
