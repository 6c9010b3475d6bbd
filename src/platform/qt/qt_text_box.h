#pragma once

#include "platform/qt/qt_control.h"
#include "platform/qt/qt_event_watcher.h"
#include "platform/qt/qt_guard.h"

class QPlainTextEdit;

namespace cuedrill::platform::qt {

/// Several lines of plain text. The widget is the text edit itself, to be put into a Card.
class QtTextBox final : public QtControl<TextBox> {
public:
    QtTextBox(const char* name, QtGuard& guard);

    void set_text(std::string_view text) override;
    [[nodiscard]] std::string text() const override;
    void set_name(std::string_view name) override;
    void set_background(std::optional<common::Colour> colour) override;
    void set_font(const Font& font) override;
    void set_locked(bool locked) override;

    [[nodiscard]] QPlainTextEdit& widget() { return m_edit; }

private:
    QtTextBox(const char* name, QtGuard& guard, QPlainTextEdit& edit);

    QPlainTextEdit& m_edit;
    EventWatcher m_watcher;
};

} // namespace cuedrill::platform::qt
