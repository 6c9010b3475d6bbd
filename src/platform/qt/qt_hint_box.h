#pragma once

#include "platform/qt/qt_control.h"
#include "platform/qt/qt_guard.h"
#include "platform/qt/qt_hint_edit.h"
#include "platform/qt/qt_key_filter.h"

namespace cuedrill::platform::qt {

/// Shows its text in the system's fixed-pitch font. Dragging selects text for copying; the cursor is then at the
/// beginning of the selection. Assistive technology can move the cursor, too. Put the widget into a Card.
class QtHintBox final : public QtControl<HintBox> {
public:
    /// @param gate, keys those of the window that contains the box.
    QtHintBox(const char* name, QtActionGate& gate, QtKeyFilter& keys);

    void set_text(std::string_view text) override;
    [[nodiscard]] std::string text() const override;
    void set_words(std::vector<common::TextRange> words) override;
    [[nodiscard]] std::optional<std::size_t> caret() const override;
    void set_name(std::string_view name) override;
    void set_focus() override;
    [[nodiscard]] bool has_focus() const override;

    [[nodiscard]] HintEdit& widget() { return edit_; }

private:
    QtHintBox(const char* name, QtActionGate& gate, QtKeyFilter& keys, HintEdit& edit);

    HintEdit& edit_;
    std::string text_;
};

} // namespace cuedrill::platform::qt
