#pragma once

#include <QIcon>

namespace cuedrill::platform::qt {

/// The icon of the program, drawn in whatever size it is asked for. It is the picture of packaging/cuedrill.svg, which
/// desktops show; the toolkit itself cannot read that file without a further library.
QIcon program_icon();

} // namespace cuedrill::platform::qt
