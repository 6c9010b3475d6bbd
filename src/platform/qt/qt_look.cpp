#include "platform/qt/qt_look.h"

#include "platform/qt/qt_contrast.h"
#include "platform/qt/qt_program_icon.h"
#include "platform/qt/qt_style.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QPlainTextEdit>
#include <QStyle>
#include <QTextDocument>
#include <QTextOption>
#include <algorithm>
#include <cmath>

namespace cuedrill::platform::qt {

namespace {

/// Fusion is available on every desktop and follows the palette completely, so that light, dark and high-contrast
/// themes come out right and the fixed colours of status, answer and levels are visible.
constexpr auto usual_style = "Fusion";

/// The key of the application's style, also where the program has set it up before.
QString style_in_use()
{
    const auto* const set_up = dynamic_cast<const ProgramStyle*>(QApplication::style());
    return set_up != nullptr ? set_up->baseStyle()->name() : QApplication::style()->name();
}

QString style_to_use(bool keep_style)
{
    const bool set_by_user = keep_style || !qEnvironmentVariableIsEmpty("QT_STYLE_OVERRIDE");
    return set_by_user ? style_in_use() : QString::fromLatin1(usual_style);
}

} // namespace

void set_up_application(bool keep_style)
{
    QApplication::setStyle(new ProgramStyle(style_to_use(keep_style)));
    QApplication::setWindowIcon(program_icon());
    // By this name a desktop finds the program's entry, and on Wayland its icon.
    QGuiApplication::setDesktopFileName(QStringLiteral("cuedrill"));
    // While the program starts, boxes open and close before there is a main window.
    QApplication::setQuitOnLastWindowClosed(false);
}

int to_pixels(common::Twips twips)
{
    return static_cast<int>(std::lround(static_cast<double>(twips) / common::twips_per_pixel));
}

common::Twips to_twips(int pixels)
{
    return pixels * common::twips_per_pixel;
}

QColor to_qt(common::Colour colour)
{
    return {colour.red, colour.green, colour.blue};
}

void set_fixed_background(QWidget& widget, std::optional<common::Colour> colour)
{
    QPalette palette;
    if (colour) {
        const QColor background = to_qt(*colour);
        palette.setColor(QPalette::Window, background);
        palette.setColor(QPalette::Base, background);
        palette.setColor(QPalette::WindowText, Qt::black);
        palette.setColor(QPalette::Text, Qt::black);
        palette.setColor(QPalette::PlaceholderText, Qt::black);
    }
    widget.setPalette(palette);
    widget.update();
}

bool has_fixed_background(const QWidget& widget)
{
    return widget.testAttribute(Qt::WA_SetPalette);
}

void set_up_text_area(QPlainTextEdit& edit)
{
    edit.setFrameShape(QFrame::NoFrame);
    edit.setTabChangesFocus(true);
    edit.setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    edit.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    edit.document()->setDocumentMargin(text_margin);
    edit.setMinimumSize(smallest_text_area);
}

QColor blend(const QColor& from, const QColor& to, double share)
{
    const auto mix = [share](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * share)); };
    return {mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue())};
}

QColor quiet_text(const QPalette& palette)
{
    return blend(palette.color(QPalette::WindowText), palette.color(QPalette::Window), 0.32);
}

QColor hairline(const QPalette& palette)
{
    const QColor window = palette.color(QPalette::Window);
    const QColor faint = blend(window, palette.color(QPalette::WindowText), 0.2);
    return with_contrast(with_contrast(faint, window, part_contrast), palette.color(QPalette::Base), part_contrast);
}

QColor focus_colour(const QPalette& palette)
{
    const QColor on_window =
        with_contrast(palette.color(QPalette::Highlight), palette.color(QPalette::Window), text_contrast);
    return with_contrast(on_window, palette.color(QPalette::Base), text_contrast);
}

void draw_focus_ring(QPainter& painter, const QPalette& palette, const QRectF& area)
{
    constexpr double style_radius = 2.0; // of the style's own frames
    constexpr double half = focus_width / 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(focus_colour(palette), focus_width));
    painter.drawRoundedRect(area.adjusted(half, half, -half, -half), style_radius, style_radius);
    painter.restore();
}

QColor outline_of(const QColor& background)
{
    return with_contrast(background, background, part_contrast);
}

QColor plate_of(const QColor& background)
{
    return blend(background, Qt::white, 0.85);
}

void draw_background(QPainter& painter, const QRect& area, const QColor& background)
{
    constexpr double line = 1.5;
    constexpr double half = line / 2;
    painter.setPen(QPen(outline_of(background), line));
    painter.setBrush(background);
    painter.drawRoundedRect(QRectF(area).adjusted(half, half, -half, -half), corner_radius, corner_radius);
}

QColor bar_track(const QPalette& palette)
{
    return blend(palette.color(QPalette::Window), palette.color(QPalette::WindowText), 0.13);
}

QColor bar_fill(const QPalette& palette)
{
    return with_contrast(palette.color(QPalette::Highlight), bar_track(palette), part_contrast);
}

void paint_bar(QPainter& painter, const QPalette& palette, const QRectF& bar, double share, Qt::Orientation direction)
{
    constexpr double thinnest_part = 4.0; // keeps one question in thousands visible
    const double radius = std::min(bar.width(), bar.height()) / 2;
    painter.save();
    painter.setPen(Qt::NoPen);
    painter.setBrush(bar_track(palette));
    painter.drawRoundedRect(bar, radius, radius);
    if (share > 0.0) {
        QRectF part = bar;
        if (direction == Qt::Horizontal)
            part.setWidth(std::max(bar.width() * share, thinnest_part));
        else
            part.setTop(bar.bottom() - std::max(bar.height() * share, thinnest_part));
        // Clipping keeps the round end, however short the filled part is.
        painter.setClipRect(part);
        painter.setBrush(bar_fill(palette));
        painter.drawRoundedRect(bar, radius, radius);
    }
    painter.restore();
}

} // namespace cuedrill::platform::qt
