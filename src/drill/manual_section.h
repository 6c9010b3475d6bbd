#pragma once

#include "drill/drill_state.h"
#include "drill/mode.h"

namespace cuedrill::drill {

/// The section of the manual about what the user is doing, as its anchor in the page.
[[nodiscard]] const char* manual_section(Mode mode, const DrillState& state);

} // namespace cuedrill::drill
