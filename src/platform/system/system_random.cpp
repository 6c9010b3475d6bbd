#include "platform/system/system_random.h"

namespace cuedrill::platform::system {

SystemRandom::SystemRandom()
{
    std::random_device device;
    std::seed_seq seed{device(), device(), device(), device(), device(), device(), device(), device()};
    engine_.seed(seed);
}

double SystemRandom::uniform()
{
    // The standard's distribution may round up to 1.0. The upper 53 bits are exact in a double, so this stays below 1.
    return static_cast<double>(engine_() >> 11U) * 0x1.0p-53;
}

} // namespace cuedrill::platform::system
