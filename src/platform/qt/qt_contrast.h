#pragma once

#include <QColor>

namespace cuedrill::platform::qt {

/// How colours are seen: by most people, and without the cones for long, middle or short waves.
enum class Sight { usual, protanopia, deuteranopia, tritanopia };

/// The colour as it is seen. The matrices, for linear light, are those of Machado, Oliveira and Fernandes: "A
/// Physiologically-based Model for Simulation of Color Vision Deficiency" (2009), severity 1.
QColor as_seen(const QColor& colour, Sight sight);

/// Contrast of two colours, from 1 to 21, by the Web Content Accessibility Guidelines 2.1.
double contrast(const QColor& one, const QColor& other);

/// The contrast of two colours for that kind of sight for which it is least.
double least_contrast(const QColor& one, const QColor& other);

/// Contrasts that these guidelines ask for: of text on its ground (1.4.3), and of parts and borders that carry meaning
/// (1.4.11).
inline constexpr double text_contrast = 4.5;
inline constexpr double part_contrast = 3.0;

/// The colour nearest to `colour`, towards black or white, that has at least the contrast `least` to `ground` for
/// every kind of sight. It moves away from the ground: towards black from a light one. Black or white if no colour has
/// it.
QColor with_contrast(const QColor& colour, const QColor& ground, double least);

/// Whether black text on `ground` has the contrast of text for every kind of sight.
bool takes_black_text(const QColor& ground);

} // namespace cuedrill::platform::qt
