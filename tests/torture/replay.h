#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

namespace cuedrill::torture {

/// A number for a dump, short enough for an acknowledgement.
[[nodiscard]] std::uint64_t hash_of_dump(const std::string& dump);

/// "ack <number of steps done> <hash of the dump>".
struct Acknowledgement {
    std::int64_t steps = 0;
    std::uint64_t hash = 0;
};

[[nodiscard]] std::string line_of(const Acknowledgement& acknowledgement);

/// The last whole acknowledgement in the output of a driver; std::nullopt if there is none.
[[nodiscard]] std::optional<Acknowledgement> last_acknowledgement(const std::string& output);

/// Performs the first `steps` steps of the script of `script_seed` on the course at `path`, as the driver does.
/// @return the hash of the dump afterwards.
[[nodiscard]] std::uint64_t replay(const std::string& path, std::uint64_t script_seed, std::int64_t steps);

} // namespace cuedrill::torture
