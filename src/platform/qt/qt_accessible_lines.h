#pragma once

namespace cuedrill::platform::qt {

/// Presents each LineView to assistive technology as a list with selectable lines. Call it before any accessibility
/// event of the view.
void make_lines_accessible();

} // namespace cuedrill::platform::qt
