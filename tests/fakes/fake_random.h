#pragma once

#include "platform/random_source.h"

#include <deque>

namespace cuedrill::fakes {

/// Returns the queued numbers, then always the constant.
class FakeRandom : public platform::RandomSource {
public:
    std::deque<double> queue;
    double constant = 0;
    int calls = 0;

    double uniform() override;
};

} // namespace cuedrill::fakes
