#pragma once

#include "common/text.h"

#include <QString>
#include <string_view>
#include <vector>

namespace cuedrill::platform::qt {

/// HTML that shows `text` literally, with its blanks and line ends, and the characters in `marked` bold and underlined.
/// The ranges may overlap and exceed the end; a line end, CR LF, counts as two characters.
QString to_marked_html(std::string_view text, const std::vector<common::TextRange>& marked);

} // namespace cuedrill::platform::qt
