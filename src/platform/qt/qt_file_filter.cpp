#include "platform/qt/qt_file_filter.h"

#include "platform/qt/qt_text.h"

namespace cuedrill::platform::qt {

namespace {

/// The toolkit appends the patterns in parentheses itself.
QString without_pattern_in_brackets(QString description)
{
    description = description.trimmed();
    const qsizetype bracket = description.lastIndexOf(QLatin1Char('('));
    if (bracket > 0 && description.endsWith(QLatin1Char(')')))
        description.truncate(bracket);
    return description.trimmed();
}

QString to_qt_patterns(const QString& patterns)
{
    QStringList result;
    for (const QString& pattern : patterns.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        // Traditionally "*.*" means all files; the toolkit would require a dot in the name.
        const QString trimmed = pattern.trimmed();
        result += trimmed == QLatin1String("*.*") ? QStringLiteral("*") : trimmed;
    }
    return result.join(QLatin1Char(' '));
}

} // namespace

QStringList to_name_filters(std::string_view filter)
{
    const QStringList fields = to_qt(filter).split(QLatin1Char('|'));
    QStringList result;
    for (qsizetype i = 0; i + 1 < fields.size(); i += 2) {
        const QString patterns = to_qt_patterns(fields[i + 1]);
        if (!patterns.isEmpty())
            result += QStringLiteral("%1 (%2)").arg(without_pattern_in_brackets(fields[i]), patterns);
    }
    return result;
}

} // namespace cuedrill::platform::qt
