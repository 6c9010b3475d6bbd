#pragma once

#include "tools/verb.h"

namespace cuedrill::tools {

[[nodiscard]] const Verb& check_verb();
[[nodiscard]] const Verb& copies_verb();
[[nodiscard]] const Verb& history_verb();
[[nodiscard]] const Verb& restore_verb();

} // namespace cuedrill::tools
