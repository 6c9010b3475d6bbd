#include "platform/qt/qt_text.h"

#include <QTextDocument>

namespace cuedrill::platform::qt {

QString to_qt(std::string_view text)
{
    QString result = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    result.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    return result;
}

std::string from_qt(const QString& text)
{
    return text.toStdString();
}

std::string from_qt_lines(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    return text.toStdString();
}

QString plain_tool_tip(const QString& text)
{
    // A tool tip guesses whether it is given markup; so it is given markup in which the text is escaped.
    return text.isEmpty() ? QString() : Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal);
}

} // namespace cuedrill::platform::qt
