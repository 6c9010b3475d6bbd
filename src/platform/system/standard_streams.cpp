#include "platform/system/standard_streams.h"

#include <fcntl.h>
#include <initializer_list>
#include <unistd.h>

namespace cuedrill::platform::system {

void occupy_standard_streams() noexcept
{
    // A new descriptor is the lowest free one, so each closed stream is filled before the next one is looked at.
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) == -1 &&
            ::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY) != stream)
            return;
    }
}

} // namespace cuedrill::platform::system
