#pragma once

#include "platform/clock.h"
#include "platform/controls.h"

#include <optional>

namespace cuedrill::drill {

/// Decides which presses of keys count. One that nobody meant, or that was meant for something else than what is on
/// display now, does nothing: what it would act on, another question or another box, is not what the user saw when the
/// key went down.
class KeyPolicy {
public:
    /// The keys that a pause holds.
    enum class Paused { escape, all };

    explicit KeyPolicy(platform::Clock& clock) : clock_(clock) {}

    /// To be told once of each key that goes down, in whichever window of the program, and of those that come up. What
    /// it says of the latter means nothing.
    ///
    /// A press is stray when its key is held on while the focus has moved, or when it is Enter, Escape or the blank a
    /// second time so soon that nobody has seen what the first one did. In text that is being edited the second one
    /// counts. An Enter that has closed a box is followed so soon only by the chatter of its contact.
    [[nodiscard]] platform::KeyJudgement judge(const platform::KeyEvent& event);

    /// To be asked first about each press that the window's rules see. It does not count while a pause holds it, nor
    /// when it is an echo of the key that has last run a command: sent because that is held down, or made by a finger
    /// that trembles.
    /// @param editing whether a record is being typed; the pause holds nothing then.
    [[nodiscard]] bool counts(const platform::KeyPress& press, bool editing);

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
    void note_box_closed() { box_closed_ = true; }

    /// To be told when the editor was left with texts that are not saved: these keys do nothing for a second. Whoever
    /// presses Escape once more than needed, or types on because the program has left the editor, would lose the texts.
    void pause(Paused keys);

private:
    [[nodiscard]] bool is_held(const platform::KeyEvent& event) const;
    [[nodiscard]] bool is_bounce(const platform::KeyEvent& event) const;
    [[nodiscard]] bool goes_elsewhere(const platform::KeyEvent& event) const;
    [[nodiscard]] bool is_echo(const platform::KeyPress& press);
    [[nodiscard]] bool is_paused(const platform::KeyPress& press) const;
    void listen(const platform::KeyPress& press);

    platform::Clock& clock_;

    platform::KeyEvent pressed_;  ///< the last press that was meant, with the time of the last one of all
    platform::KeyEvent released_; ///< the last release

    platform::KeyPress command_key_; ///< the one that has last run a command
    double command_at_ = 0;          ///< steady seconds
    bool listening_ = false;         ///< for echoes of it
    bool box_closed_ = false;        ///< in the command that runs, or has run last

    Paused paused_ = Paused::all;
    std::optional<double> pause_begun_; ///< steady seconds
};

} // namespace cuedrill::drill
