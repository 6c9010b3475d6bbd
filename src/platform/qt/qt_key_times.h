#pragma once

#include <QtGlobal>
#include <deque>

class QKeyEvent;

namespace cuedrill::platform::qt {

/// Gives key events back the time that they have lost. While assistive technology listens to the keys, the toolkit
/// takes each event away when it reaches its window, asks who wants it, and sends a copy that has no time. Two copies
/// may arrive at once although seconds lie between the keys: the program was busy meanwhile.
class QtKeyTimes {
public:
    /// To be told of every key event that reaches a window, in their order. A copy gets the time of its original.
    /// @param now milliseconds of a clock that only goes forward.
    /// @return whether it has none: the original was not seen, because the toolkit took it away before.
    [[nodiscard]] bool lacks_time(QKeyEvent& event, qint64 now);

private:
    struct Key {
        int type = 0; ///< pressed or released
        quint32 place = 0;
        int key = 0;

        bool operator==(const Key& other) const = default;
    };
    struct Original {
        Key key;
        quint64 at = 0;  ///< by the clock of the system
        qint64 seen = 0; ///< by our own
    };

    static Key key_of(const QKeyEvent& event);

    std::deque<Original> originals_; ///< the oldest one first
};

} // namespace cuedrill::platform::qt
