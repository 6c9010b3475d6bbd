#pragma once

#include <QLabel>
#include <optional>

namespace cuedrill::platform::qt {

/// A one-line label with plain text. If the text does not fit, it ends in an ellipsis and the tool tip shows it all. A
/// background of its own is drawn with rounded corners.
class CaptionLabel : public QLabel {
public:
    enum class Tone {
        plain,
        quiet ///< less prominent than plain text
    };

    explicit CaptionLabel(Tone tone = Tone::plain);

    /// Draws the text bold, or again in the weight that the font had when the label was first made bold.
    void set_bold(bool bold);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    /// The text as drawn at the current width.
    [[nodiscard]] QString shown_text() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    void paint_plate(QPainter& painter, const QRect& area) const;

    Tone tone_;
    std::optional<int> regular_weight_;
};

} // namespace cuedrill::platform::qt
