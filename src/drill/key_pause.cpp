#include "drill/key_pause.h"

namespace cuedrill::drill {
namespace {

constexpr double pause_seconds = 1;

} // namespace

bool KeyPause::holds(const platform::KeyPress& press) const
{
    if (!begun_ || clock_.steady_seconds() - *begun_ >= pause_seconds)
        return false;
    return keys_ == Keys::all || press.key == platform::Key::escape;
}

} // namespace cuedrill::drill
