#pragma once

namespace cuedrill::platform::qt {

/// Presents each LineView to assistive technology as a list whose lines can be chosen. To be called before anything is
/// told of the view.
void make_lines_accessible();

} // namespace cuedrill::platform::qt
