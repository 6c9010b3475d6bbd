#pragma once

#include "torture/session.h"

#include <cstdint>
#include <random>

namespace cuedrill::torture {

/// An endless list of steps as a user might take them; the same for the same seed.
class Script {
public:
    explicit Script(std::uint64_t seed) : random_(seed) {}

    /// Mostly verdicts and new records, now and then each of the others.
    [[nodiscard]] Step next();

private:
    std::mt19937_64 random_;
};

} // namespace cuedrill::torture
