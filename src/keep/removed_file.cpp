#include "keep/removed_file.h"

#include "app/base/paths.h"
#include "common/errors.h"
#include "exchange/text_decoding.h"
#include "keep/removed_entry.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <utility>

namespace cuedrill::keep {
namespace {

/// An append takes some hundredths of a second.
constexpr std::chrono::milliseconds longest_wait{1000};

constexpr const char* lock_name = "removed.lock";

} // namespace

RemovedFile::RemovedFile(platform::Files& files, std::string folder)
    : files_(files), folder_(std::move(folder)), path_(app::join_path(folder_, removed_file_name))
{
}

std::string RemovedFile::append(std::string_view entry)
{
    files_.create_folder(folder_);
    // Between two programs, one would see the other's half of an entry or of a renaming.
    const auto hold = files_.hold(app::join_path(folder_, lock_name), longest_wait);
    if (!hold)
        throw common::Error("Cannot write " + path_ + ": another program is writing it.");
    std::string unrenamed;
    bool begins = false;
    try {
        begins = make_room();
    } catch (const common::Error& error) {
        unrenamed = error.what();
    }
    files_.append_durably(path_, begins ? std::string(exchange::utf8_mark).append(entry) : std::string(entry));
    return unrenamed;
}

/// Renames the file if nothing should be appended to it.
/// @return whether the next entry is the first one of the file.
bool RemovedFile::make_room()
{
    if (!files_.exists(path_))
        return true;
    const auto file = files_.begin_reading(path_, std::numeric_limits<std::uint64_t>::max());
    const std::uint64_t size = file->size();
    if (size == 0)
        return true;
    const bool begins_well = file->read(exchange::utf8_mark.size()) == exchange::utf8_mark;
    file->go_to(size - std::min<std::uint64_t>(size, entry_end.size()));
    const bool ends_well = file->read(entry_end.size()) == entry_end;
    if (size < full_removed_file && begins_well && ends_well)
        return false;
    rename_files();
    return true;
}

/// No step replaces a file. If the program ends between two of them, a number is free, and the next renaming uses it.
void RemovedFile::rename_files()
{
    int free = 1;
    while (files_.exists(numbered(free)))
        ++free;
    for (; free > 1; --free)
        files_.rename_to_free_name(numbered(free - 1), numbered(free));
    files_.rename_to_free_name(path_, numbered(1));
}

std::string RemovedFile::numbered(int number) const
{
    return app::join_path(folder_, "removed." + std::to_string(number) + ".txt");
}

} // namespace cuedrill::keep
