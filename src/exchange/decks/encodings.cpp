#include "exchange/decks/encodings.h"

#include "common/errors.h"
#include "common/text.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace cuedrill::decks {
namespace {

/// In the order of the enumeration.
constexpr std::array<std::string_view, 13> names{
    "UTF-8",      "UTF-16",     "UTF-16LE",    "UTF-16BE",  "Windows-1252", "Windows-1250", "Windows-1251",
    "ISO-8859-1", "ISO-8859-2", "ISO-8859-15", "Shift_JIS", "GB18030",      "KOI8-R"};

} // namespace

std::string name_of(Encoding encoding)
{
    return std::string(names.at(static_cast<std::size_t>(encoding)));
}

Encoding encoding_named(std::string_view name)
{
    const auto* const found =
        std::find_if(names.begin(), names.end(), [&](std::string_view one) { return common::equal_ascii(one, name); });
    if (found != names.end())
        return static_cast<Encoding>(found - names.begin());
    std::string all;
    for (const std::string_view one : names)
        all.append(all.empty() ? "" : ", ").append(one);
    throw common::Error("The encoding \"" + std::string(name) + "\" is not known. Known are " + all + ".");
}

} // namespace cuedrill::decks
