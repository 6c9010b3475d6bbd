#include "platform/qt/qt_line_model.h"

#include "platform/qt/qt_text.h"

#include <algorithm>
#include <string_view>

namespace cuedrill::platform::qt {

namespace {

/// The width of a text in cells: one per character, two for those in ranges with mostly ideographs or pictographs.
std::size_t cells(std::string_view text)
{
    constexpr unsigned char first_continuation = 0x80;
    constexpr unsigned char first_lead = 0xC0;
    constexpr unsigned char first_wide_lead = 0xE3; // lead byte of U+3000
    std::size_t count = 0;
    for (const char byte : text) {
        const auto value = static_cast<unsigned char>(byte);
        if (value < first_continuation || value >= first_lead)
            count += value >= first_wide_lead ? 2U : 1U;
    }
    return count;
}

int row_with_most_cells(const std::vector<std::string>& lines)
{
    int row = -1;
    std::size_t most = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        // A character never takes more cells than bytes.
        if (row >= 0 && lines[i].size() <= most)
            continue;
        const std::size_t count = cells(lines[i]);
        if (row < 0 || count > most) {
            row = static_cast<int>(i);
            most = count;
        }
    }
    return row;
}

bool is_shown_as_blank(QChar character)
{
    switch (character.unicode()) {
    case u'\t':
    case u'\n':
    case u'\v':
    case u'\f':
    case u'\r':
    case 0x85:
    case QChar::LineSeparator:
    case QChar::ParagraphSeparator:
        return true;
    default:
        return false;
    }
}

} // namespace

void LineModel::set_lines(std::vector<std::string> lines)
{
    beginResetModel();
    lines_ = std::move(lines);
    widest_row_ = row_with_most_cells(lines_);
    endResetModel();
}

int LineModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(lines_.size());
}

QVariant LineModel::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    return shown(index.row());
}

QString LineModel::shown(int row) const
{
    QString text = to_qt(line(row));
    std::replace_if(text.begin(), text.end(), is_shown_as_blank, QLatin1Char(' '));
    return text;
}

} // namespace cuedrill::platform::qt
