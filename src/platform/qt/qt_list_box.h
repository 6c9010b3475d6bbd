#pragma once

#include "platform/qt/qt_control.h"
#include "platform/qt/qt_guard.h"
#include "platform/qt/qt_key_filter.h"
#include "platform/qt/qt_line_view.h"

namespace cuedrill::platform::qt {

/// Lines in the system's fixed-pitch font; long lines scroll. Put the widget into a Card.
class QtListBox final : public QtControl<ListBox> {
public:
    /// @param gate, keys those of the window that contains the box.
    QtListBox(const char* name, QtActionGate& gate, QtKeyFilter& keys);

    void set_lines(std::vector<std::string> lines) override;
    void replace_lines(std::vector<std::string> lines, std::optional<std::size_t> marked) override;
    void mark_line(std::optional<std::size_t> line) override;
    void set_name(std::string_view name) override;
    void set_focus() override;
    [[nodiscard]] bool has_focus() const override;

    [[nodiscard]] LineView& widget() { return view_; }

private:
    QtListBox(const char* name, QtActionGate& gate, QtKeyFilter& keys, LineView& view);
    /// Returns whether the key chooses a line.
    bool take_key(const KeyPress& press);

    LineView& view_;
};

} // namespace cuedrill::platform::qt
