#pragma once

#include "platform/files.h"
#include "platform/system/file_lock.h"
#include "platform/system/regular_file.h"

#include <string>
#include <string_view>

namespace cuedrill::platform::system {

/// New contents for a file of the machine. The new file has its name with ".cuedrill-part" behind it, or
/// ".cuedrill-part2" and so on where that is taken. Without `finish` it stays, with all that was written as far as the
/// disk takes it, until the next replacement in that folder begins: this removes all such files that nobody is writing.
/// A lock on the file tells them apart.
class SystemReplacement : public Replacement {
public:
    /// @throws common::Error with the path and the reason when no file can be created beside it, when something else
    /// than a regular file has the name, or when that file may not be written.
    explicit SystemReplacement(const std::string& path);
    ~SystemReplacement() override;

    [[nodiscard]] const std::string& path() const override { return file_.path(); }
    /// After an error this throws the same again, until `restart`.
    void write(std::string_view bytes) override;
    void restart() override;
    /// Throws an error of `write` again. One in bringing the changed name to the disk is told too; only then the file
    /// has its new contents, but may have the old ones after a crash of the machine.
    void finish() override;

private:
    struct Target;

    explicit SystemReplacement(const Target& target);

    void require_no_failure() const;
    void flush();

    std::string folder_;
    std::string target_;
    RegularFile file_;
    FileLock lock_;
    std::string buffer_;  ///< not written yet
    std::string failure_; ///< words of the error that left a hole in the contents; empty for none
};

} // namespace cuedrill::platform::system
