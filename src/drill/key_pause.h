#pragma once

#include "platform/clock.h"
#include "platform/controls.h"

#include <optional>

namespace cuedrill::drill {

/// A second after the editor was left with texts that are not saved, in which keys do nothing. Whoever presses Escape
/// once more than needed, or types on because the editor was left by the program, would lose the texts.
class KeyPause {
public:
    enum class Keys { escape, all };

    explicit KeyPause(platform::Clock& clock) : clock_(clock) {}

    /// From now on, these keys do nothing for a second.
    void begin(Keys keys)
    {
        keys_ = keys;
        begun_ = clock_.steady_seconds();
    }

    /// Whether the press falls into the pause, and must do nothing.
    [[nodiscard]] bool holds(const platform::KeyPress& press) const;

private:
    platform::Clock& clock_;
    Keys keys_ = Keys::all;
    std::optional<double> begun_; ///< steady seconds
};

} // namespace cuedrill::drill
