#include "platform/icu/icu_text.h"

#include "common/errors.h"

#include <cstddef>
#include <cstdint>
#include <unicode/ustring.h>

namespace cuedrill::platform::icu {

void check(UErrorCode code, const char* doing)
{
    if (U_FAILURE(code))
        throw common::Error(std::string("The text library failed to ") + doing + ": " + u_errorName(code) + ".");
}

std::string to_utf8(std::u16string_view text)
{
    std::string result(text.size() * 3, '\0');
    std::int32_t used = 0;
    UErrorCode code = U_ZERO_ERROR;
    u_strToUTF8(result.data(), static_cast<std::int32_t>(result.size()), &used, text.data(),
                static_cast<std::int32_t>(text.size()), &code);
    check(code, "write a text");
    result.resize(static_cast<std::size_t>(used));
    return result;
}

} // namespace cuedrill::platform::icu
