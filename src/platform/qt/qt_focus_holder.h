#pragma once

#include "platform/controls.h"

class QWidget;

namespace cuedrill::platform::qt {

/// A widget without size or picture, so that it is neither seen nor reached with Tab or the mouse.
class QtFocusHolder final : public FocusHolder {
public:
    explicit QtFocusHolder(const char* name);

    void set_focus() override;

    [[nodiscard]] QWidget& widget() { return widget_; }

private:
    QWidget& widget_;
};

} // namespace cuedrill::platform::qt
