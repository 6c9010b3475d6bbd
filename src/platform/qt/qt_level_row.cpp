#include "platform/qt/qt_level_row.h"

#include "platform/qt/qt_look.h"

#include <QPainter>

namespace cuedrill::platform::qt {

namespace {

constexpr int padding = 8;
constexpr int mark_width = 10;
constexpr int caption_characters = 13;
constexpr int count_characters = 6;

} // namespace

LevelRow::LevelRow()
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void LevelRow::set_caption(const QString& caption)
{
    caption_ = caption;
    update();
}

void LevelRow::set_share(double share)
{
    share_ = share;
    update();
}

void LevelRow::set_marked(bool marked)
{
    marked_ = marked;
    update();
}

QSize LevelRow::sizeHint() const
{
    return {fontMetrics().averageCharWidth() * 36, fontMetrics().height() + 8};
}

QSize LevelRow::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 36, fontMetrics().height() + 4};
}

void LevelRow::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (has_fixed_background(*this))
        draw_background(painter, rect(), palette().color(QPalette::Window));

    QFont row_font = font();
    row_font.setBold(marked_);
    painter.setFont(row_font);
    painter.setPen(palette().color(QPalette::WindowText));

    const int character = fontMetrics().averageCharWidth();
    const QRect area = rect().adjusted(padding, 0, -padding, 0);
    const QRect mark(area.left(), area.top(), mark_width, area.height());
    const QRect caption(mark.right() + 1, area.top(), character * caption_characters, area.height());
    const QRect count(area.right() - character * count_characters, area.top(), character * count_characters,
                      area.height());
    if (marked_) {
        const QPointF middle(mark.left(), mark.center().y() + 0.5);
        painter.setBrush(painter.pen().color());
        painter.drawPolygon(QPolygonF{middle + QPointF(0, -4), middle + QPointF(5, 0), middle + QPointF(0, 4)});
    }
    const QFontMetrics metrics(row_font);
    painter.drawText(caption, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     metrics.elidedText(caption_, Qt::ElideRight, caption.width()));
    painter.drawText(count, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, text());
    const int bar_left = caption.right() + padding;
    paint_bar(
        painter, palette(),
        QRectF(bar_left, area.center().y() - bar_thickness / 2 + 0.5, count.left() - bar_left - padding, bar_thickness),
        share_, Qt::Horizontal);
}

} // namespace cuedrill::platform::qt
