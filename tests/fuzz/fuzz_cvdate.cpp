// The date of a filter: the text of a date literal, or any other text, through the function and through the engine.
#include "common/date_time.h"
#include "fuzz/fuzzing.h"
#include "fuzz/memory_engine.h"

#include <array>
#include <cctype>
#include <optional>
#include <string>

namespace {

using namespace cuedrill;

/// Whether `text` is a date literal of the years 100 to 9999, decided character by character.
bool is_date_literal(std::string_view text)
{
    constexpr std::string_view shape = "00/aaa/0000 00:00:00";
    if (text.size() != shape.size())
        return false;
    std::string name;
    std::array<int, 5> numbers{}; // day, year, hour, minute, second
    std::size_t number = 0;
    for (std::size_t i = 0; i < shape.size(); ++i) {
        const char c = text[i];
        if (shape[i] == '0') {
            if (c < '0' || c > '9')
                return false;
            numbers.at(number) = numbers.at(number) * 10 + (c - '0');
            if (i + 1 < shape.size() && shape[i + 1] != '0')
                ++number;
        } else if (shape[i] == 'a') {
            name += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        } else if (c != shape[i]) {
            return false;
        }
    }
    constexpr std::string_view names = "jan feb mar apr may jun jul aug sep oct nov dec";
    const std::size_t place = names.find(name);
    if (place == std::string_view::npos || place % 4 != 0)
        return false;
    const std::size_t month = place / 4;
    const auto [day, year, hour, minute, second] = numbers;
    const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    constexpr std::array<int, 12> days{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const int last = days.at(month) + (month == 1 && leap ? 1 : 0);
    return year >= 100 && day >= 1 && day <= last && hour < 24 && minute < 60 && second < 60;
}

std::optional<common::DateTime> parse(std::string_view text)
{
    auto result = common::parse_date_literal(text);
    if (fuzz::is_broken() && result && result->fields().second == 59)
        result = common::DateTime::from_seconds(result->seconds() - 1);
    return result;
}

void check_text(std::string_view text)
{
    const auto date = parse(text);
    fuzz::require(date.has_value() == is_date_literal(text), "exactly the date literals are parsed");
    if (date) {
        const std::string written = common::format_date_literal(*date);
        fuzz::require(common::format_date_literal(*common::parse_date_literal(written)) == written &&
                          text.substr(0, 2) == written.substr(0, 2) && text.substr(6) == written.substr(6),
                      "a date literal is written as it was parsed");
        fuzz::require(common::DateTime::from_day_number(date->day_number()) == *date,
                      "a date comes back from its day number");
    }
    static fuzz::MemoryEngine engine("select cvdate(?1)");
    const auto number = engine.number_for({text});
    fuzz::require(number.has_value() == date.has_value() && (!number || *number == date->day_number()),
                  "the engine has the same day number");
}

/// Any number that a course holds in place of a date.
void check_number(double number)
{
    const common::DateTime date = common::DateTime::from_day_number(number);
    const std::string written = common::format_date_literal(date);
    const auto read = parse(written);
    fuzz::require(read && *read == date, "a date is parsed as it was written");
    fuzz::require(common::DateTime::from_day_number(date.day_number()) == date,
                  "a date comes back from its day number");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    check_text(fuzz::text_of(data, size));
    double number = 0;
    if (size == sizeof number) {
        std::memcpy(&number, data, sizeof number);
        check_number(number);
        std::int64_t seconds = 0;
        std::memcpy(&seconds, data, sizeof seconds);
        check_number(static_cast<double>(seconds % 400'000'000'000) / common::seconds_per_day);
    }
    return 0;
}
