#pragma once

#include <QLabel>
#include <QStringList>
#include <optional>

namespace cuedrill::platform::qt {

/// A label with plain text in one line, or in a few if that is set. If the text does not fit, it ends in an ellipsis
/// and the tool tip shows it all. A background of its own is drawn with rounded corners.
class CaptionLabel : public QLabel {
public:
    enum class Tone {
        plain,
        quiet ///< less prominent than plain text
    };

    explicit CaptionLabel(Tone tone = Tone::plain);

    /// Draws the text bold, or again in the weight that the font had when the label was first made bold.
    void set_bold(bool bold);

    /// Lets a text that is too wide go on in a second and third line. The layout then asks for the height.
    void set_wrapping(bool wrapping);
    /// Has the layout leave the whole width to the text, if it is not longer than usual.
    void keep_whole() { whole_ = true; }

    /// Whether the text, in as many lines as it may have, can be shown without an ellipsis at this width.
    [[nodiscard]] bool fits(int width) const;
    /// Width, in pixels, at which the text stands in one line, with room for the edges of a background.
    [[nodiscard]] int one_line_width() const;

    [[nodiscard]] bool hasHeightForWidth() const override { return wrapping_; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    /// The text as drawn at the current size; the lines are joined with blanks.
    [[nodiscard]] QString shown_text() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    [[nodiscard]] QString in_one_line() const;
    [[nodiscard]] QStringList lines(int width, int most_lines) const;
    [[nodiscard]] QStringList shown_lines() const;
    void paint_plate(QPainter& painter, const QRect& area) const;

    Tone tone_;
    bool wrapping_ = false;
    bool whole_ = false;
    std::optional<int> regular_weight_;
};

} // namespace cuedrill::platform::qt
