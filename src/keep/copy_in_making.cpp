#include "keep/copy_in_making.h"

#include "app/base/paths.h"
#include "common/errors.h"
#include "keep/copy_names.h"
#include "keep/copy_note.h"
#include "keep/thinning.h"
#include "platform/database.h"

#include <optional>
#include <vector>

namespace cuedrill::keep {

using platform::CourseCopy;

bool CopyInMaking::step(int pages)
{
    switch (next_) {
    case Next::pages:
        if (copy_->step(pages)) {
            mark_ = copy_->mark();
            next_ = Next::flush;
        }
        return false;
    case Next::flush:
        copy_->flush();
        next_ = Next::check;
        return false;
    case Next::check:
        copy_->finish();
        copy_.reset();
        next_ = Next::tidy;
        return false;
    case Next::tidy:
        break;
    }
    write_note();
    thin_out();
    return true;
}

void CopyInMaking::make_at_once()
{
    if (next_ == Next::pages) {
        static_cast<void>(step(CourseCopy::all_pages));
        if (next_ == Next::pages)
            throw platform::DatabaseError(platform::DatabaseErrorKind::locked, 0, "Another program is using it.");
    }
    while (!step(CourseCopy::all_pages)) {
    }
}

/// Without the note the copy is as good: then it is only not known which state of the course it holds.
void CopyInMaking::write_note() const
{
    try {
        const std::string path = app::join_path(place_.folder, note_name);
        const auto note = files_.begin_replacement(path);
        note->write(note_text({place_.course, copy_name(place_.time), mark_}));
        note->finish();
        folders_.make_private(path);
    } catch (const common::Error&) {
        return;
    }
}

/// What cannot be removed is tried again after the next copy.
void CopyInMaking::thin_out() const
{
    std::vector<common::DateTime> times;
    for (const platform::FolderEntry& entry : folders_.files_in(place_.folder)) {
        if (const std::optional<common::DateTime> time = time_of_copy(entry.name))
            times.push_back(*time);
    }
    for (const common::DateTime time : to_remove(times, place_.time))
        folders_.remove(app::join_path(place_.folder, copy_name(time)));
}

} // namespace cuedrill::keep
