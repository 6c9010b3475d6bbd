#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace cuedrill::common {

/// `value` with exactly `decimals` digits after the point ("0.00" is decimals 2), never through a locale. The shortest
/// decimal number that reads back as `value` is rounded, halves away from zero: 0.015 is "0.02". Zero has no sign.
std::string format_fixed(double value, int decimals);

/// The shortest decimal text that reads back as `value`; with an exponent only for 1e15 and more and below 1e-5.
std::string format_general(double value);

/// `value` padded with zeros on the left to at least `digits` digits ("00" is digits 2); a minus sign stands before the
/// digits.
std::string format_padded(std::int64_t value, int digits);

/// The number that the whole of `text` stands for; a sign, an exponent, and a decimal point or comma are accepted,
/// blanks around it are not. Nothing for any other text, and for infinities and not-a-number.
std::optional<double> parse_number(std::string_view text);

} // namespace cuedrill::common
