#pragma once

#include "platform/qt/qt_caption_label.h"
#include "platform/qt/qt_due_chart.h"
#include "platform/qt/qt_folded_figures.h"
#include "platform/qt/qt_level_row.h"
#include "platform/screen.h"

#include <QString>
#include <array>
#include <functional>

namespace cuedrill::platform::qt {

/// The labels, the level rows and the chart of the main window. The caller puts them into a layout.
class QtScreen final : public ScreenView {
public:
    /// @param parent owns the labels; it must outlive the last use of this object.
    /// @param tell announces a text to assistive technology.
    QtScreen(QWidget& parent, std::function<void(const QString&)> tell);

    void show(const Screen& screen) override;
    void offer_help(ScreenLine line, const std::function<void()>& ask) override;
    void offer_level_help(const std::function<void()>& ask) override;
    void offer_due_help(const std::function<void()>& ask) override;

    [[nodiscard]] CaptionLabel& label(ScreenLine line) const;
    /// The figures of the course in one line.
    [[nodiscard]] FoldedFigures& folded_figures() const { return *folded_figures_; }
    [[nodiscard]] LevelRow& level_row(int level) const { return *level_rows_.at(static_cast<std::size_t>(level)); }
    [[nodiscard]] DueChart& due_chart() const { return *due_chart_; }

private:
    void draw(CaptionLabel& label, const Line& line, const Line& before) const;
    void tell(const Line& line, const Line& before) const;

    std::function<void(const QString&)> tell_;
    std::array<CaptionLabel*, screen_lines.size()> labels_; ///< in the order of `screen_lines`
    std::array<LevelRow*, level_panels> level_rows_;
    FoldedFigures* folded_figures_;
    DueChart* due_chart_ = new DueChart;
    Screen shown_;
};

} // namespace cuedrill::platform::qt
