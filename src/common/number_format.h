#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace cuedrill::common {

/// `value` with exactly `decimals` digits after the point ("0.00" is decimals 2), independent of the locale. Rounds the
/// shortest decimal number that parses back to `value`, halves away from zero: 0.015 becomes "0.02". Zero has no sign.
std::string format_fixed(double value, int decimals);

/// The shortest decimal text that parses back to `value`; an exponent is used only from 1e15 up and below 1e-5.
std::string format_general(double value);

/// `value` padded with zeros on the left to at least `digits` digits ("00" is digits 2); a minus sign precedes the
/// digits.
std::string format_padded(std::int64_t value, int digits);

/// Parses all of `text` as a number; accepts a sign, an exponent, and a decimal point or comma, but no blanks around
/// it. std::nullopt for any other text, and for infinities and not-a-number.
std::optional<double> parse_number(std::string_view text);

} // namespace cuedrill::common
