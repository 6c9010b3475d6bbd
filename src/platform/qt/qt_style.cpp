#include "platform/qt/qt_style.h"

#include "platform/qt/qt_contrast.h"
#include "platform/qt/qt_look.h"

#include <QPainter>
#include <QPalette>
#include <QStyleOption>

namespace cuedrill::platform::qt {

namespace {

void draw_focus_ring(const QStyleOption& option, QPainter& painter)
{
    if (!option.state.testFlag(QStyle::State_HasFocus) || !option.state.testFlag(QStyle::State_Enabled))
        return;
    constexpr double style_radius = 2.0; // of the style's own frames
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(focus_colour(option.palette), focus_width));
    const double half = focus_width / 2;
    painter.drawRoundedRect(QRectF(option.rect).adjusted(half, half, -half, -half), style_radius, style_radius);
    painter.restore();
}

} // namespace

void ProgramStyle::polish(QPalette& palette)
{
    QProxyStyle::polish(palette);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
        palette.setColor(group, QPalette::Highlight,
                         with_contrast(palette.color(group, QPalette::Highlight),
                                       palette.color(group, QPalette::HighlightedText), text_contrast));
}

void ProgramStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const
{
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element == CE_PushButton)
        draw_focus_ring(*option, *painter);
}

void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (element == PE_FrameLineEdit)
        draw_focus_ring(*option, *painter);
}

} // namespace cuedrill::platform::qt
