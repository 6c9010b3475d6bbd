#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace cuedrill::torture {

/// The seed of this run: CUEDRILL_TORTURE_SEED, otherwise 1, so that a run of the test suite is always the same.
[[nodiscard]] std::uint64_t seed();

/// `usual` times CUEDRILL_TORTURE_EFFORT (1 if it is not set), at least 1; a tenth of it with the address sanitizer.
[[nodiscard]] int effort(int usual);

/// Whether CUEDRILL_TORTURE_BREAK asks for this defect: the disk or the program then breaks its word, and a harness
/// that does not notice is worth nothing.
[[nodiscard]] bool is_broken(std::string_view defect);

/// Prints a line that dev/torture.sh adds up: "torture: <harness> seed=1 states=5321 ...".
void report(std::string_view harness, std::initializer_list<std::pair<std::string_view, std::int64_t>> figures);

} // namespace cuedrill::torture
