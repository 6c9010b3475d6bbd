#include "platform/qt/qt_style.h"

#include "platform/qt/qt_contrast.h"
#include "platform/qt/qt_look.h"

#include <QAbstractScrollArea>
#include <QPainter>
#include <QPalette>
#include <QStyleOption>
#include <algorithm>

namespace cuedrill::platform::qt {

namespace {

/// Whether `widget` is a text or a list with the frame that the style draws.
bool has_frame_of_style(const QWidget* widget)
{
    const auto* const area = qobject_cast<const QAbstractScrollArea*>(widget);
    return area != nullptr && area->frameShape() == QFrame::StyledPanel;
}

void draw_ring(const QStyleOption& option, QPainter& painter)
{
    if (option.state.testFlag(QStyle::State_HasFocus) && option.state.testFlag(QStyle::State_Enabled))
        draw_focus_ring(painter, option.palette, option.rect);
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
    if (element == CE_PushButton || (element == CE_ShapedFrame && has_frame_of_style(widget)))
        draw_ring(*option, *painter);
}

void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (element == PE_FrameLineEdit)
        draw_ring(*option, *painter);
}

void ProgramStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                      const QWidget* widget) const
{
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ComboBox || control == CC_ToolButton)
        draw_ring(*option, *painter);
}

int ProgramStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    const int usual = QProxyStyle::pixelMetric(metric, option, widget);
    // The contents of a text or a list would cover a ring that is wider than the frame.
    if (metric == PM_DefaultFrameWidth && has_frame_of_style(widget))
        return std::max(usual, static_cast<int>(focus_width));
    return usual;
}

} // namespace cuedrill::platform::qt
