#pragma once

namespace cuedrill::platform {

/// A source of uniformly distributed random numbers.
class RandomSource {
public:
    virtual ~RandomSource() = default;

    /// The next number, 0 <= x < 1.
    virtual double uniform() = 0;
};

} // namespace cuedrill::platform
