#pragma once

#include <QStringList>
#include <string_view>

namespace cuedrill::platform::qt {

/// Converts `filter` to the name filters of a file dialog. `filter` is pairs of a description and its patterns
/// (separated by ";"), all separated by "|". A description without patterns is ignored.
QStringList to_name_filters(std::string_view filter);

} // namespace cuedrill::platform::qt
