#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace cuedrill::platform::qt {

/// `text` (UTF-8; ill-formed bytes become U+FFFD) with CR LF as one line feed.
QString to_qt(std::string_view text);

/// `text` in UTF-8, as it is.
std::string from_qt(const QString& text);

/// `text` in UTF-8 with every line end as CR LF.
std::string from_qt_lines(QString text);

/// `text` as a tool tip that shows it literally, never as markup; empty for an empty text.
QString plain_tool_tip(const QString& text);

} // namespace cuedrill::platform::qt
