#pragma once

#include "platform/clock.h"
#include "platform/controls.h"

#include <optional>

namespace cuedrill::drill {

/// Decides which key presses count. A press is ignored if the user did not intend it, or made it before the display
/// changed: it would act on another question or box than the user saw.
class KeyPolicy {
public:
    /// The keys that are ignored during a pause.
    enum class Paused { escape, all };

    explicit KeyPolicy(platform::Clock& clock) : clock_(clock) {}

    /// Judges a key event. Call it once for each key that goes down or up, in any window of the program. The result for
    /// a key that goes up has no meaning.
    ///
    /// A press is stray if its key is held while the focus moves, or if it is a second Enter, Escape or blank within
    /// the debounce time. In text that is being edited, the second press counts. After an Enter that has closed a box,
    /// the debounce time is shorter and only filters contact chatter. A press in a box lifts the echo rule as
    /// `note_box_closed` does.
    [[nodiscard]] platform::KeyJudgement judge(const platform::KeyEvent& event);

    /// Whether a press counts. Call it first for each press that the window handles. A press is ignored during a pause,
    /// or if it is an echo of the key that ran the last command: an auto-repeat event, or an accidental second press.
    /// @param editing whether a record is being edited; a pause has no effect then.
    [[nodiscard]] bool counts(const platform::KeyPress& press, bool editing);

    /// Runs the command of a key and then ignores echoes of the key.
    template <class Command>
    void run(const platform::KeyPress& press, Command command)
    {
        listen(press);
        box_closed_ = false;
        command();
        // A press that was queued during a long command is an echo, too, so the time counts from the end of the
        // command. After a box this does not apply: the user has seen the effect of the first press and has released
        // the key to close the box.
        if (!box_closed_)
            listen(press);
    }

    /// Call it when the user has closed a box during a command. From then on only auto-repeat events of the command's
    /// key are echoes.
    void note_box_closed() { box_closed_ = true; }

    /// Ignores these keys for a second. Call it after the editor was left with unsaved texts: an extra Escape, or
    /// typing that goes on, would lose them.
    void pause(Paused keys);

    /// Whether a key went down in the last `seconds` seconds, in whichever window.
    [[nodiscard]] bool pressed_within(double seconds) const;

private:
    [[nodiscard]] bool is_held(const platform::KeyEvent& event) const;
    [[nodiscard]] bool is_bounce(const platform::KeyEvent& event) const;
    [[nodiscard]] bool goes_elsewhere(const platform::KeyEvent& event) const;
    [[nodiscard]] bool is_echo(const platform::KeyPress& press);
    [[nodiscard]] bool is_paused(const platform::KeyPress& press) const;
    void listen(const platform::KeyPress& press);

    platform::Clock& clock_;

    platform::KeyEvent pressed_;  ///< the last press that was meant, with the time of the latest bounce of that key
    platform::KeyEvent released_; ///< the last release

    std::optional<double> down_at_; ///< of any key, monotonic time in seconds

    platform::KeyPress command_key_; ///< key of the last command
    double command_at_ = 0;          ///< monotonic time in seconds
    bool listening_ = false;         ///< whether echoes of the command's key are ignored
    bool box_closed_ = false;        ///< a box was closed during the current or last command

    Paused paused_ = Paused::all;
    std::optional<double> pause_begun_; ///< monotonic time in seconds
};

} // namespace cuedrill::drill
