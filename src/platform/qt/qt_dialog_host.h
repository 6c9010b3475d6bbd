#pragma once

#include "platform/desktop.h"

#include <memory>

class QWidget;

namespace cuedrill::platform::qt {

/// Form2: a window that is never shown. It lends its place to the file dialog.
class QtDialogHost final : public DialogHost {
public:
    QtDialogHost();
    ~QtDialogHost() override;

    void set_caption(std::string_view text) override;
    void set_height(common::Twips height) override;
    void set_width(common::Twips width) override;
    [[nodiscard]] common::Twips height() const override { return m_height; }
    [[nodiscard]] common::Twips width() const override { return m_width; }
    void set_position(common::Twips left, common::Twips top) override;
    [[nodiscard]] common::Twips screen_width() const override;
    [[nodiscard]] common::Twips screen_height() const override;
    void load() override;
    void unload() override;

    /// The loaded window; null while it is not loaded.
    [[nodiscard]] QWidget* widget() const { return m_window.get(); }

private:
    void place();

    std::string m_caption;
    common::Twips m_left = 0;
    common::Twips m_top = 0;
    common::Twips m_width = 0;
    common::Twips m_height = 0;
    std::unique_ptr<QWidget> m_window;
};

} // namespace cuedrill::platform::qt
