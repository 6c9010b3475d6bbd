#pragma once

#include <cstdint>
#include <string_view>

namespace cuedrill::common {

/// The type of keys, levels, counters and scores.
using Int16 = std::int16_t;

inline constexpr Int16 max_int16 = 32767;

/// `value` as a 16-bit number.
/// @param what names the value in the error text, for example "record number".
/// @throws OverflowError when it does not fit.
Int16 to_int16(std::int64_t value, std::string_view what);

/// `value` rounded to the nearest integer (ties to even), as a 16-bit number.
/// @throws OverflowError when it does not fit or is not a number.
Int16 to_int16(double value, std::string_view what);

} // namespace cuedrill::common
