#pragma once

#include "platform/controls.h"

namespace cuedrill::drill {

/// The letter, "a" to "z", that a key means as a command; 0 for none. A key that gives a Latin letter means that one;
/// with another script, or a sign in the place of a letter, it means the letter at its place on a Latin keyboard.
[[nodiscard]] char command_letter(const platform::KeyPress& press);

} // namespace cuedrill::drill
