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

/// Sets the widget style and the icon of all windows, and makes the program end only when it says so, not when its last
/// window is closed. Call this before the first window is created.
void set_up_application();

/// Converts to device-independent pixels, rounded to the nearest.
int to_pixels(common::Twips twips);
common::Twips to_twips(int pixels);

QColor to_qt(common::Colour colour);

/// Gives `widget` a background of its own with black text; std::nullopt restores the theme's colours.
void set_fixed_background(QWidget& widget, std::optional<common::Colour> colour);

/// Whether `widget` has a background of its own.
bool has_fixed_background(const QWidget& widget);

/// Minimum size of a text area, in pixels.
inline constexpr QSize smallest_text_area{120, 72};

/// Space around the text of a text area, in pixels.
inline constexpr double text_margin = 6.0;

/// Makes `edit` a text area inside a card, with wrapped lines.
void set_up_text_area(QPlainTextEdit& edit);

/// Mixes two colours; `share` (0 to 1) is the part of `to`.
QColor blend(const QColor& from, const QColor& to, double share);

/// The text colour of captions: less prominent than the values, readable on every theme.
QColor quiet_text(const QPalette& palette);

/// The colour of hairlines around cards and bars.
QColor hairline(const QPalette& palette);

/// Radius of all rounded corners, in pixels.
inline constexpr double corner_radius = 5.0;

} // namespace cuedrill::platform::qt
