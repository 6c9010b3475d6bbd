#pragma once

#include "common/errors.h"
#include "fakes/file_size_limit.h"
#include "fakes/temp_folder.h"
#include "platform/system/system_files.h"

#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace cuedrill::platform::system {

/// Real files in a temporary folder of the test.
class FilesTest : public testing::Test {
protected:
    /// A named pipe; opening it carelessly blocks.
    [[nodiscard]] std::string make_pipe() const
    {
        const std::string path = folder.file("pipe");
        EXPECT_EQ(::mkfifo(path.c_str(), 0600), 0);
        return path;
    }

    [[nodiscard]] std::string make_link(const std::string& target, const std::string& name) const
    {
        std::filesystem::create_symlink(target, folder.file(name));
        return folder.file(name);
    }

    /// The text of the error that `operation` throws.
    static std::string words(const std::function<void()>& operation)
    {
        try {
            operation();
        } catch (const common::Error& error) {
            return error.what();
        }
        return "no error";
    }

    fakes::TempFolder folder;
    SystemFiles files;
};

using fakes::FileSizeLimit;

/// Restores the working folder on destruction.
class KeptWorkingFolder {
public:
    KeptWorkingFolder() = default;
    KeptWorkingFolder(const KeptWorkingFolder&) = delete;
    KeptWorkingFolder& operator=(const KeptWorkingFolder&) = delete;
    ~KeptWorkingFolder()
    {
        std::error_code ignored;
        std::filesystem::current_path(before_, ignored);
    }

    [[nodiscard]] const std::filesystem::path& path() const { return before_; }

private:
    std::filesystem::path before_ = std::filesystem::current_path();
};

/// Gives up the superuser's rights, which override all permissions, while an object of this class lives.
class AsNobody {
public:
    AsNobody()
    {
        constexpr uid_t nobody = 65534;
        if (superuser_) {
            EXPECT_EQ(::seteuid(nobody), 0);
        }
    }
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;
    ~AsNobody()
    {
        if (superuser_) {
            EXPECT_EQ(::seteuid(0), 0);
        }
    }

private:
    bool superuser_ = ::geteuid() == 0;
};

} // namespace cuedrill::platform::system
