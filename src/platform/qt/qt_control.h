#pragma once

#include "platform/controls.h"

#include <QString>
#include <QWidget>
#include <string_view>

namespace cuedrill::platform::qt {

/// What the adapters of all controls that are widgets have in common. The widget belongs to the layout it is put into
/// and must outlive the adapter's last use.
template <typename Interface>
class QtControl : public Interface {
public:
    void set_visible(bool visible) override
    {
        visible_ = visible;
        base_.setVisible(visible);
    }

    [[nodiscard]] bool visible() const override { return visible_; }

    void set_enabled(bool enabled) override
    {
        enabled_ = enabled;
        base_.setEnabled(enabled);
    }

    [[nodiscard]] bool enabled() const override { return enabled_; }

protected:
    QtControl(QWidget& widget, const char* name) : base_(widget) { base_.setObjectName(QString::fromLatin1(name)); }

    /// Whether the widget has the focus of its window, be that the active one or not.
    [[nodiscard]] bool holds_focus() const
    {
        return base_.isVisibleTo(base_.window()) && base_.window()->focusWidget() == &base_;
    }

private:
    QWidget& base_;
    // Kept here, because a widget answers for its parents too.
    bool visible_ = true;
    bool enabled_ = true;
};

} // namespace cuedrill::platform::qt
