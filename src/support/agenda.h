#pragma once

#include "platform/desktop.h"
#include "platform/files.h"
#include "platform/shell.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace cuedrill::support {

/// The user's notes: the file "agenda.txt" in the program's folder.
class Agenda {
public:
    Agenda(platform::Files& files, platform::Shell& shell, platform::Desktop& desktop, std::string program_folder)
        : m_files(files), m_shell(shell), m_desktop(desktop), m_program_folder(std::move(program_folder))
    {
    }

    /// Command: opens the agenda in the text editor; where there is none yet, creates it with its heading. The
    /// program's folder becomes the working folder, unless it lies in the network. Each failure is told in a box.
    /// @throws common::ProgramEnded when the program is ended while a box is open.
    void open_agenda();

    /// Number of the process of the editor that was started last; nothing before the first one.
    [[nodiscard]] std::optional<std::int64_t> task_id() const { return m_task_id; }

private:
    [[nodiscard]] bool create_missing(const std::string& path);
    [[nodiscard]] bool edit(const std::string& path);
    void change_to_program_folder();
    void tell(const std::string& text);

    platform::Files& m_files;
    platform::Shell& m_shell;
    platform::Desktop& m_desktop;
    std::string m_program_folder;
    std::optional<std::int64_t> m_task_id;
};

} // namespace cuedrill::support
