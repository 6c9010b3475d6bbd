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
        m_visible = visible;
        m_base.setVisible(visible);
    }

    [[nodiscard]] bool visible() const override { return m_visible; }

    void set_enabled(bool enabled) override
    {
        m_enabled = enabled;
        m_base.setEnabled(enabled);
    }

    [[nodiscard]] bool enabled() const override { return m_enabled; }

protected:
    QtControl(QWidget& widget, const char* name) : m_base(widget) { m_base.setObjectName(QString::fromLatin1(name)); }

    /// Whether the widget has the focus of its window, be that the active one or not.
    [[nodiscard]] bool holds_focus() const
    {
        return m_base.isVisibleTo(m_base.window()) && m_base.window()->focusWidget() == &m_base;
    }

private:
    QWidget& m_base;
    // Kept here, because a widget answers for its parents too.
    bool m_visible = true;
    bool m_enabled = true;
};

} // namespace cuedrill::platform::qt
