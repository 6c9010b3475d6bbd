#pragma once

#include "platform/clock.h"
#include "platform/controls.h"

namespace cuedrill::drill {

/// Knows the key that has last run a command, and which presses are only echoes of it: sent because it is held down, or
/// made by a finger that trembles. They must do nothing: what they would act on, another question or another box, is
/// not what the user saw when the key went down.
class KeyEcho {
public:
    explicit KeyEcho(platform::Clock& clock) : clock_(clock) {}

    /// To be asked first about each key press.
    [[nodiscard]] bool is_echo(const platform::KeyPress& press);

    /// Runs the command of a key.
    template <class Command>
    void run(const platform::KeyPress& press, Command command)
    {
        listen(press);
        box_closed_ = false;
        command();
        // A press that has waited for the end of a long command is an echo as well. After a box it is not: the user has
        // seen what the first press did, and has released the key to close it.
        if (!box_closed_)
            listen(press);
    }

    /// To be told within a command when the user has closed a box. From then on only the repetitions of the command's
    /// key, which is held down, are echoes.
    void note_box_closed();

private:
    void listen(const platform::KeyPress& press);

    platform::Clock& clock_;
    platform::KeyPress last_;
    double at_ = 0; ///< steady seconds
    bool listening_ = false;
    bool box_closed_ = false; ///< in the command that runs, or has run last
};

} // namespace cuedrill::drill
