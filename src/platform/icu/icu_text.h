#pragma once

#include <string>
#include <string_view>
#include <unicode/utypes.h>

namespace cuedrill::platform::icu {

/// @throws common::Error when `code` tells a failure.
/// @param doing what failed, as in "failed to compare two texts".
void check(UErrorCode code, const char* doing);

/// @throws common::Error when ICU fails.
std::string to_utf8(std::u16string_view text);

} // namespace cuedrill::platform::icu
