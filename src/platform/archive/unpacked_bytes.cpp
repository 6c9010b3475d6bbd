#include "platform/archive/unpacked_bytes.h"

#include "common/errors.h"

#include <algorithm>

namespace cuedrill::platform::archive {

std::string about_entry(std::string_view name, std::string_view what)
{
    return "The file \"" + std::string(name) + "\" in the package " + std::string(what) + ".";
}

UnpackedBytes::UnpackedBytes(std::string_view name, std::uint64_t packed, std::size_t longest)
    : name_(name), packed_(packed), longest_(longest)
{
}

void UnpackedBytes::require_allowed(std::uint64_t size) const
{
    if (size > longest_)
        throw common::Error(about_entry(name_, "has more than " + std::to_string(longest_) + " bytes"));
    if (size > std::max(always_allowed, packed_ * most_per_packed_byte))
        throw common::Error(about_entry(name_, "is packed so tightly that it is not an honest file"));
}

void UnpackedBytes::expect(std::uint64_t size)
{
    require_allowed(size);
    bytes_.reserve(static_cast<std::size_t>(size));
}

void UnpackedBytes::add(std::string_view bytes)
{
    require_allowed(bytes_.size() + bytes.size());
    bytes_ += bytes;
}

} // namespace cuedrill::platform::archive
