#include "torture/recording.h"

#include "torture/effort.h"

#include <array>
#include <cstddef>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace cuedrill::torture {

using Kind = DiskEvent::Kind;

/// An entry of a log: kind, place, and the lengths of two paths and of the bytes, then these themselves.
struct Recording::LoggedCall {
    char kind = 0;
    std::int64_t place = 0;
    std::string path{};
    std::string second_path{};
    std::string bytes{};

    /// Takes the next entry from the log. False at its end, also where a kill has cut it off.
    static bool take_from(std::string_view& log, LoggedCall& call);
};

bool Recording::LoggedCall::take_from(std::string_view& log, LoggedCall& call)
{
    const std::size_t end = log.find('\n');
    if (end == std::string_view::npos)
        return false;
    std::istringstream head{std::string(log.substr(0, end))};
    std::array<std::size_t, 3> lengths{};
    head >> call.kind >> call.place >> lengths[0] >> lengths[1] >> lengths[2];
    log.remove_prefix(end + 1);
    if (!head || lengths[0] + lengths[1] + lengths[2] > log.size())
        return false;
    std::size_t part = 0;
    for (std::string* const text : {&call.path, &call.second_path, &call.bytes}) {
        *text = log.substr(0, lengths[part]);
        log.remove_prefix(lengths[part++]);
    }
    return true;
}

Recording::Recording(const std::string& folder) : Recording(folder, read_image(folder))
{
}

Recording::Recording(const std::string& folder, DiskImage start, std::string_view log)
    : Recording(folder, std::move(start))
{
    LoggedCall call;
    while (LoggedCall::take_from(log, call))
        take(call);
}

Recording::Recording(const std::string& folder, DiskImage start)
    : folder_(folder + "/"), start_(std::move(start)), ignores_syncs_(is_broken("ignore_syncs"))
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

void Recording::take(const LoggedCall& call)
{
    const auto file_call = [&](CallKind kind) {
        static_cast<void>(after({.kind = kind,
                                 .path = call.path.c_str(),
                                 .place = call.place,
                                 .bytes = call.bytes.data(),
                                 .count = static_cast<int>(call.bytes.size())}));
    };
    // What is written to a file without a name can never be found.
    if (call.path.ends_with(" (deleted)"))
        return;
    switch (call.kind) {
    case 'a':
        events_.push_back({.kind = Kind::acknowledge, .bytes = call.bytes});
        return;
    case 'o':
        return file_call(CallKind::open);
    case 'w':
        return file_call(CallKind::write);
    case 't':
        return file_call(CallKind::truncate);
    case 's':
        return file_call(CallKind::sync);
    case 'd':
        return folder_synced(call.path + "/");
    case 'm':
        static_cast<void>(file_of(name_in_folder(call.path) + "/"));
        return;
    case 'r':
        return renamed(call.path, call.second_path);
    case 'l':
        return linked(call.path, call.second_path);
    case 'u':
        return unlinked(call.path);
    case 'x':
        return unlinked(call.path + "/");
    default:
        throw std::runtime_error(std::string("an unknown call in the log: ") + call.kind);
    }
}

void Recording::folder_synced(const std::string& path)
{
    if (is_inside(path) && !ignores_syncs_)
        events_.push_back({.kind = Kind::sync_folder, .name = parent_of(name_in_folder(path) + "x")});
}

void Recording::renamed(const std::string& from, const std::string& to)
{
    const int file = file_of(name_in_folder(from));
    files_.erase(name_in_folder(from));
    files_[name_in_folder(to)] = file;
    events_.push_back(
        {.kind = Kind::rename, .file = file, .name = name_in_folder(to), .old_name = name_in_folder(from)});
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
