#include "torture/disk_model.h"

#include <algorithm>
#include <utility>

namespace cuedrill::torture {
namespace {

using Kind = DiskEvent::Kind;

constexpr std::size_t sector = 512; // bytes that a disk writes at once

/// Whether each of `count` pending changes is kept.
std::vector<bool> kept_ones(std::size_t count, Fate fate, std::mt19937_64& random)
{
    std::vector<bool> kept(count, fate == Fate::kept);
    if (fate == Fate::lost || fate == Fate::kept)
        return kept;
    const std::size_t first_lost = count == 0 ? 0 : random() % (count + 1);
    const std::uint64_t one_in = 2 + random() % 6;
    const bool mostly_kept = random() % 2 == 0;
    for (std::size_t i = 0; i < count; ++i)
        kept[i] = fate == Fate::prefix ? i < first_lost : (random() % one_in == 0) != mostly_kept;
    return kept;
}

void put(std::string& contents, std::size_t place, std::string_view bytes)
{
    if (contents.size() < place + bytes.size())
        contents.resize(place + bytes.size());
    contents.replace(place, bytes.size(), bytes);
}

void write(std::string& contents, const DiskEvent& event)
{
    put(contents, static_cast<std::size_t>(event.place), event.bytes);
}

/// Keeps some of the sectors of a write.
void write_torn(std::string& contents, const DiskEvent& event, std::mt19937_64& random)
{
    const auto start = static_cast<std::size_t>(event.place);
    for (std::size_t at = 0; at < event.bytes.size();) {
        const std::size_t end = std::min(event.bytes.size(), ((start + at) / sector + 1) * sector - start);
        if (random() % 2 == 0)
            put(contents, start + at, std::string_view(event.bytes).substr(at, end - at));
        at = end;
    }
}

void change(std::map<std::string, int>& names, const DiskEvent& event)
{
    if (event.kind != Kind::name)
        names.erase(event.kind == Kind::rename ? event.old_name : event.name);
    if (event.kind != Kind::remove_name)
        names[event.name] = event.file;
}

/// The file has grown, but the bytes of the write have not reached the disk.
void write_garbage(std::string& contents, const DiskEvent& event, std::mt19937_64& random)
{
    const std::size_t old_size = contents.size();
    const std::size_t end = static_cast<std::size_t>(event.place) + event.bytes.size();
    for (std::size_t at = old_size; at < end; ++at)
        contents.push_back(static_cast<char>(random()));
}

} // namespace

DiskModel::DiskModel(const Recording& recording)
{
    for (const auto& [name, bytes] : recording.start()) {
        durable_names_[name] = recording.file_at_start(name);
        files_[recording.file_at_start(name)].durable = bytes;
    }
}

void DiskModel::take(const DiskEvent& event)
{
    switch (event.kind) {
    case Kind::name:
    case Kind::rename:
    case Kind::remove_name:
        pending_names_.push_back(event);
        return;
    case Kind::write:
    case Kind::truncate:
        files_[event.file].pending.push_back(event);
        return;
    case Kind::sync: {
        File& file = files_[event.file];
        std::mt19937_64 unused;
        file.durable = contents(file, Fate::kept, unused);
        file.pending.clear();
        return;
    }
    case Kind::sync_folder: {
        // A renaming does not leave its folder here.
        for (const DiskEvent& pending : std::exchange(pending_names_, {})) {
            if (parent_of(pending.name) == event.name)
                change(durable_names_, pending);
            else
                pending_names_.push_back(pending);
        }
        return;
    }
    case Kind::acknowledge:
        return;
    }
}

std::string DiskModel::contents(const File& file, Fate fate, std::mt19937_64& random)
{
    std::string contents = file.durable;
    const std::vector<bool> kept = kept_ones(file.pending.size(), fate, random);
    const bool is_torn = fate == Fate::torn || fate == Fate::garbage;
    for (std::size_t i = 0; i < kept.size(); ++i) {
        const DiskEvent& event = file.pending[i];
        if (event.kind == Kind::truncate) {
            if (kept[i])
                contents.resize(static_cast<std::size_t>(event.place));
        } else if (kept[i]) {
            write(contents, event);
        } else if (is_torn && random() % 2 == 0) {
            write_torn(contents, event, random);
        } else if (fate == Fate::garbage) {
            write_garbage(contents, event, random);
        }
    }
    return contents;
}

std::map<std::string, int> DiskModel::names_after(Fate fate, std::mt19937_64& random) const
{
    std::map<std::string, int> names = durable_names_;
    const std::vector<bool> kept = kept_ones(pending_names_.size(), fate, random);
    for (std::size_t i = 0; i < kept.size(); ++i) {
        if (kept[i])
            change(names, pending_names_[i]);
    }
    return names;
}

DiskImage DiskModel::cut(Fate bytes, Fate names, std::mt19937_64& random) const
{
    std::map<int, std::string> contents_now; // one for all names of a file
    DiskImage image;
    for (const auto& [name, number] : names_after(names, random)) {
        // A folder comes before what is in it, and is lost with it.
        const std::string parent = parent_of(name);
        const auto file = files_.find(number);
        if (!parent.empty() && !image.contains(parent))
            continue;
        if (file != files_.end() && !contents_now.contains(number))
            contents_now[number] = contents(file->second, bytes, random);
        image[name] = contents_now[number];
    }
    return image;
}

} // namespace cuedrill::torture
