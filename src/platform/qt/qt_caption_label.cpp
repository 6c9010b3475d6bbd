#include "platform/qt/qt_caption_label.h"

#include "platform/qt/qt_contrast.h"
#include "platform/qt/qt_look.h"
#include "platform/qt/qt_text.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>

namespace cuedrill::platform::qt {

namespace {

constexpr int padding = 6;
constexpr int plate_padding = 10;
// A long text must neither widen the window nor squeeze the widgets next to it.
constexpr int widest_hint_in_characters = 28;

} // namespace

CaptionLabel::CaptionLabel(Tone tone) : tone_(tone)
{
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void CaptionLabel::set_bold(bool bold)
{
    QFont changed = font();
    if (!regular_weight_)
        regular_weight_ = changed.weight();
    changed.setWeight(bold ? QFont::Bold : static_cast<QFont::Weight>(*regular_weight_));
    setFont(changed);
}

QSize CaptionLabel::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    const int widest = metrics.averageCharWidth() * widest_hint_in_characters;
    const int margins = contentsMargins().left() + contentsMargins().right();
    return {std::min(metrics.horizontalAdvance(text()), widest) + 2 + margins, metrics.height() + 8};
}

QSize CaptionLabel::minimumSizeHint() const
{
    const int narrowest = fontMetrics().averageCharWidth() * 6;
    const QSize hint = sizeHint();
    return {std::min(hint.width(), narrowest), hint.height()};
}

QString CaptionLabel::shown_text() const
{
    QString line = text();
    line.replace(QLatin1Char('\n'), QLatin1Char(' '));
    const int inset = has_fixed_background(*this) ? padding + plate_padding : 0;
    return fontMetrics().elidedText(line, Qt::ElideRight, contentsRect().width() - 2 * inset);
}

void CaptionLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    QRect area = contentsRect();
    if (has_fixed_background(*this)) {
        const QColor background = palette().color(QPalette::Window);
        painter.setRenderHint(QPainter::Antialiasing);
        draw_background(painter, rect(), background);
        area.adjust(padding + plate_padding, 0, -padding - plate_padding, 0);
        if (!takes_black_text(background) && !text().isEmpty())
            paint_plate(painter, area);
        painter.setPen(palette().color(QPalette::WindowText));
    } else {
        const bool quiet = tone_ == Tone::quiet || !isEnabled();
        painter.setPen(quiet ? quiet_text(palette()) : palette().color(QPalette::WindowText));
    }
    painter.drawText(area, static_cast<int>(alignment()) | Qt::TextSingleLine, shown_text());
}

/// A ground for the text alone.
void CaptionLabel::paint_plate(QPainter& painter, const QRect& area) const
{
    constexpr int space_above = 3;
    QRect plate = painter.boundingRect(area, static_cast<int>(alignment()) | Qt::TextSingleLine, shown_text());
    plate.adjust(-plate_padding, 0, plate_padding, 0);
    plate.setTop(rect().top() + space_above);
    plate.setBottom(rect().bottom() - space_above);
    painter.setPen(Qt::NoPen);
    painter.setBrush(plate_of(palette().color(QPalette::Window)));
    painter.drawRoundedRect(plate, corner_radius, corner_radius);
}

bool CaptionLabel::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const bool shortened = shown_text() != text();
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), shortened ? plain_tool_tip(text()) : QString(),
                       this);
    return true;
}

} // namespace cuedrill::platform::qt
