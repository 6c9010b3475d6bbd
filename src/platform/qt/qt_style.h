#pragma once

#include <QProxyStyle>

namespace cuedrill::platform::qt {

/// A style of the toolkit with a selection on which its text can be read and a ring around what has the keyboard focus
/// that can be seen, in each theme.
class ProgramStyle : public QProxyStyle {
public:
    /// @param base the key of the style.
    explicit ProgramStyle(const QString& base) : QProxyStyle(base) {}

    /// Gives the selected text its contrast, by a darker or lighter ground.
    void polish(QPalette& palette) override;
    using QProxyStyle::polish;

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
};

} // namespace cuedrill::platform::qt
