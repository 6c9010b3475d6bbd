#include "common/number_format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

namespace cuedrill::common {
namespace {

// Room for the longest fixed notation of a double: 309 digits, sign, point and the decimals used here.
constexpr std::size_t longest_number = 400;

// From here on (and below the smallest) plain notation is mostly zeros.
constexpr double largest_plain = 1e15;
constexpr double smallest_plain = 1e-5;

/// The shortest digits that parse back to `value`, without an exponent.
std::string plain_digits(double value)
{
    std::array<char, longest_number> buffer{};
    const auto [end, error] =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed);
    return error == std::errc() ? std::string(buffer.data(), end) : std::string();
}

/// Increments the last digit of `number`, which may contain a point, with carry.
void count_up_last_digit(std::string& number)
{
    for (std::size_t place = number.size(); place-- > 0;) {
        if (number[place] == '.')
            continue;
        if (number[place] != '9') {
            ++number[place];
            return;
        }
        number[place] = '0';
    }
    number.insert(0, 1, '1');
}

} // namespace

// Rounds the decimal digits: 0.015 is stored as a double slightly below, which to_chars alone rounds down.
std::string format_fixed(double value, int decimals)
{
    if (!std::isfinite(value))
        return plain_digits(value);
    std::string number = plain_digits(std::fabs(value));
    if (number.find('.') == std::string::npos)
        number += '.';
    const std::size_t wanted = number.find('.') + 1 + static_cast<std::size_t>(std::max(decimals, 0));
    const bool round_up = number.size() > wanted && number[wanted] >= '5';
    number.resize(wanted, '0');
    if (number.back() == '.')
        number.pop_back();
    if (round_up)
        count_up_last_digit(number);
    const bool is_zero = number.find_first_not_of("0.") == std::string::npos;
    return (value < 0 && !is_zero ? "-" : "") + number;
}

std::string format_general(double value)
{
    std::array<char, longest_number> buffer{};
    // to_chars alone writes 100000 as "1e+05", because that is one character shorter.
    const double size = std::fabs(value);
    const bool plain = value == 0 || (size >= smallest_plain && size < largest_plain);
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                            plain ? std::chars_format::fixed : std::chars_format::scientific);
    return error == std::errc() ? std::string(buffer.data(), end) : std::string();
}

std::string format_padded(std::int64_t value, int digits)
{
    std::string text = std::to_string(value);
    const std::size_t sign = value < 0 ? 1 : 0;
    const auto wanted = static_cast<std::size_t>(std::max(digits, 0)) + sign;
    if (text.size() < wanted)
        text.insert(sign, wanted - text.size(), '0');
    return text;
}

std::optional<double> parse_number(std::string_view text)
{
    std::string number(text);
    if (std::count_if(number.begin(), number.end(), [](char c) { return c == ',' || c == '.'; }) > 1)
        return std::nullopt;
    std::replace(number.begin(), number.end(), ',', '.');

    const char* first = number.data();
    const char* const last = first + number.size();
    if (first != last && *first == '+') {
        ++first;
        if (first != last && *first == '-')
            return std::nullopt;
    }
    double value = 0;
    const auto [end, error] = std::from_chars(first, last, value);
    if (error != std::errc() || end != last || !std::isfinite(value))
        return std::nullopt;
    return value;
}

} // namespace cuedrill::common
