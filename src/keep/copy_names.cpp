#include "keep/copy_names.h"

#include "app/base/paths.h"
#include "common/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>

namespace cuedrill::keep {
namespace {

constexpr std::string_view extension = ".crs";

std::string digits(int number, std::size_t width)
{
    const std::string text = std::to_string(number);
    return std::string(width - std::min(width, text.size()), '0') + text;
}

/// FNV-1a with 64 bits.
std::uint64_t hash_of(std::string_view text)
{
    std::uint64_t hash = 14695981039346656037U;
    for (const char byte : text)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211U;
    return hash;
}

std::string hexadecimal(std::uint64_t number)
{
    constexpr std::string_view digit = "0123456789abcdef";
    std::string text(16, '0');
    for (auto place = text.rbegin(); place != text.rend(); ++place, number /= 16)
        *place = digit[number % 16];
    return text;
}

int days_of_month(int year, int month)
{
    constexpr std::array<int, 12> days{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : days.at(static_cast<std::size_t>(month - 1));
}

} // namespace

std::string folder_name(std::string_view course_path)
{
    // A name may have 255 bytes in most file systems, and 100 characters of four bytes are too many.
    constexpr std::size_t most_characters = 50;
    const std::string name = app::name_of(course_path);
    return std::string(common::first_code_points(name, most_characters)) + "-" + hexadecimal(hash_of(course_path));
}

std::string time_name(common::DateTime time)
{
    const common::CalendarFields at = time.fields();
    return digits(at.year, 4) + "-" + digits(at.month, 2) + "-" + digits(at.day, 2) + "_" + digits(at.hour, 2) + "-" +
           digits(at.minute, 2) + "-" + digits(at.second, 2);
}

std::string copy_name(common::DateTime time)
{
    return time_name(time).append(extension);
}

std::optional<common::DateTime> time_of_copy(std::string_view file_name)
{
    if (!file_name.ends_with(extension))
        return std::nullopt;
    return time_of_name(file_name.substr(0, file_name.size() - extension.size()));
}

std::optional<common::DateTime> time_of_name(std::string_view name)
{
    constexpr std::string_view pattern = "0000-00-00_00-00-00";
    if (name.size() != pattern.size())
        return std::nullopt;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const bool is_digit = name[i] >= '0' && name[i] <= '9';
        if (pattern[i] == '0' ? !is_digit : name[i] != pattern[i])
            return std::nullopt;
    }
    const auto number = [name](std::size_t place, std::size_t width) {
        int value = 0;
        std::from_chars(name.data() + place, name.data() + place + width, value);
        return value;
    };
    const common::CalendarFields at{.year = number(0, 4),
                                    .month = number(5, 2),
                                    .day = number(8, 2),
                                    .hour = number(11, 2),
                                    .minute = number(14, 2),
                                    .second = number(17, 2)};
    if (at.year < 100 || at.month < 1 || at.month > 12 || at.day < 1 || at.day > days_of_month(at.year, at.month) ||
        at.hour > 23 || at.minute > 59 || at.second > 59)
        return std::nullopt;
    return common::DateTime::from_fields(at);
}

std::string words_of_time(common::DateTime time)
{
    // 21/Nov/2026 16:05:00
    const std::string literal = common::format_date_literal(time);
    return literal.substr(0, 2) + " " + literal.substr(3, 3) + " " + literal.substr(7, 10);
}

} // namespace cuedrill::keep
