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

constexpr int plate_padding = 10;
// From the edge of a background to its text, with room for the edge of the text's own ground.
constexpr int padding = 6 + plate_padding;
// A long text must neither widen the window nor squeeze the widgets next to it.
constexpr int widest_hint_in_characters = 28;
constexpr int most_wrapped_lines = 3;
constexpr int height_beyond_text = 8;

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
    return {std::min(metrics.horizontalAdvance(text()), widest) + 2 + margins, metrics.height() + height_beyond_text};
}

QSize CaptionLabel::minimumSizeHint() const
{
    const int narrowest = fontMetrics().averageCharWidth() * 6;
    const QSize hint = sizeHint();
    return {whole_ ? hint.width() : std::min(hint.width(), narrowest), hint.height()};
}

QString CaptionLabel::shown_text() const
{
    return shown_lines().join(QLatin1Char(' '));
}

void CaptionLabel::set_wrapping(bool wrapping)
{
    if (wrapping == wrapping_)
        return;
    wrapping_ = wrapping;
    // A fixed height would be that of a single line.
    QSizePolicy policy = sizePolicy();
    policy.setVerticalPolicy(wrapping ? QSizePolicy::Preferred : QSizePolicy::Fixed);
    setSizePolicy(policy);
    updateGeometry();
}

bool CaptionLabel::fits(int width) const
{
    return lines(width - 2 * padding, wrapping_ ? most_wrapped_lines : 1).join(QLatin1Char(' ')) == in_one_line();
}

int CaptionLabel::one_line_width() const
{
    return fontMetrics().horizontalAdvance(in_one_line()) + 2 * padding;
}

int CaptionLabel::heightForWidth(int width) const
{
    // Room for the edges of a background, even without one, so that a background changes no line.
    const QStringList wrapped = lines(width - 2 * padding, most_wrapped_lines);
    const int further = static_cast<int>(std::max<qsizetype>(wrapped.size(), 1)) - 1;
    return std::max(minimumHeight(), sizeHint().height() + further * fontMetrics().lineSpacing());
}

QStringList CaptionLabel::shown_lines() const
{
    const int inset = has_fixed_background(*this) || wrapping_ ? 2 * padding : 0;
    const int further = (height() - fontMetrics().height()) / fontMetrics().lineSpacing();
    const int most_lines = wrapping_ ? std::clamp(1 + further, 1, most_wrapped_lines) : 1;
    // A text that fits without the edges of a background stays in one line.
    if (!has_fixed_background(*this) && most_lines == 1)
        return lines(contentsRect().width(), 1);
    return lines(contentsRect().width() - inset, most_lines);
}

QString CaptionLabel::in_one_line() const
{
    QString line = text();
    line.replace(QLatin1Char('\n'), QLatin1Char(' '));
    return line;
}

/// The text broken into lines of this width. If it has more than `most_lines`, the last one ends in an ellipsis.
QStringList CaptionLabel::lines(int width, int most_lines) const
{
    QString rest = in_one_line();
    QStringList result;
    while (static_cast<int>(result.size()) < most_lines - 1 && fontMetrics().horizontalAdvance(rest) > width) {
        qsizetype end = rest.lastIndexOf(QLatin1Char(' '));
        while (end > 0 && fontMetrics().horizontalAdvance(rest.first(end)) > width)
            end = rest.lastIndexOf(QLatin1Char(' '), end - 1);
        if (end <= 0)
            break;
        result.append(rest.first(end));
        rest = rest.sliced(end + 1);
    }
    result.append(fontMetrics().elidedText(rest, Qt::ElideRight, width));
    return result;
}

void CaptionLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    QRect area = contentsRect();
    if (has_fixed_background(*this)) {
        const QColor background = palette().color(QPalette::Window);
        painter.setRenderHint(QPainter::Antialiasing);
        draw_background(painter, rect(), background);
        area.adjust(padding, 0, -padding, 0);
        if (!takes_black_text(background) && !text().isEmpty())
            paint_plate(painter, area);
        painter.setPen(palette().color(QPalette::WindowText));
    } else {
        const bool quiet = tone_ == Tone::quiet || !isEnabled();
        painter.setPen(quiet ? quiet_text(palette()) : palette().color(QPalette::WindowText));
    }
    painter.drawText(area, static_cast<int>(alignment()), shown_lines().join(QLatin1Char('\n')));
}

/// A ground for the text alone.
void CaptionLabel::paint_plate(QPainter& painter, const QRect& area) const
{
    constexpr int space_above = 3;
    QRect plate = painter.boundingRect(area, static_cast<int>(alignment()), shown_lines().join(QLatin1Char('\n')));
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
