#include "exchange/exporter.h"

#include "common/errors.h"
#include "common/text.h"
#include "exchange/question_text_writer.h"
#include "exchange/return_check.h"

#include <memory>

namespace cuedrill::exchange {
namespace {

/// @param unfinished null if nothing could be created.
/// @param replaced the file that was to be replaced; empty if there was none.
std::string failure_text(const std::string& reason, const platform::Replacement* unfinished,
                         const std::string& replaced)
{
    std::string text = reason;
    if (unfinished != nullptr || !replaced.empty())
        text.append(common::cr_lf);
    if (unfinished != nullptr)
        text.append(common::cr_lf)
            .append("What was written is kept in " + unfinished->path() + " until the next export into that folder.");
    if (!replaced.empty())
        text.append(common::cr_lf).append(replaced + " is as it was.");
    return text;
}

} // namespace

Exported Exporter::export_file(const std::string& path, bool numbered)
{
    const QuestionTextForm form{
        .course_title = course_.params.course_title, .written = clock_.now(), .numbered = numbered};
    std::unique_ptr<platform::Replacement> file;
    try {
        // Opened first, so that a course that cannot be read leaves no file behind.
        const auto rows = course_.database().open_recordset("Select * from qa order by cnt");
        file = files_.begin_replacement(path);
        ReturnCheck check(text_compare_);
        const std::int64_t count = write_question_text(*file, *rows, form, check);
        file->finish();
        return {.count = count, .changed = check.changed(), .lines = check.lines()};
    } catch (const common::Error& error) {
        throw common::Error(
            failure_text(store::words_about(error, course_), file.get(), files_.exists(path) ? path : std::string()));
    }
}

} // namespace cuedrill::exchange
