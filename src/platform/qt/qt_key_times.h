#pragma once

#include <QtGlobal>
#include <deque>

class QKeyEvent;

namespace cuedrill::platform::qt {

/// Restores lost timestamps of key events. While assistive technology listens to the keyboard, the toolkit withholds
/// each event that reaches a window, asks who consumes it, and later sends a copy without a timestamp. Two copies may
/// arrive together although the keys were pressed seconds apart, if the program was busy meanwhile.
class QtKeyTimes {
public:
    /// Call it for every key event that reaches a window, in order. A copy gets the timestamp of its original.
    /// @param now monotonic time in milliseconds.
    /// @return true if the event has no timestamp and no original is known, because the toolkit withheld it before this
    /// filter.
    [[nodiscard]] bool lacks_time(QKeyEvent& event, qint64 now);

private:
    struct Key {
        int type = 0; ///< press or release
        quint32 place = 0;
        int key = 0;

        bool operator==(const Key& other) const = default;
    };
    struct Original {
        Key key;
        quint64 at = 0;  ///< timestamp of the system
        qint64 seen = 0; ///< our own monotonic time
    };

    static Key key_of(const QKeyEvent& event);

    std::deque<Original> originals_; ///< oldest first
};

} // namespace cuedrill::platform::qt
