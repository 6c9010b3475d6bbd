#pragma once

#include "platform/screen.h"

#include <QLabel>
#include <QRect>
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

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] int narrowest_column() const;
    [[nodiscard]] int text_height() const;
    void paint_column(QPainter& painter, const DueBar& bar, const QRect& column) const;

    std::array<DueBar, due_bars> bars_;
};

} // namespace cuedrill::platform::qt
