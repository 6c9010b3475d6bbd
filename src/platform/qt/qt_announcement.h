#pragma once

class QLabel;

namespace cuedrill::platform::qt {

/// Presents `label` to assistive technology as a notification, of which screen readers tell at once, instead of as a
/// label, which they read only on demand. To be called before the label is first shown.
void make_notification(QLabel& label);

/// Tells assistive technology that the notification `label` has something new to say.
void announce(QLabel& label);

} // namespace cuedrill::platform::qt
