#pragma once

#include "platform/qt/qt_control.h"
#include "platform/qt/qt_guard.h"
#include "platform/qt/qt_key_filter.h"

class QPlainTextEdit;

namespace cuedrill::platform::qt {

/// Multi-line plain text. The widget is the text edit itself; put it into a Card.
class QtTextBox final : public QtControl<TextBox> {
public:
    /// @param gate, keys those of the window that contains the box.
    QtTextBox(const char* name, QtActionGate& gate, QtKeyFilter& keys);

    void set_text(std::string_view text) override;
    [[nodiscard]] std::string text() const override;
    void clear() override;
    [[nodiscard]] std::size_t caret() const override;
    void set_caret(std::size_t place) override;
    void insert(std::size_t place, std::string_view text) override;
    void set_name(std::string_view name) override;
    void set_background(std::optional<common::Colour> colour) override;
    void set_font(const Font& font) override;
    void set_locked(bool locked) override;
    void set_focus() override;
    [[nodiscard]] bool has_focus() const override;

    [[nodiscard]] QPlainTextEdit& widget() { return edit_; }

private:
    QtTextBox(const char* name, QtActionGate& gate, QtKeyFilter& keys, QPlainTextEdit& edit);
    /// The text with CR LF line ends.
    [[nodiscard]] QString lines() const;

    QPlainTextEdit& edit_;
};

} // namespace cuedrill::platform::qt
