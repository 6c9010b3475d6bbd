#pragma once

#include "fakes/temp_folder.h"
#include "torture/window_check.h"

#include <cstdint>
#include <string>

namespace cuedrill::torture {

/// How long the program with its window lives.
struct WindowLife {
    std::uint64_t script_seed = 0;
    std::uint64_t acts = 1'000'000; ///< after which it ends by itself
    std::uint64_t calls = 0;        ///< after which it kills itself; 0 for never
    std::uint64_t milliseconds = 0; ///< after which it is killed, from its first word on; 0 for never
    bool logged = false;            ///< whether its calls are noted in the log
};

/// How it has ended.
enum class WindowEnd { by_itself, killed, failed };

/// The folders of a program with its window: one for everything that it keeps, one for what is not on the disk that is
/// examined.
class WindowPlace {
public:
    WindowPlace();

    /// The folder that the program keeps everything in.
    [[nodiscard]] std::string folder() const { return folder_; }

    /// What was noted of the last life.
    [[nodiscard]] std::string log() const { return outside_.read("log"); }
    /// What the last life has said of failures and boxes.
    [[nodiscard]] std::string errors() const { return outside_.read("errors"); }

    /// Creates a course with a few records.
    void make_course() const;

    /// Lets the program live, and has `check` take what it says.
    [[nodiscard]] WindowEnd live(const WindowLife& life, WindowCheck& check) const;

private:
    [[noreturn]] void be_driver(const WindowLife& life) const;

    fakes::TempFolder disk_;
    fakes::TempFolder outside_;
    std::string folder_;
};

} // namespace cuedrill::torture
