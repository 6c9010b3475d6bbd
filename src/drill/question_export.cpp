#include "drill/question_export.h"

#include "common/errors.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace cuedrill::drill {
namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;

/// Endings that the database engine appends to a course's file name for its own files.
constexpr std::array<std::string_view, 3> engine_endings{"-journal", "-wal", "-shm"};

} // namespace

void QuestionExport::Export_QA()
{
    const std::string path = desktop_
                                 .save_file_dialog({.title = "Exporting questions and answers to text file",
                                                    .initial_folder = folder_.initial(),
                                                    .initial_file = "QA export.txt",
                                                    .default_extension = "txt",
                                                    .filter = "Text file (*.txt)|*.txt|All files (*.*)|*.*"})
                                 .path;
    if (path.empty())
        return;
    folder_.chosen(path);
    if (!may_export(path))
        return;
    const bool numbered = ask("Do you want to include questions numbers in the exported file?");
    const auto exported = try_export(path, numbered);
    if (!exported)
        return;
    if (ask(std::to_string(exported->count) +
            " questions and answers exported. Do you want to open the exported file?"))
        documents_.open_document(path);
    tell_changed(*exported);
}

void QuestionExport::tell_changed(const exchange::Exported& exported)
{
    if (exported.changed == 0)
        return;
    desktop_.message_box(
        {.text = "Records that an import of this file would change or leave out: " + std::to_string(exported.changed),
         .icon = BoxIcon::exclamation,
         .details = exported.lines});
}

bool QuestionExport::may_export(const std::string& path)
{
    if (files_.is_same_file(path, course_.db_path))
        tell("The file " + path + " is the open course itself. Choose another name.");
    else if (is_name_of_the_engine(path))
        tell("The name " + path + " is kept for the open course. Choose another name.");
    else if (files_.exists(path) && !files_.is_regular_file(path))
        tell("The file " + path + " is not an ordinary file. Choose another name.");
    else
        return true;
    return false;
}

/// Whether the database engine uses this name for a file of the open course. Such files are temporary, so usually only
/// the name can be compared. The path may lead to the course through another folder or a link.
bool QuestionExport::is_name_of_the_engine(const std::string& path) const
{
    return std::any_of(engine_endings.begin(), engine_endings.end(), [&](std::string_view ending) {
        return files_.is_same_file(path, course_.db_path + std::string(ending)) ||
               (path.ends_with(ending) &&
                files_.is_same_file(path.substr(0, path.size() - ending.size()), course_.db_path));
    });
}

/// std::nullopt if the export failed; the user has been told.
std::optional<exchange::Exported> QuestionExport::try_export(const std::string& path, bool numbered)
{
    std::string failure;
    try {
        const platform::BusyPointer busy(desktop_);
        return exporter_.export_file(path, numbered);
    } catch (const common::Error& error) {
        failure = error.what();
    }
    desktop_.message_box({.text = "The export has stopped.\r\n\r\n" + failure, .icon = BoxIcon::exclamation});
    return std::nullopt;
}

bool QuestionExport::ask(const std::string& question)
{
    return desktop_.message_box({.text = question, .buttons = BoxButtons::yes_no, .icon = BoxIcon::question}) ==
           BoxAnswer::yes;
}

void QuestionExport::tell(const std::string& text)
{
    desktop_.message_box({.text = text});
}

} // namespace cuedrill::drill
