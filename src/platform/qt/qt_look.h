#pragma once

#include "common/colour.h"
#include "common/twips.h"

#include <QColor>
#include <QSize>
#include <optional>

class QPalette;
class QPlainTextEdit;
class QWidget;

namespace cuedrill::platform::qt {

/// Chooses the widget style in which the windows are drawn, and that the program ends when it says so, not when its
/// last window is closed. To be called before the first window is built.
void set_up_application();

/// Device-independent pixels, rounded to the nearest.
int to_pixels(common::Twips twips);
common::Twips to_twips(int pixels);

QColor to_qt(common::Colour colour);

/// Gives `widget` a background of its own, with black text on it; nothing gives the theme's own colours back.
void set_fixed_background(QWidget& widget, std::optional<common::Colour> colour);

/// Whether `widget` has a background of its own.
bool has_fixed_background(const QWidget& widget);

/// The least size of a place for several lines, in pixels.
inline constexpr QSize smallest_text_area{120, 72};

/// Makes `edit` a text area that stands in a card and wraps its lines.
void set_up_text_area(QPlainTextEdit& edit);

/// The colour `share` of the way (0 to 1) from `from` to `to`.
QColor blend(const QColor& from, const QColor& to, double share);

/// The text colour of captions, which stand back behind their values, readable on every theme.
QColor quiet_text(const QPalette& palette);

/// The colour of hairlines around cards and bars.
QColor hairline(const QPalette& palette);

/// Radius of the corners of all that is drawn with round ones, in pixels.
inline constexpr double corner_radius = 5.0;

} // namespace cuedrill::platform::qt
