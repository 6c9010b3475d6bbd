#pragma once

#include "platform/desktop.h"

#include <memory>

class QWidget;

namespace cuedrill::platform::qt {

/// Form2: a window that is never visible. It is the parent of the file dialog.
class QtDialogHost final : public DialogHost {
public:
    QtDialogHost();
    ~QtDialogHost() override;

    [[nodiscard]] common::Twips least_height() const override;
    [[nodiscard]] common::Twips least_width() const override;
    void load() override;
    void unload() override;

    /// The loaded window; null if it is not loaded.
    [[nodiscard]] QWidget* widget() const { return window_.get(); }

private:
    std::unique_ptr<QWidget> window_;
};

} // namespace cuedrill::platform::qt
