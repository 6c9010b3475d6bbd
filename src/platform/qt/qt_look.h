#pragma once

#include "common/colour.h"
#include "common/twips.h"

#include <QColor>
#include <QSize>
#include <optional>

class QPainter;
class QPalette;
class QPlainTextEdit;
class QRect;
class QRectF;
class QWidget;

namespace cuedrill::platform::qt {

/// Sets the widget style and the icon of the program, and makes the program end only when it says so, not when its last
/// window is closed. Call this before the first window is created.
/// @param keep_style keeps the style that the command line has set; one set by the environment is always kept.
void set_up_application(bool keep_style = false);

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

/// The colour of lines around cards: one that can be told from the window and from the card.
QColor hairline(const QPalette& palette);

/// The colour of the ring around what has the keyboard focus, and its width in pixels.
QColor focus_colour(const QPalette& palette);
inline constexpr double focus_width = 2.0;

/// Draws that ring just inside `area`.
void draw_focus_ring(QPainter& painter, const QPalette& palette, const QRectF& area);

/// The colour of the line around something with a background of its own, which can be told from the background and is
/// seen where the background cannot be told from the window.
QColor outline_of(const QColor& background);

/// A pale ground for text on that background, where black cannot be read on the background itself by everybody.
QColor plate_of(const QColor& background);

/// Fills `area` with round corners, and draws the line around it.
void draw_background(QPainter& painter, const QRect& area, const QColor& background);

/// The colours of a bar: of the whole, and of its filled part.
QColor bar_track(const QPalette& palette);
QColor bar_fill(const QPalette& palette);

/// Thickness of the bars of the statistics, in pixels.
inline constexpr double bar_thickness = 10.0;

/// Draws a bar with round ends: the whole as a track, and the `share` of it, 0 to 1, filled from its left end, or from
/// its lower end if it is upright. A share above 0 is always visible.
void paint_bar(QPainter& painter, const QPalette& palette, const QRectF& bar, double share, Qt::Orientation direction);

/// Radius of all rounded corners, in pixels.
inline constexpr double corner_radius = 5.0;

} // namespace cuedrill::platform::qt
