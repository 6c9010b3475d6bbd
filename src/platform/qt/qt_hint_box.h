#pragma once

#include "platform/qt/qt_control.h"
#include "platform/qt/qt_guard.h"
#include "platform/qt/qt_hint_edit.h"
#include "platform/qt/qt_key_filter.h"

namespace cuedrill::platform::qt {

/// Shows its text in the system's fixed-pitch font. Dragging selects text to be copied; the caret is then where the
/// selection begins, and it is where assistive technology has put it. The widget is to be put into a Card.
class QtHintBox final : public QtControl<HintBox> {
public:
    /// @param gate the one of the window that the box stands in; so is `keys`.
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
