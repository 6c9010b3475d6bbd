#pragma once

namespace cuedrill::common {

/// Lengths on the screen: 1440 twips to the inch, 15 to a device-independent pixel (96 to the inch).
using Twips = int;

inline constexpr Twips twips_per_pixel = 15;

} // namespace cuedrill::common
