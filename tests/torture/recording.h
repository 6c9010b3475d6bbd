#pragma once

#include "torture/disk_image.h"
#include "torture/disk_watcher.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::torture {

/// What happened to the files of a folder. A file keeps its number whatever its names.
struct DiskEvent {
    enum class Kind {
        name,        ///< `name` now leads to the file, which may be new, or is a new folder
        rename,      ///< the same, and at once `old_name` leads nowhere
        remove_name, ///< `name` leads nowhere
        write,
        truncate,
        sync,        ///< of the file
        sync_folder, ///< of `name`, as in parent_of
        acknowledge  ///< the program has said that the step before is stored
    };

    Kind kind = Kind::write;
    int file = 0;
    std::string name{}; ///< path as in a disk image
    std::string old_name{};
    std::int64_t place = 0; ///< of a write, bytes; the new size of a truncate
    std::string bytes{};    ///< of a write; what the program has said
};

/// What the engine and the program do to the files of a folder: recorded in this process, or read from the log of
/// another one.
class Recording final : public DiskWatcher {
public:
    /// Begins with the files that are in the folder; they count as synced.
    explicit Recording(const std::string& folder);

    /// Reads what another process has done.
    /// @param start what was in the folder before. @param log as preload/file_calls.cpp writes it.
    Recording(const std::string& folder, DiskImage start, std::string_view log);

    int after(const FileCall& call) override;
    void folder_synced(const std::string& path) override;
    void linked(const std::string& from, const std::string& to) override;
    void unlinked(const std::string& path) override;

    /// To be called when an operation has returned.
    void acknowledge() { events_.push_back({.kind = DiskEvent::Kind::acknowledge}); }

    [[nodiscard]] const DiskImage& start() const { return start_; }
    /// Number of the file that had this name at the start.
    [[nodiscard]] int file_at_start(const std::string& name) const { return files_at_start_.at(name); }
    [[nodiscard]] const std::vector<DiskEvent>& events() const { return events_; }

private:
    [[nodiscard]] bool is_inside(const std::string& path) const { return path.starts_with(folder_); }
    [[nodiscard]] std::string name_in_folder(const std::string& path) const { return path.substr(folder_.size()); }
    struct LoggedCall;

    Recording(const std::string& folder, DiskImage start);

    void take(const LoggedCall& call);
    [[nodiscard]] int file_of(const std::string& name);
    void renamed(const std::string& from, const std::string& to);
    void removed(const std::string& path);

    std::string folder_; ///< with a "/" at its end
    DiskImage start_;
    std::map<std::string, int> files_at_start_;
    std::map<std::string, int> files_; ///< by their names now
    int next_file_ = 0;
    std::vector<DiskEvent> events_;
    bool ignores_syncs_;
};

} // namespace cuedrill::torture
