#include "keep/copies.h"

#include "app/base/paths.h"
#include "common/errors.h"
#include "keep/copy_names.h"
#include "keep/copy_note.h"
#include "store/schema.h"

#include <algorithm>
#include <utility>

namespace cuedrill::keep {
namespace {

/// Of a note, in bytes; a path has 4096 at most.
constexpr std::uint64_t longest_note = 10'000;

std::string read_all(const platform::Files& files, const std::string& path)
{
    const auto reading = files.begin_reading(path, longest_note);
    std::string text;
    for (std::string piece = reading->read(longest_note); !piece.empty(); piece = reading->read(longest_note))
        text += piece;
    return text;
}

} // namespace

Copies::Copies(platform::Files& files, platform::Folders& folders, const std::string& data_folder)
    : files_(files), folders_(folders), root_(data_folder.empty() ? "" : app::join_path(data_folder, "copies"))
{
}

std::string Copies::folder_of(const std::string& course_path) const
{
    return app::join_path(root_, folder_name(folders_.canonical(course_path)));
}

std::vector<Copy> Copies::of(const std::string& course_path) const
{
    std::vector<Copy> found;
    if (!have_place() || course_path.empty())
        return found;
    const std::string folder = folder_of(course_path);
    for (const platform::FolderEntry& entry : folders_.files_in(folder)) {
        if (const std::optional<common::DateTime> time = time_of_copy(entry.name))
            found.push_back({*time, app::join_path(folder, entry.name), entry.bytes});
    }
    std::sort(found.begin(), found.end(), [](const Copy& a, const Copy& b) { return a.time < b.time; });
    return found;
}

std::optional<Copy> Copies::newest(const std::string& course_path) const
{
    const std::vector<Copy> all = of(course_path);
    return all.empty() ? std::nullopt : std::optional(all.back());
}

bool Copies::newest_holds(const std::string& course_path, const std::string& mark) const
{
    const std::optional<Copy> copy = newest(course_path);
    if (!copy)
        return false;
    try {
        return note_tells(read_all(files_, app::join_path(folder_of(course_path), note_name)), copy_name(copy->time),
                          mark);
    } catch (const common::Error&) {
        return false;
    }
}

std::unique_ptr<CopyInMaking> Copies::begin(store::Course& course, common::DateTime now)
{
    CopyPlace place{folders_.canonical(course.db_path), folder_of(course.db_path), now};
    files_.create_folder(place.folder);
    const std::uint64_t size = folders_.size_of(place.course).value_or(0);
    const std::optional<std::uint64_t> room = folders_.room_in(place.folder);
    if (room && *room / 2 < size)
        throw platform::DatabaseError(platform::DatabaseErrorKind::full, 0,
                                      "There is no room for two copies on the disk.");
    const auto is_taken = [this, &place] { return files_.exists(app::join_path(place.folder, copy_name(place.time))); };
    while (is_taken())
        place.time = common::DateTime::from_seconds(place.time.seconds() + 1);
    auto copy =
        course.database().begin_copy(app::join_path(place.folder, copy_name(place.time)), store::course_tables());
    return std::make_unique<CopyInMaking>(files_, folders_, std::move(place), std::move(copy));
}

} // namespace cuedrill::keep
