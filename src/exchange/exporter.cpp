#include "exchange/exporter.h"

#include "common/errors.h"
#include "common/text.h"
#include "exchange/question_text_writer.h"
#include "exchange/return_check.h"

#include <memory>

namespace cuedrill::exchange {
namespace {

/// @param unfinished null when nothing could be created.
/// @param replaced the file that was to get other contents; empty where there was none.
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
        .course_title = m_course.params.course_title, .written = m_clock.now(), .numbered = numbered};
    std::unique_ptr<platform::Replacement> file;
    try {
        // First, so that a course that cannot be read leaves no file behind.
        const auto rows = m_course.database().open_recordset("Select * from qa order by cnt");
        file = m_files.begin_replacement(path);
        ReturnCheck check(m_text_compare);
        const std::int64_t count = write_question_text(*file, *rows, form, check);
        file->finish();
        return {.count = count, .changed = check.changed(), .lines = check.lines()};
    } catch (const common::Error& error) {
        throw common::Error(
            failure_text(store::words_about(error, m_course), file.get(), m_files.exists(path) ? path : std::string()));
    }
}

} // namespace cuedrill::exchange
