#include "platform/qt/qt_marked_text.h"

#include <QList>
#include <algorithm>

namespace cuedrill::platform::qt {

namespace {

bool is_marked(std::size_t place, const std::vector<common::TextRange>& marked)
{
    return std::any_of(marked.begin(), marked.end(),
                       [place](const common::TextRange& range) { return range.begin <= place && place < range.end; });
}

} // namespace

QString to_marked_html(std::string_view text, const std::vector<common::TextRange>& marked)
{
    const QList<uint> characters = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).toUcs4();
    QString html = QStringLiteral("<span style=\"white-space: pre-wrap\">");
    bool inside = false;
    for (qsizetype i = 0; i < characters.size(); ++i) {
        const char32_t character = characters[i];
        if (character == U'\r' && i + 1 < characters.size() && characters[i + 1] == U'\n')
            continue; // the line feed that follows stands for both
        const bool mark = is_marked(static_cast<std::size_t>(i), marked);
        if (mark != inside)
            html += mark ? QLatin1String("<b><u>") : QLatin1String("</u></b>");
        inside = mark;
        html += character == U'\n' || character == U'\r' ? QStringLiteral("<br>")
                                                         : QString::fromUcs4(&character, 1).toHtmlEscaped();
    }
    if (inside)
        html += QLatin1String("</u></b>");
    return html + QLatin1String("</span>");
}

} // namespace cuedrill::platform::qt
