#pragma once

#include "platform/qt/qt_announcement.h"
#include "platform/qt/qt_caption_label.h"
#include "platform/qt/qt_level_row.h"
#include "platform/screen.h"

#include <array>
#include <functional>

namespace cuedrill::platform::qt {

/// The labels and level rows of the main window. A layout gives them their places.
class QtScreen final : public ScreenView {
public:
    /// @param parent owns the labels, and outlives this object's last use.
    /// @param tell tells assistive technology that a label has something new to say.
    explicit QtScreen(QWidget& parent, std::function<void(QLabel&)> tell = qt::announce);

    void show(const Screen& screen) override;
    void offer_help(ScreenLine line, const std::function<void()>& ask) override;
    void offer_level_help(const std::function<void()>& ask) override;

    [[nodiscard]] CaptionLabel& label(ScreenLine line) const;
    [[nodiscard]] LevelRow& level_row(int level) const { return *level_rows_.at(static_cast<std::size_t>(level)); }

private:
    void draw(CaptionLabel& label, const Line& line, const Line& before) const;
    void tell(CaptionLabel& label, const Line& line, const Line& before) const;

    std::function<void(QLabel&)> tell_;
    std::array<CaptionLabel*, screen_lines.size()> labels_; ///< in the order of `screen_lines`
    std::array<LevelRow*, level_panels> level_rows_;
    Screen shown_;
};

} // namespace cuedrill::platform::qt
