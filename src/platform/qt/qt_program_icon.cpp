#include "platform/qt/qt_program_icon.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace cuedrill::platform::qt {

namespace {

constexpr double side = 128; // of the picture, in its own units
constexpr QSize card_size{82, 64};
constexpr double card_radius = 9;

constexpr QColor ink(0x35, 0x50, 0x6b);

QPen round_pen(const QColor& colour)
{
    return {colour, 6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

void draw_card(QPainter& painter, QPoint corner, const QColor& colour, const QPen& border)
{
    painter.setPen(border);
    painter.setBrush(colour);
    painter.drawRoundedRect(QRectF(corner, card_size), card_radius, card_radius);
}

void draw_question_mark(QPainter& painter)
{
    // From nine o'clock over the top to where the stem leaves the bow.
    constexpr QRectF bow(44, 51, 22, 22);
    constexpr double bow_start = 180;
    constexpr double bow_length = -245.9;
    QPainterPath mark;
    mark.arcMoveTo(bow, bow_start);
    mark.arcTo(bow, bow_start, bow_length);
    mark.cubicTo(56, 73.6, 55, 75.5, 55, 80);
    painter.setPen(round_pen(ink));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(mark);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawEllipse(QPointF(55, 90), 4, 4);
}

void draw_tick(QPainter& painter)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x4f, 0x9d, 0x62));
    painter.drawEllipse(QPointF(96, 100), 20, 20);
    painter.setPen(round_pen(Qt::white));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF{QPointF(86, 100), QPointF(93.5, 107.5), QPointF(107, 93)});
}

void draw_picture(QPainter& painter)
{
    draw_card(painter, {30, 14}, QColor(0x9f, 0xb6, 0xcd), Qt::NoPen);
    draw_card(painter, {22, 26}, QColor(0xc7, 0xd5, 0xe3), Qt::NoPen);
    draw_card(painter, {14, 38}, QColor(0xfd, 0xfd, 0xfb), QPen(ink, 3));
    draw_question_mark(painter);
    draw_tick(painter);
}

class ProgramIconEngine : public QIconEngine {
public:
    void paint(QPainter* painter, const QRect& area, QIcon::Mode /*mode*/, QIcon::State /*state*/) override
    {
        const double scale = std::min(area.width(), area.height()) / side;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(area.x() + (area.width() - side * scale) / 2, area.y() + (area.height() - side * scale) / 2);
        painter->scale(scale, scale);
        draw_picture(*painter);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        // The painter draws lines thinner than a pixel too faintly, so a small picture is made of a large one.
        constexpr int widest_small_picture = 24;
        constexpr int enlargement = 8;
        const bool is_small = size.width() <= widest_small_picture;
        QPixmap picture(is_small ? size * enlargement : size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, picture.rect(), mode, state);
        painter.end();
        return is_small ? picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation) : picture;
    }

    /// The sizes that window managers show, at scales from 1 to 3.
    QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override
    {
        QList<QSize> sizes;
        for (const int size : {16, 24, 32, 48, 64, 96, 128, 192})
            sizes.append({size, size});
        return sizes;
    }

    [[nodiscard]] QIconEngine* clone() const override { return new ProgramIconEngine(*this); }
};

} // namespace

QIcon program_icon()
{
    return QIcon(new ProgramIconEngine);
}

} // namespace cuedrill::platform::qt
