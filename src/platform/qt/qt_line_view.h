#pragma once

#include "platform/qt/qt_line_model.h"

#include <QListView>
#include <functional>
#include <optional>

namespace cuedrill::platform::qt {

/// Shows lines of text in the system's fixed-pitch font, of which one can be chosen. The current line is where the
/// cursor keys lead to; it is marked, also while another control has the focus.
class LineView : public QListView {
public:
    LineView();

    /// Shows these lines from the first one on. None is current, or while the list has the focus the first one.
    void show_lines(std::vector<std::string> lines);
    /// Shows these lines; the place in the list and the current line stay, as far as there are lines.
    void replace_lines(std::vector<std::string> lines);

    [[nodiscard]] const LineModel& lines() const { return model_; }

    /// Makes the line current and tells `chosen`. A row that there is not does nothing.
    void choose(int row);

    /// The current line as it was set, which may be gone when this returns.
    std::function<void(const std::string& line)> chosen;

    void keyboardSearch(const QString& text) override;

protected:
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    /// Does nothing: the first press may have changed what is under the pointer.
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void take(std::vector<std::string> lines);
    void begin_with_first_line();
    void tell_focus();
    void copy() const;

    LineModel& model_;
    std::optional<int> pressed_row_;
};

} // namespace cuedrill::platform::qt
