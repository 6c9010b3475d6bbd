#pragma once

#include "platform/qt/qt_control.h"
#include "platform/qt/qt_guard.h"
#include "platform/qt/qt_key_filter.h"

#include <optional>

class QPlainTextEdit;

namespace cuedrill::platform::qt {

class TextEdit;

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

    /// Multiplies the size of the font by `scale`, now and when a font is set.
    void set_scale(double scale);
    /// From now on the text stands in the middle of the box while the box is locked.
    void centre_when_locked();

    [[nodiscard]] QPlainTextEdit& widget();

private:
    QtTextBox(const char* name, QtActionGate& gate, QtKeyFilter& keys, TextEdit& edit);
    /// The text with CR LF line ends.
    [[nodiscard]] QString lines() const;

    void apply_font();

    TextEdit& edit_;
    std::optional<Font> font_; ///< as set, before it is scaled
    double scale_ = 1;
    bool centred_when_locked_ = false;
};

} // namespace cuedrill::platform::qt
