#pragma once

#include "platform/desktop.h"
#include "platform/files.h"
#include "platform/shell.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace cuedrill::support {

/// The user's notes: the file "agenda.txt" in the program folder.
class Agenda {
public:
    Agenda(platform::Files& files, platform::Shell& shell, platform::Desktop& desktop, std::string program_folder)
        : files_(files), shell_(shell), desktop_(desktop), program_folder_(std::move(program_folder))
    {
    }

    /// Command: opens the agenda in the text editor. Creates a missing agenda with its heading. Makes the program
    /// folder the working folder, unless it is on the network. Every failure is reported in a box.
    /// @throws common::ProgramEnded when the program is ended while a box is open.
    void open_agenda();

    /// Process id of the editor started last; std::nullopt before the first one.
    [[nodiscard]] std::optional<std::int64_t> task_id() const { return task_id_; }

private:
    [[nodiscard]] bool create_missing(const std::string& path);
    [[nodiscard]] bool edit(const std::string& path);
    void change_to_program_folder();
    void tell(const std::string& text);

    platform::Files& files_;
    platform::Shell& shell_;
    platform::Desktop& desktop_;
    std::string program_folder_;
    std::optional<std::int64_t> task_id_;
};

} // namespace cuedrill::support
