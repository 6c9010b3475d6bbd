#pragma once

#include <QMenu>
#include <QPushButton>
#include <QWidget>
#include <vector>

namespace cuedrill::platform::qt {

/// Buttons in a row, in two rows where they do not fit into one. Those that do not fit into the rows either are in a
/// menu behind them.
class Toolbar : public QWidget {
public:
    Toolbar();

    void add(QPushButton& button);

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
    /// Where the buttons go: `rows[i]` are those of row i, from left to right.
    struct Arrangement {
        std::vector<std::vector<QPushButton*>> rows;
        std::vector<QPushButton*> in_menu;
    };

    [[nodiscard]] Arrangement arrangement(int width, int most_rows) const;
    [[nodiscard]] int row_height() const;
    void arrange();
    void fill_menu();

    std::vector<QPushButton*> buttons_;
    std::vector<QPushButton*> in_menu_;
    QPushButton& more_;
    QMenu menu_;
    int most_rows_ = 2;
};

} // namespace cuedrill::platform::qt
