#include "platform/qt/qt_text.h"

#include <QTextDocument>

namespace cuedrill::platform::qt {

namespace {

/// The sizes of one character: in the text's UTF-16 units, in code points, and in document positions.
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
    // The toolkit replaces "[*]" in a title by its mark for a changed document; doubled, it is shown literally.
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
    // A tool tip guesses whether its text is markup. Text that might look like markup is converted to escaped markup.
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal) : text;
}

} // namespace cuedrill::platform::qt
