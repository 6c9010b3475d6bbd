#include "exchange/question_export.h"

#include "common/errors.h"
#include "common/text.h"
#include "exchange/question_text_writer.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>
#include <utility>

namespace cuedrill::exchange {
namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;

/// What the engine puts behind a course's name to name its own files.
constexpr std::array<std::string_view, 3> engine_endings{"-journal", "-wal", "-shm"};

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

QuestionExport::QuestionExport(store::Course& course, Services services)
    : m_course(course), m_services(std::move(services))
{
}

void QuestionExport::Export_QA()
{
    const std::string path = m_services.desktop
                                 .save_file_dialog({.title = "Exporting questions and answers to text file",
                                                    .initial_file = "QA export.txt",
                                                    .default_extension = "txt",
                                                    .filter = "Text file (*.txt)|*.txt|All files (*.*)|*.*"})
                                 .path;
    if (path.empty() || !may_export(path))
        return;
    const bool numbered = ask("Do you want to include questions numbers in the exported file?");
    const auto exported = try_export(path, numbered);
    if (!exported)
        return;
    if (ask(std::to_string(exported->count) +
            " questions and answers exported. Do you want to open the exported file?"))
        m_services.open_document(path);
    tell_changed(*exported);
}

void QuestionExport::tell_changed(const Exported& exported)
{
    if (exported.changed == 0)
        return;
    m_services.desktop.message_box(
        {.text = "Records that an import of this file would change or leave out: " + std::to_string(exported.changed),
         .icon = BoxIcon::exclamation,
         .details = exported.lines});
}

bool QuestionExport::may_export(const std::string& path)
{
    const platform::Files& files = m_services.files;
    if (files.is_same_file(path, m_course.db_path))
        tell("The file " + path + " is the open course itself. Choose another name.");
    else if (is_name_of_the_engine(path))
        tell("The name " + path + " is kept for the open course. Choose another name.");
    else if (files.exists(path) && !files.is_regular_file(path))
        tell("The file " + path + " is not an ordinary file. Choose another name.");
    else
        return true;
    return false;
}

/// The engine's files come and go while it works, so most of the time only the name can tell. The course in it may be
/// reached by another folder or link than its own.
bool QuestionExport::is_name_of_the_engine(const std::string& path) const
{
    return std::any_of(engine_endings.begin(), engine_endings.end(), [&](std::string_view ending) {
        const platform::Files& files = m_services.files;
        return files.is_same_file(path, m_course.db_path + std::string(ending)) ||
               (path.ends_with(ending) &&
                files.is_same_file(path.substr(0, path.size() - ending.size()), m_course.db_path));
    });
}

/// Nothing when it has failed, which was told then.
std::optional<QuestionExport::Exported> QuestionExport::try_export(const std::string& path, bool numbered)
{
    std::string failure;
    try {
        const platform::BusyPointer busy(m_services.desktop);
        return export_file(path, numbered);
    } catch (const common::Error& error) {
        failure = error.what();
    }
    m_services.desktop.message_box({.text = "The export has stopped.\r\n\r\n" + failure, .icon = BoxIcon::exclamation});
    return std::nullopt;
}

QuestionExport::Exported QuestionExport::export_file(const std::string& path, bool numbered)
{
    const QuestionTextForm form{
        .course_title = m_course.params.course_title, .written = m_services.clock.now(), .numbered = numbered};
    std::unique_ptr<platform::Replacement> file;
    try {
        // First, so that a course that cannot be read leaves no file behind.
        const auto rows = m_course.database().open_recordset("Select * from qa order by cnt");
        file = m_services.files.begin_replacement(path);
        ReturnCheck check(m_services.text_compare);
        const std::int64_t count = write_question_text(*file, *rows, form, check);
        file->finish();
        return {.count = count, .changed = check.changed(), .lines = check.lines()};
    } catch (const common::Error& error) {
        throw common::Error(failure_text(store::words_about(error, m_course), file.get(),
                                         m_services.files.exists(path) ? path : std::string()));
    }
}

bool QuestionExport::ask(const std::string& question)
{
    return m_services.desktop.message_box(
               {.text = question, .buttons = BoxButtons::yes_no, .icon = BoxIcon::question}) == BoxAnswer::yes;
}

void QuestionExport::tell(const std::string& text)
{
    m_services.desktop.message_box({.text = text});
}

} // namespace cuedrill::exchange
