#include "tools/opened_course.h"

#include "app/base/paths.h"
#include "common/errors.h"
#include "keep/copies.h"
#include "keep/history_file.h"
#include "keep/removed_entry.h"
#include "keep/removed_file.h"

#include <charconv>
#include <ostream>
#include <utility>

namespace cuedrill::tools {

OpenedCourse::OpenedCourse(const std::string& path, For purpose, const Surroundings& around,
                           const std::string& lasting_path)
    : around_(around), open_courses_(around.runtime_folder)
{
    course_.db_path = files_.absolute(path);
    course_.course_name = app::name_of(lasting_path.empty() ? course_.db_path : lasting_path);
    if (!files_.exists(course_.db_path))
        throw Refusal("There is no course " + course_.db_path + ".");
    try {
        course_.apri_db();
        params_.read_params();
        course_.record_count = course_.count_records();
    } catch (const common::Error& error) {
        throw Refusal("The course " + course_.db_path + " cannot be opened. " + error.what());
    }
    inverted_ = std::exchange(course_.params.invert, false);
    course_.set_side_fields();
    dead_times_.init_dead_time_array();
    now_ = clock_.now();
    if (purpose == For::writing && open_courses_.enter(course_.db_path))
        throw Refusal("The course " + course_.db_path + " is open in another program. Close it there first.");
    // Of a course that is being made, nothing is learnt yet.
    if (purpose == For::writing && lasting_path.empty())
        write_history();
}

/// Has each stored change of records told in the history of the course, as the window does.
void OpenedCourse::write_history()
{
    if (around_.data_folder.empty())
        return;
    course_.when_stored = [this, path = keep::history_path(folders_, around_.data_folder, course_.db_path)](
                              const store::StoredChange& change) {
        try {
            keep::HistoryFile(files_, path)
                .append_last({.time = clock_.now(),
                              .kind = keep::HistoryKind::imported,
                              .record = change.cnt,
                              .records = change.records,
                              .score = course_.params.score_today});
        } catch (const common::Error& error) {
            around_.err << "The history of the course could not be written. " << error.what() << '\n';
        }
    };
}

void OpenedCourse::copy_first()
{
    keep::Copies copies(files_, folders_, around_.data_folder);
    if (!copies.have_place() || course_.record_count == 0)
        return;
    try {
        if (!copies.newest_holds(course_.db_path, course_.database().mark()))
            copies.begin(course_, now_)->make_at_once();
    } catch (const common::Error& error) {
        around_.err << "No copy of the course could be made. " << error.what() << '\n';
    }
}

void OpenedCourse::keep_replaced(const store::QaTexts& texts)
{
    if (around_.data_folder.empty())
        return;
    try {
        keep::RemovedFile removed(files_, around_.data_folder);
        const std::string unrenamed = removed.append(
            keep::entry_of({.when = now_, .course = course_.db_path, .reason = keep::Reason::replaced, .texts = texts},
                           text_compare_));
        if (!unrenamed.empty())
            around_.err << unrenamed << '\n';
    } catch (const common::Error& error) {
        around_.err << "The old texts could not be kept. " << error.what() << '\n';
    }
}

std::int64_t number_in(const std::string& word, std::string_view what, std::int64_t lowest, std::int64_t highest)
{
    std::int64_t number = 0;
    const char* const end = word.data() + word.size();
    const auto [rest, error] = std::from_chars(word.data(), end, number);
    if (error != std::errc() || rest != end || number < lowest || number > highest)
        throw UsageError(std::string(what) + " is a number from " + std::to_string(lowest) + " to " +
                         std::to_string(highest) + ", not " + word + ".");
    return number;
}

} // namespace cuedrill::tools
