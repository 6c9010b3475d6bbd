#include "platform/qt/qt_text.h"

#include <QTextDocument>

namespace cuedrill::platform::qt {

namespace {

/// How much a character of a text takes: of the text, of its places, and of the positions in a document.
struct Character {
    qsizetype units;
    std::size_t places;
    int positions;
};

Character character_at(const QString& text, qsizetype at)
{
    const QStringView rest = QStringView(text).mid(at);
    if (rest.startsWith(QLatin1String("\r\n")))
        return {.units = 2, .places = 2, .positions = 1};
    if (rest.size() > 1 && rest[0].isHighSurrogate() && rest[1].isLowSurrogate())
        return {.units = 2, .places = 1, .positions = 2};
    return {.units = 1, .places = 1, .positions = 1};
}

} // namespace

QString to_qt(std::string_view text)
{
    QString result = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    result.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    return result;
}

QString to_title(std::string_view text)
{
    // "[*]" is where the toolkit marks a changed document; written twice it is shown as it is.
    return to_qt(text).replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}

std::string from_qt(const QString& text)
{
    return text.toStdString();
}

QString with_cr_lf(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    return text;
}

int to_position(const QString& text, std::size_t place)
{
    int position = 0;
    for (qsizetype at = 0; at < text.size();) {
        const Character next = character_at(text, at);
        if (next.places > place)
            break;
        place -= next.places;
        position += next.positions;
        at += next.units;
    }
    return position;
}

std::size_t to_place(const QString& text, int position)
{
    std::size_t place = 0;
    for (qsizetype at = 0; at < text.size() && position > 0;) {
        const Character next = character_at(text, at);
        place += next.places;
        position -= next.positions;
        at += next.units;
    }
    return place;
}

QString without_access_key(QString caption)
{
    for (qsizetype at = caption.indexOf(QLatin1Char('&')); at >= 0; at = caption.indexOf(QLatin1Char('&'), at)) {
        if (caption.sliced(at).startsWith(QLatin1String("&&")))
            at += 2;
        else
            caption.remove(at, 1);
    }
    return caption;
}

QString plain_tool_tip(const QString& text)
{
    // A tool tip guesses whether it is given markup; where the text might look like it, it is given markup in which the
    // text is escaped.
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal) : text;
}

} // namespace cuedrill::platform::qt
