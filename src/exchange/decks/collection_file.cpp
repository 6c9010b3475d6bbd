#include "exchange/decks/collection_file.h"

#include "common/errors.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>

namespace cuedrill::decks {
namespace {

/// A database that is a Zstandard frame, in packages since edition 3.
constexpr std::string_view packed_collection = "collection.anki21b";
/// A database as it is, in packages of the editions 2 and 1.
constexpr std::string_view second_collection = "collection.anki21";
constexpr std::string_view first_collection = "collection.anki2";
/// Says of which edition the package is.
constexpr std::string_view meta = "meta";

constexpr std::uint64_t newest_edition = 3;
constexpr std::uint64_t first_packed_edition = 3;

bool has(const platform::Archive& package, std::string_view name)
{
    const auto& entries = package.entries();
    return std::any_of(entries.begin(), entries.end(),
                       [name](const platform::ArchiveEntry& entry) { return entry.name == name; });
}

/// A number in the variable-length form of protocol buffers: seven bits in each byte, the lowest first, and a bit that
/// says whether another byte follows. Taken from the front of `bytes`; std::nullopt if it does not end.
std::optional<std::uint64_t> take_number(std::string_view& bytes)
{
    constexpr unsigned bits = 7;
    constexpr unsigned most_bits = 63;
    std::uint64_t number = 0;
    for (unsigned shift = 0; shift <= most_bits && !bytes.empty(); shift += bits) {
        const auto byte = static_cast<unsigned char>(bytes.front());
        bytes.remove_prefix(1);
        number |= static_cast<std::uint64_t>(byte & 0x7FU) << shift;
        if ((byte & 0x80U) == 0)
            return number;
    }
    return std::nullopt;
}

/// The edition of a package: the first field of the message in the entry "meta"; std::nullopt without that entry.
std::optional<std::uint64_t> edition_of(platform::Archive& package)
{
    constexpr std::size_t longest = 1024;
    constexpr std::uint64_t field_1_as_number = 1U << 3U;
    if (!has(package, meta))
        return std::nullopt;
    const std::string bytes = package.read(meta, longest);
    std::string_view rest = bytes;
    const std::optional<std::uint64_t> key = take_number(rest);
    const std::optional<std::uint64_t> edition = take_number(rest);
    if (key != field_1_as_number || !edition)
        throw common::Error("The package is damaged: it does not say of which edition it is.");
    return edition;
}

} // namespace

std::string collection_of(platform::Archive& package, const platform::Archives& archives, std::size_t longest)
{
    const std::optional<std::uint64_t> edition = edition_of(package);
    if (edition && *edition > newest_edition)
        throw common::Error("The package is of edition " + std::to_string(*edition) + ". Only packages up to edition " +
                            std::to_string(newest_edition) + " can be read.");
    if (has(package, packed_collection))
        return archives.unpack_zstandard(package.read(packed_collection, longest), longest);
    // Then the other collections only ask to update the program.
    const bool needs_packed = edition && *edition >= first_packed_edition;
    for (const std::string_view name : {second_collection, first_collection}) {
        if (!needs_packed && has(package, name))
            return package.read(name, longest);
    }
    throw common::Error("The file is not a flashcard package: it has no collection.");
}

} // namespace cuedrill::decks
