#include "platform/qt/qt_level_row.h"

#include "platform/qt/qt_look.h"

#include <QPainter>
#include <algorithm>

namespace cuedrill::platform::qt {

namespace {

constexpr int padding = 8;
constexpr double bar_height = 10;
constexpr int mark_width = 10;
constexpr int caption_characters = 14;
constexpr int count_characters = 7;
constexpr double thinnest_bar = 4.0; // keeps one question in thousands visible

} // namespace

LevelRow::LevelRow()
{
    setTextFormat(Qt::PlainText);
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
    return {fontMetrics().averageCharWidth() * 60, fontMetrics().height() + 8};
}

QSize LevelRow::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 32, fontMetrics().height() + 4};
}

void LevelRow::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (has_fixed_background(*this)) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette().color(QPalette::Window));
        painter.drawRoundedRect(rect(), corner_radius, corner_radius);
    }

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
    paint_bar(painter, QRect(caption.right() + padding, area.top(), count.left() - caption.right() - 2 * padding,
                             area.height()));
}

void LevelRow::paint_bar(QPainter& painter, const QRect& area) const
{
    const QColor ground = palette().color(QPalette::Window);
    QRectF bar(area.left(), area.center().y() - bar_height / 2 + 0.5, area.width(), bar_height);
    painter.setPen(Qt::NoPen);
    painter.setBrush(blend(ground, palette().color(QPalette::WindowText), 0.13));
    painter.drawRoundedRect(bar, bar_height / 2, bar_height / 2);
    if (share_ <= 0.0)
        return;

    // Clipping keeps the rounded left end of the bar, however short the filled part is.
    painter.save();
    painter.setClipRect(QRectF(bar.left(), bar.top(), std::max(bar.width() * share_, thinnest_bar), bar.height()));
    painter.setBrush(palette().color(QPalette::Highlight));
    painter.drawRoundedRect(bar, bar_height / 2, bar_height / 2);
    painter.restore();
}

} // namespace cuedrill::platform::qt
