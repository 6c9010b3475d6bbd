#pragma once

#include "platform/files.h"
#include "platform/system/file_lock.h"
#include "platform/system/regular_file.h"

#include <string>
#include <string_view>

namespace cuedrill::platform::system {

/// New contents for a file of the machine. The part file is named like the target with ".cuedrill-part" appended, or
/// ".cuedrill-part2" and so on if that name is taken. Without `finish` it stays, with everything written that the disk
/// had room for, until the next replacement in that folder begins: that one removes all part files that nobody is
/// writing. A lock on the part file tells whether somebody is.
class SystemReplacement : public Replacement {
public:
    /// @throws common::Error with the path and the reason when no file can be created next to the target, when the name
    /// belongs to something other than a regular file, or when that file may not be written.
    explicit SystemReplacement(const std::string& path);
    ~SystemReplacement() override;

    [[nodiscard]] const std::string& path() const override { return file_.path(); }
    /// After an error it throws the same error again, until `restart`.
    void write(std::string_view bytes) override;
    void restart() override;
    /// Throws an error of `write` again. A failing fsync of the folder is not reported: the file has its new contents
    /// then, but may have the old ones again after a crash of the machine.
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
    std::string failure_; ///< text of the error that left a gap in the contents; empty if none
};

} // namespace cuedrill::platform::system
