#pragma once

#include <cstdint>

namespace cuedrill::common {

/// A colour by its red, green and blue parts, 0 to 255 each.
struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    friend bool operator==(const Colour&, const Colour&) = default;
};

inline constexpr Colour light_red{255, 128, 128};
inline constexpr Colour light_green{128, 255, 128};
inline constexpr Colour pure_red{255, 0, 0};
inline constexpr Colour pure_green{0, 255, 0};
inline constexpr Colour light_cyan{192, 255, 255};

} // namespace cuedrill::common
