#pragma once

#include <QLabel>
#include <optional>

namespace cuedrill::platform::qt {

/// A label of one line: plain text that ends in an ellipsis where there is no room for all of it, which the tool tip
/// then shows. A background of its own is drawn with round corners.
class CaptionLabel : public QLabel {
public:
    enum class Tone {
        plain,
        quiet ///< stands back behind plain text
    };

    explicit CaptionLabel(Tone tone = Tone::plain);

    /// Draws the text bold, or again in the weight that the font had when the label was first made bold.
    void set_bold(bool bold);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    /// The text as it is drawn in the present width.
    [[nodiscard]] QString shown_text() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    Tone tone_;
    std::optional<int> regular_weight_;
};

} // namespace cuedrill::platform::qt
