#include "platform/qt/qt_key_times.h"

#include <QKeyEvent>
#include <algorithm>

namespace cuedrill::platform::qt {

namespace {

/// How long to wait for a copy, in milliseconds. Some keys never come back, because assistive technology consumes them.
/// On a busy machine copies come seconds late, and one without its time would end the auto-repeat of a held key.
constexpr qint64 longest_wait = 10'000;

} // namespace

QtKeyTimes::Key QtKeyTimes::key_of(const QKeyEvent& event)
{
    return {event.type(), event.nativeScanCode(), event.key()};
}

bool QtKeyTimes::lacks_time(QKeyEvent& event, qint64 now)
{
    while (!originals_.empty() && now - originals_.front().seen > longest_wait)
        originals_.pop_front();
    if (event.timestamp() != 0) {
        originals_.push_back({key_of(event), event.timestamp(), now});
        return false;
    }
    const auto found = std::find_if(originals_.begin(), originals_.end(),
                                    [&](const Original& original) { return original.key == key_of(event); });
    if (found == originals_.end())
        return true;
    event.setTimestamp(found->at);
    // Copies arrive in the order of their originals; earlier originals will not get one.
    originals_.erase(originals_.begin(), found + 1);
    return false;
}

} // namespace cuedrill::platform::qt
