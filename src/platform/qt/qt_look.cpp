#include "platform/qt/qt_look.h"

#include <QApplication>
#include <QIcon>
#include <QPalette>
#include <QPlainTextEdit>
#include <QTextDocument>
#include <QTextOption>
#include <cmath>

namespace cuedrill::platform::qt {

namespace {

/// From the program itself, because a program that is not installed has none in the desktop's theme.
QIcon program_icon()
{
    QIcon icon;
    for (const int size : {16, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/icons/cuedrill-%1.png").arg(size), QSize(size, size));
    return icon;
}

} // namespace

void set_up_application()
{
    // Fusion is available on every desktop and follows the palette completely, so that light, dark and high-contrast
    // themes come out right and the fixed colours of status, answer and levels are visible.
    QApplication::setStyle(QStringLiteral("Fusion"));
    // While the program starts, boxes open and close before there is a main window.
    QApplication::setQuitOnLastWindowClosed(false);
    // By this name a desktop finds the program's entry, and on Wayland its icon.
    QGuiApplication::setDesktopFileName(QStringLiteral("cuedrill"));
    QApplication::setWindowIcon(program_icon());
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
    return blend(palette.color(QPalette::Window), palette.color(QPalette::WindowText), 0.2);
}

} // namespace cuedrill::platform::qt
