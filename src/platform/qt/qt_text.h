#pragma once

#include <QString>
#include <cstddef>
#include <string>
#include <string_view>

namespace cuedrill::platform::qt {

/// `text` (UTF-8; ill-formed bytes become U+FFFD) with CR LF as one line feed.
QString to_qt(std::string_view text);

/// `text` as a window title that shows it literally.
QString to_title(std::string_view text);

/// `text` in UTF-8, line ends unchanged.
std::string from_qt(const QString& text);

/// `text` with every line end as CR LF.
QString with_cr_lf(QString text);

/// Converts between places and document positions. A place is counted in code points, with two for a line end (CR LF).
/// A position in the document that shows the text is counted in UTF-16 units, with one for a line end. Both start at 0.
/// A place inside a line end means before it; one beyond the end of `text` means the end.
int to_position(const QString& text, std::size_t place);
std::size_t to_place(const QString& text, int position);

/// The caption without the "&" of its access letter. "&&", which stands for a visible "&", stays.
QString without_access_key(QString caption);

/// `text` as a tool tip that shows it literally, never as markup; empty for an empty text.
QString plain_tool_tip(const QString& text);

} // namespace cuedrill::platform::qt
