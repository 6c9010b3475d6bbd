#pragma once

#include "platform/screen.h"

#include <QFont>
#include <QLabel>
#include <QRect>
#include <QString>
#include <array>
#include <cstddef>
#include <vector>

class QPainter;

namespace cuedrill::platform::qt {

/// Upright bars side by side, each with its figure above and its caption below. The text of the label, which is not
/// drawn, says the same in words. Where the widget is too narrow for all bars, the last days are left out.
class DueChart : public QLabel {
public:
    DueChart();

    void show_picture(const DuePicture& picture);

    /// A bar that has room at the present width, with its figure and its caption.
    struct Column {
        std::size_t bar; ///< its index
        QRect place;
    };

    /// From left to right.
    [[nodiscard]] std::vector<Column> columns() const;

    /// The font of a figure: condensed where it is wider than its column.
    [[nodiscard]] QFont figure_font(const QString& figure, int column_width) const;
    [[nodiscard]] const DueBar& bar(std::size_t index) const { return bars_.at(index); }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] int caption_width() const;
    [[nodiscard]] int narrowest_column() const;
    [[nodiscard]] QFont condensed_font() const;
    [[nodiscard]] int text_height() const;
    void paint_column(QPainter& painter, const DueBar& bar, const QRect& column) const;

    std::array<DueBar, due_bars> bars_;
};

} // namespace cuedrill::platform::qt
