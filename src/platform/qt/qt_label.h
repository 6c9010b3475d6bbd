#pragma once

#include "platform/qt/qt_announcement.h"
#include "platform/qt/qt_caption_label.h"
#include "platform/qt/qt_context_help.h"

namespace cuedrill::platform::qt {

class QtLabel final : public QtHelpfulControl<Label> {
public:
    /// How much the label stands out where the logic asks for nothing special.
    enum class Kind {
        value,   ///< a figure
        caption, ///< names the figure beside it
        heading, ///< stands above an area
        prompt   ///< asks the user something
    };

    /// Whether a caption that appears is told at once by assistive technology.
    enum class Announced { no, yes };

    /// @param tell tells that an announced label has something new to say.
    QtLabel(const char* name, Kind kind, Announced announced = Announced::no,
            std::function<void(QLabel&)> tell = qt::announce);

    void set_caption(std::string_view text) override;
    void set_untold_caption(std::string_view text) override;
    [[nodiscard]] std::string caption() const override;
    void set_description(std::string_view text) override;
    void set_background(std::optional<common::Colour> colour) override;
    void set_bold(bool bold) override;
    void set_alignment(Alignment alignment) override;

    [[nodiscard]] CaptionLabel& widget() { return label_; }

private:
    QtLabel(const char* name, Kind kind, Announced announced, std::function<void(QLabel&)> tell, CaptionLabel& label);

    CaptionLabel& label_;
    bool announced_;
    std::function<void(QLabel&)> tell_;
    int regular_weight_;
    std::string caption_;
};

} // namespace cuedrill::platform::qt
