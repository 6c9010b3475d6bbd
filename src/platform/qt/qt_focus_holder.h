#pragma once

#include "platform/controls.h"

class QWidget;

namespace cuedrill::platform::qt {

/// A widget of zero size, so that it is invisible and reached neither with Tab nor with the mouse.
class QtFocusHolder final : public FocusHolder {
public:
    explicit QtFocusHolder(const char* name);

    void set_focus() override;

    [[nodiscard]] QWidget& widget() { return widget_; }

private:
    QWidget& widget_;
};

} // namespace cuedrill::platform::qt
