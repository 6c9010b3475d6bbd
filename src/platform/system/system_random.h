#pragma once

#include "platform/random_source.h"

#include <random>

namespace cuedrill::platform::system {

/// Random numbers with a different seed at every start.
class SystemRandom : public RandomSource {
public:
    SystemRandom();

    double uniform() override;

private:
    std::mt19937_64 engine_;
};

} // namespace cuedrill::platform::system
