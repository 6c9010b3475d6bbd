#pragma once

#include "keep/removed_file.h"
#include "platform/files.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::keep {

/// What `DraftFile::move_left_drafts` has done.
struct LeftDrafts {
    int kept = 0;                        ///< how many drafts are in "removed.txt" now
    std::vector<std::string> failures{}; ///< why others stay where they are, or what else failed
};

/// The draft of this process in the user's data folder: what stands in the editor and is not saved, as an entry of
/// "removed.txt". It is "draft-1.txt", or has the next number that no other program uses. A lock on "draft-1.lock"
/// tells other programs that its process still runs; the system releases it when the process ends, in whatever way.
class DraftFile {
public:
    DraftFile(platform::Files& files, std::string folder) : files_(files), folder_(std::move(folder)) {}

    /// Replaces the draft by this entry, in one step, and waits until it is on the disk. Creates the folder if it is
    /// missing.
    /// @throws common::Error with the path and the reason; an earlier draft is unchanged then.
    void write(std::string_view entry);

    /// Removes the draft, if there is one.
    /// @throws common::Error with the path and the reason.
    void remove();

    /// Leaves the draft, if there is one, for the next start of the program. The next `write` makes another one.
    void leave();

    /// Moves the drafts of processes that no longer run into "removed.txt". Throws no common::Error.
    LeftDrafts move_left_drafts(RemovedFile& removed);

private:
    struct Draft {
        std::string path;
        std::string lock_path;
        std::unique_ptr<platform::FileHold> hold;
    };

    [[nodiscard]] Draft new_draft();
    [[nodiscard]] bool move_left_draft(const std::string& name, RemovedFile& removed,
                                       std::vector<std::string>& failures);

    platform::Files& files_;
    std::string folder_;
    std::unique_ptr<Draft> draft_;
    std::vector<std::unique_ptr<Draft>> left_; ///< they stay locked as long as this process runs
};

} // namespace cuedrill::keep
