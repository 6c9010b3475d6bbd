#include "platform/qt/qt_due_chart.h"

#include "platform/qt/qt_look.h"
#include "platform/qt/qt_text.h"

#include <QPainter>
#include <algorithm>
#include <numeric>

namespace cuedrill::platform::qt {

namespace {

constexpr int narrowest_column_characters = 5;
constexpr int widest_column_characters = 12;
constexpr int gap_before_new = 8; // its bar has another scale
constexpr int least_bar_height = 24;
constexpr int text_gap = 3;

} // namespace

DueChart::DueChart()
{
    setTextFormat(Qt::PlainText);
    // The figures beside it get their room first.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void DueChart::show_picture(const DuePicture& picture)
{
    bars_ = picture.bars;
    setText(to_qt(picture.words));
    setToolTip(plain_tool_tip(to_qt(picture.words)));
    setAccessibleDescription(to_qt(picture.description));
    update();
}

int DueChart::narrowest_column() const
{
    return fontMetrics().averageCharWidth() * narrowest_column_characters;
}

std::vector<std::size_t> DueChart::drawn_bars() const
{
    const int room = (width() - gap_before_new) / std::max(narrowest_column(), 1);
    const std::size_t columns = static_cast<std::size_t>(std::clamp(room, 1, due_bars));
    std::vector<std::size_t> drawn(columns);
    std::iota(drawn.begin(), drawn.end(), std::size_t{0});
    if (columns > 1)
        drawn.back() = bars_.size() - 1;
    return drawn;
}

QSize DueChart::sizeHint() const
{
    return {narrowest_column() * due_bars + gap_before_new, minimumSizeHint().height()};
}

QSize DueChart::minimumSizeHint() const
{
    return {narrowest_column(), 2 * (fontMetrics().height() + text_gap) + least_bar_height};
}

void DueChart::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const std::vector<std::size_t> drawn = drawn_bars();
    const int widest = fontMetrics().averageCharWidth() * widest_column_characters;
    const int pitch = std::min((width() - gap_before_new) / static_cast<int>(drawn.size()), widest);
    int left = 0;
    for (const std::size_t bar : drawn) {
        if (bar == bars_.size() - 1)
            left += gap_before_new;
        paint_column(painter, bars_.at(bar), QRect(left, 0, pitch, height()));
        left += pitch;
    }
}

void DueChart::paint_column(QPainter& painter, const DueBar& bar, const QRect& column) const
{
    const int line = fontMetrics().height();
    const QString figure = to_qt(bar.figure);
    QFont condensed = font();
    if (fontMetrics().horizontalAdvance(figure) > column.width())
        condensed.setStretch(QFont::Condensed);
    painter.setFont(condensed);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(QRect(column.left(), 0, column.width(), line), Qt::AlignHCenter | Qt::AlignVCenter, figure);
    painter.setFont(font());
    painter.setPen(quiet_text(palette()));
    painter.drawText(QRect(column.left(), column.height() - line, column.width(), line),
                     Qt::AlignHCenter | Qt::AlignVCenter, to_qt(bar.caption));
    const double left = column.left() + (column.width() - bar_thickness) / 2.0;
    const double share = bar.whole > 0 ? static_cast<double>(bar.count) / static_cast<double>(bar.whole) : 0.0;
    paint_bar(painter, palette(),
              QRectF(left, line + text_gap, bar_thickness, column.height() - 2.0 * (line + text_gap)), share,
              Qt::Vertical);
}

} // namespace cuedrill::platform::qt
