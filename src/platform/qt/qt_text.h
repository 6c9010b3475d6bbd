#pragma once

#include <QString>
#include <cstddef>
#include <string>
#include <string_view>

namespace cuedrill::platform::qt {

/// `text` (UTF-8; ill-formed bytes become U+FFFD) with CR LF as one line feed.
QString to_qt(std::string_view text);

/// `text` as the title of a window that shows it as it is.
QString to_title(std::string_view text);

/// `text` in UTF-8, as it is.
std::string from_qt(const QString& text);

/// `text` with every line end as CR LF.
QString with_cr_lf(QString text);

/// A place in a text is counted in code points; a line end, CR LF, is two. A position in the document that shows the
/// text is counted in UTF-16 units; a line end is one. Both are 0 at the beginning. A place within a line end is before
/// it; what is behind the end of `text` is at its end.
int to_position(const QString& text, std::size_t place);
std::size_t to_place(const QString& text, int position);

/// The caption without the mark of its access letter. "&&", a "&" that is shown, stays.
QString without_access_key(QString caption);

/// `text` as a tool tip that shows it literally, never as markup; empty for an empty text.
QString plain_tool_tip(const QString& text);

} // namespace cuedrill::platform::qt
