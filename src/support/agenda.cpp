#include "support/agenda.h"

#include "app/base/paths.h"
#include "common/errors.h"
#include "common/text.h"
#include "support/program_name.h"

#include <string_view>

namespace cuedrill::support {
namespace {

constexpr std::string_view agenda_file = "agenda.txt";
constexpr std::string_view network_path_start = "\\\\";

/// A new agenda starts with an underlined title.
std::string heading()
{
    const std::string title = std::string(program_title) + " agenda";
    const std::string indentation(10, ' ');
    std::string text;
    for (const std::string& line : {title, std::string(title.size(), '=')})
        text.append(indentation).append(line).append(common::cr_lf);
    return text;
}

} // namespace

void Agenda::open_agenda()
{
    const std::string path = app::join_path(program_folder_, agenda_file);
    if (create_missing(path) && edit(path))
        change_to_program_folder();
}

bool Agenda::create_missing(const std::string& path)
{
    if (app::file_exists(files_, path))
        return true;
    try {
        // Written completely or not at all: an empty file would never get its heading.
        const auto agenda = files_.begin_replacement(path);
        agenda->write(heading());
        agenda->finish();
        return true;
    } catch (const common::Error& error) {
        tell(std::string("The agenda could not be created.\r\n\r\n") + error.what());
        return false;
    }
}

bool Agenda::edit(const std::string& path)
{
    const auto process = shell_.edit_text(path);
    if (!process) {
        tell("No text editor was found that opens " + path +
             ".\r\n\r\nInstall one, or choose one in the settings of your desktop.");
        return false;
    }
    task_id_ = process;
    return true;
}

void Agenda::change_to_program_folder()
{
    if (program_folder_.starts_with(network_path_start))
        return;
    try {
        files_.change_folder(program_folder_);
    } catch (const common::Error& error) {
        tell(std::string("The program's folder could not be made the working folder.\r\n\r\n") + error.what());
    }
}

void Agenda::tell(const std::string& text)
{
    desktop_.message_box({.text = text, .icon = platform::BoxIcon::exclamation});
}

} // namespace cuedrill::support
