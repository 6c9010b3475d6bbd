#pragma once

#include "platform/controls.h"

namespace cuedrill::drill {

/// The command letter of a key, "a" to "z"; 0 for none. A key that types a Latin letter stands for that letter. In
/// another script, or if the key types a sign, it stands for the letter at its position on a Latin keyboard.
[[nodiscard]] char command_letter(const platform::KeyPress& press);

} // namespace cuedrill::drill
