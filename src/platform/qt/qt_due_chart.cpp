#include "platform/qt/qt_due_chart.h"

#include "platform/qt/qt_look.h"
#include "platform/qt/qt_text.h"

#include <QPainter>
#include <algorithm>

namespace cuedrill::platform::qt {

namespace {

constexpr int narrowest_column_characters = 5;
constexpr int fewest_columns = 3; // now, today and new
constexpr int gap_before_new = 8; // its bar has another scale
constexpr int least_bar_height = 24;
constexpr int text_padding = 8; // above and below a text together, as in the rows of the levels beside it
constexpr int text_gap = 2;

} // namespace

DueChart::DueChart()
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void DueChart::show_picture(const DuePicture& picture)
{
    bars_ = picture.bars;
    updateGeometry();
    setText(to_qt(picture.words));
    setToolTip(plain_tool_tip(to_qt(picture.words)));
    setAccessibleDescription(to_qt(picture.description));
    update();
}

int DueChart::caption_width() const
{
    int width = fontMetrics().averageCharWidth() * narrowest_column_characters;
    for (const DueBar& bar : bars_)
        width = std::max(width, fontMetrics().horizontalAdvance(to_qt(bar.caption)) + text_gap);
    return width;
}

int DueChart::narrowest_column() const
{
    const QFontMetrics condensed(condensed_font());
    int width = caption_width();
    for (const DueBar& bar : bars_)
        width = std::max(width, condensed.horizontalAdvance(to_qt(bar.figure)) + text_gap);
    return width;
}

QFont DueChart::condensed_font() const
{
    QFont condensed = font();
    condensed.setStretch(QFont::Condensed);
    return condensed;
}

QFont DueChart::figure_font(const QString& figure, int column_width) const
{
    return fontMetrics().horizontalAdvance(figure) > column_width ? condensed_font() : font();
}

std::vector<DueChart::Column> DueChart::columns() const
{
    const int room = width() - gap_before_new;
    const int count = std::clamp(room / std::max(narrowest_column(), 1), fewest_columns, due_bars);
    const int pitch = room / count;
    std::vector<Column> columns;
    for (int place = 0; place < count - 1; ++place)
        columns.push_back({static_cast<std::size_t>(place), QRect(place * pitch, 0, pitch, height())});
    columns.push_back({bars_.size() - 1, QRect((count - 1) * pitch + gap_before_new, 0, pitch, height())});
    return columns;
}

int DueChart::text_height() const
{
    return fontMetrics().height() + text_padding;
}

QSize DueChart::sizeHint() const
{
    // Without the figures: rather than taking the space of what is beside it, the picture leaves out days.
    const QSize wish(caption_width() * due_bars + gap_before_new, 0);
    return wish.expandedTo(minimumSizeHint());
}

QSize DueChart::minimumSizeHint() const
{
    return {narrowest_column() * fewest_columns + gap_before_new, 2 * text_height() + least_bar_height};
}

void DueChart::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Column& column : columns())
        paint_column(painter, bars_.at(column.bar), column.place);
}

void DueChart::paint_column(QPainter& painter, const DueBar& bar, const QRect& column) const
{
    const int line = text_height();
    const QString figure = to_qt(bar.figure);
    painter.setFont(figure_font(figure, column.width()));
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(QRect(column.left(), 0, column.width(), line), Qt::AlignHCenter | Qt::AlignVCenter, figure);
    painter.setFont(font());
    painter.setPen(quiet_text(palette()));
    painter.drawText(QRect(column.left(), column.height() - line, column.width(), line),
                     Qt::AlignHCenter | Qt::AlignVCenter, to_qt(bar.caption));
    const double left = column.left() + (column.width() - bar_thickness) / 2.0;
    const double share = bar.whole > 0 ? static_cast<double>(bar.count) / static_cast<double>(bar.whole) : 0.0;
    paint_bar(painter, palette(), QRectF(left, line, bar_thickness, column.height() - 2.0 * line), share, Qt::Vertical);
}

} // namespace cuedrill::platform::qt
