#pragma once

#include "platform/controls.h"

#include <QString>
#include <QWidget>
#include <string_view>

namespace cuedrill::platform::qt {

/// Base of the adapters of all controls that are widgets. The layout that the widget is put into owns it; the widget
/// must outlive the adapter's last use.
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

    /// Whether the widget has the focus within its window, even if that window is not active.
    [[nodiscard]] bool holds_focus() const
    {
        return base_.isVisibleTo(base_.window()) && base_.window()->focusWidget() == &base_;
    }

private:
    QWidget& base_;
    // Stored here, because a widget's isVisible() depends on its parents, too.
    bool visible_ = true;
    bool enabled_ = true;
};

} // namespace cuedrill::platform::qt
