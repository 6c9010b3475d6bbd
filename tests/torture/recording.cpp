#include "torture/recording.h"

#include "torture/effort.h"

namespace cuedrill::torture {

using Kind = DiskEvent::Kind;

Recording::Recording(const std::string& folder)
    : folder_(folder + "/"), start_(read_image(folder)), ignores_syncs_(is_broken("ignore_syncs"))
{
    for (const auto& [name, bytes] : start_)
        files_[name] = next_file_++;
    files_at_start_ = files_;
}

/// The file of this name; a new one if there was none, as after a creation.
int Recording::file_of(const std::string& name)
{
    const auto [found, is_new] = files_.try_emplace(name, next_file_);
    if (is_new) {
        ++next_file_;
        events_.push_back({.kind = Kind::name, .file = found->second, .name = name});
    }
    return found->second;
}

int Recording::after(const FileCall& call)
{
    const std::string path = call.path;
    if (!is_inside(path))
        return 0;
    if (call.kind == CallKind::remove) {
        removed(path);
        return 0;
    }
    const int file = file_of(name_in_folder(path));
    if (call.kind == CallKind::write)
        events_.push_back({.kind = Kind::write,
                           .file = file,
                           .place = call.place,
                           .bytes = std::string(call.bytes, static_cast<std::size_t>(call.count))});
    if (call.kind == CallKind::truncate)
        events_.push_back({.kind = Kind::truncate, .file = file, .place = call.place});
    if (call.kind == CallKind::sync && !ignores_syncs_)
        events_.push_back({.kind = Kind::sync, .file = file});
    return 0;
}

void Recording::folder_synced(const std::string& path)
{
    if (is_inside(path) && !ignores_syncs_)
        events_.push_back({.kind = Kind::sync_folder});
}

void Recording::linked(const std::string& from, const std::string& to)
{
    if (!is_inside(from) || !is_inside(to))
        return;
    const int file = file_of(name_in_folder(from));
    files_[name_in_folder(to)] = file;
    events_.push_back({.kind = Kind::name, .file = file, .name = name_in_folder(to)});
}

void Recording::unlinked(const std::string& path)
{
    if (is_inside(path))
        removed(path);
}

void Recording::removed(const std::string& path)
{
    const std::string name = name_in_folder(path);
    files_.erase(name);
    events_.push_back({.kind = Kind::remove_name, .name = name});
}

} // namespace cuedrill::torture
