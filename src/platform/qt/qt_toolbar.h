#pragma once

#include <QMenu>
#include <QPushButton>
#include <QWidget>
#include <vector>

namespace cuedrill::platform::qt {

/// Buttons in a row, in two rows where they do not fit into one. Those that do not fit into the rows either are in a
/// menu behind them. Between two groups of buttons is a space, as wide as there is room for; a group is not broken into
/// two rows if a row for itself is enough.
class Toolbar : public QWidget {
public:
    Toolbar();

    void add(QPushButton& button);

    /// The buttons that are added from now on are another group.
    void begin_group();

    /// The number of rows that the buttons may take, at least 1.
    void set_most_rows(int rows);

    /// The height, in pixels, that the buttons take at this width.
    [[nodiscard]] int height_for(int width, int most_rows) const;

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override { return height_for(width, most_rows_); }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    using Row = std::vector<QPushButton*>; ///< from left to right

    /// Where the buttons go.
    struct Arrangement {
        std::vector<Row> rows;
        Row in_menu;
    };

    /// The room for an arrangement, in pixels.
    struct Room {
        int width;
        int most_rows;
        int for_menu; ///< kept free in the last row
    };

    [[nodiscard]] Arrangement arrangement(int width, int most_rows) const;
    [[nodiscard]] Arrangement filled(const Room& room, bool keep_groups) const;
    [[nodiscard]] bool begins_group(const QPushButton& button) const;
    [[nodiscard]] int row_width(const Row& row, int group_gap) const;
    [[nodiscard]] int group_gap(const Arrangement& arrangement) const;
    [[nodiscard]] int row_height() const;
    void arrange();
    void fill_menu();

    std::vector<Row> groups_{1};
    Row in_menu_;
    QPushButton& more_;
    QMenu menu_;
    int most_rows_ = 2;
};

} // namespace cuedrill::platform::qt
