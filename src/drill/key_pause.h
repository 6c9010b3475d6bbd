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

    explicit KeyPause(platform::Clock& clock) : m_clock(clock) {}

    /// From now on, these keys do nothing for a second.
    void begin(Keys keys)
    {
        m_keys = keys;
        m_begun = m_clock.steady_seconds();
    }

    /// Whether the press falls into the pause, and must do nothing.
    [[nodiscard]] bool holds(const platform::KeyPress& press) const;

private:
    platform::Clock& m_clock;
    Keys m_keys = Keys::all;
    std::optional<double> m_begun; ///< steady seconds
};

} // namespace cuedrill::drill
