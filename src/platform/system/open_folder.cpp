#include "platform/system/open_folder.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace cuedrill::platform::system {

OpenFolder::OpenFolder(const std::string& path) : handle_(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
}

OpenFolder::~OpenFolder()
{
    if (handle_ >= 0)
        ::close(handle_);
}

void OpenFolder::sync() const
{
    int result = 0;
    do {
        result = handle_ < 0 ? 0 : ::fsync(handle_);
    } while (result != 0 && errno == EINTR);
}

} // namespace cuedrill::platform::system
