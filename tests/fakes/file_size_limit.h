#pragma once

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace cuedrill::fakes {

/// Limits the size of every file that this process writes, like a full disk, while an object of this class exists.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN))
    {
        EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &before_), 0);
        const rlimit limit{bytes, before_.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    rlimit before_{};
    void (*handler_)(int);
};

} // namespace cuedrill::fakes
