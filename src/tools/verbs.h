#pragma once

#include "tools/verb.h"

namespace cuedrill::tools {

[[nodiscard]] const Verb& check_verb();
[[nodiscard]] const Verb& completion_verb();
[[nodiscard]] const Verb& copies_verb();
[[nodiscard]] const Verb& due_verb();
[[nodiscard]] const Verb& dupes_verb();
[[nodiscard]] const Verb& export_verb();
[[nodiscard]] const Verb& fix_verb();
[[nodiscard]] const Verb& font_verb();
[[nodiscard]] const Verb& history_verb();
[[nodiscard]] const Verb& import_verb();
[[nodiscard]] const Verb& info_verb();
[[nodiscard]] const Verb& list_verb();
[[nodiscard]] const Verb& merge_verb();
[[nodiscard]] const Verb& new_verb();
[[nodiscard]] const Verb& renumber_verb();
[[nodiscard]] const Verb& restore_verb();
[[nodiscard]] const Verb& stats_verb();

} // namespace cuedrill::tools
