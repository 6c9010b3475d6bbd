#pragma once

#include "torture/disk_image.h"
#include "torture/recording.h"

#include <cstddef>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace cuedrill::torture {

/// What a disk may do with what was written and not synced when the power goes.
enum class Fate {
    lost,   ///< all of it is lost
    kept,   ///< all of it is kept
    prefix, ///< what came first is kept
    subset, ///< any part is kept, whole writes
    torn,   ///< any part is kept, writes torn between sectors
    garbage ///< as torn, and where a lost write made the file longer there are random bytes
};

inline constexpr int number_of_fates = 6;

/// A disk as the program's calls leave it, event by event: what is surely on it, and what was asked for since the last
/// sync. Syncing a file makes its bytes durable, syncing the folder its names.
class DiskModel {
public:
    explicit DiskModel(const Recording& recording);

    void take(const DiskEvent& event);

    /// What may be found after a power cut now.
    /// @param bytes the fate of bytes, of each file by itself. @param names the fate of names.
    [[nodiscard]] DiskImage cut(Fate bytes, Fate names, std::mt19937_64& random) const;

private:
    struct File {
        std::string durable{};
        std::vector<DiskEvent> pending{};
    };

    [[nodiscard]] static std::string contents(const File& file, Fate fate, std::mt19937_64& random);
    [[nodiscard]] std::map<std::string, int> names_after(Fate fate, std::mt19937_64& random) const;

    std::map<int, File> files_;
    std::map<std::string, int> durable_names_;
    std::vector<DiskEvent> pending_names_;
};

} // namespace cuedrill::torture
