#pragma once

#include <QStringList>
#include <string_view>

namespace cuedrill::platform::qt {

/// The name filters of a file dialog for `filter`, pairs of a description and its patterns (separated by ";"), all
/// separated by "|". A description without patterns is left out.
QStringList to_name_filters(std::string_view filter);

} // namespace cuedrill::platform::qt
