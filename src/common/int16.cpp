#include "common/int16.h"

#include "common/errors.h"
#include "common/number_format.h"

#include <cmath>
#include <limits>
#include <string>

namespace cuedrill::common {
namespace {

constexpr Int16 lowest = std::numeric_limits<Int16>::min();

[[noreturn]] void overflow(std::string_view what, const std::string& value)
{
    throw OverflowError("Overflow: the " + std::string(what) + " " + value + " is outside -32768 to 32767.");
}

} // namespace

Int16 to_int16(std::int64_t value, std::string_view what)
{
    if (value < lowest || value > max_int16)
        overflow(what, std::to_string(value));
    return static_cast<Int16>(value);
}

Int16 to_int16(double value, std::string_view what)
{
    // Written so that a NaN is rejected, too.
    const double rounded = std::nearbyint(value);
    if (!(rounded >= lowest && rounded <= max_int16))
        overflow(what, format_general(value));
    return static_cast<Int16>(rounded);
}

} // namespace cuedrill::common
