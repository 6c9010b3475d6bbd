#include "fakes/fake_random.h"

namespace cuedrill::fakes {

double FakeRandom::uniform()
{
    ++calls;
    if (queue.empty())
        return constant;
    const double number = queue.front();
    queue.pop_front();
    return number;
}

} // namespace cuedrill::fakes
