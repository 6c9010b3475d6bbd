#pragma once

#include "platform/qt/qt_line_model.h"

#include <QListView>
#include <functional>
#include <optional>

namespace cuedrill::platform::qt {

/// Shows lines of text in the system's fixed-pitch font and lets the user choose one. A line that begins with a level,
/// as "02 - ", has a small bar in front of it. The arrow keys move the current line; it is highlighted even while
/// another control has the focus.
class LineView : public QListView {
public:
    LineView();

    /// Shows these lines, scrolled to the first one. No line is current, or the first one if the list has the focus.
    void show_lines(std::vector<std::string> lines);
    /// Shows these lines; keeps the scroll position as far as there are enough lines.
    /// @param marked the row to mark; `no_row`, or a row that is not there, marks none. It becomes current if the
    /// marked row was current before; otherwise the same row stays current, or the last one if there are fewer.
    void replace_lines(std::vector<std::string> lines, int marked);

    /// Sets the size of the type.
    void set_points(double points);

    static constexpr int no_row = -1;

    /// Marks a row, makes it current and scrolls to it; `no_row`, or a row that is not there, takes the mark away.
    void mark(int row);
    [[nodiscard]] int marked_row() const { return marked_row_; }

    [[nodiscard]] const LineModel& lines() const { return model_; }

    /// Makes the line current and calls `chosen`. Does nothing if there is no such row.
    void choose(int row);

    /// Gets the text of the chosen line as it was set. The line may be gone when this returns.
    std::function<void(const std::string& line)> chosen;

    void keyboardSearch(const QString& text) override;

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    /// Does nothing: the first press may have changed what is under the pointer.
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void take(std::vector<std::string> lines);
    void set_marked_row(int row);
    void begin_with_first_line();
    void tell_focus();
    void copy() const;

    LineModel& model_;
    std::optional<int> pressed_row_;
    int marked_row_ = no_row;
    bool keep_mark_in_view_ = false; ///< until other lines are shown
};

} // namespace cuedrill::platform::qt
