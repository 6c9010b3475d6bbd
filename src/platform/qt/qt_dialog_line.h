#pragma once

#include "platform/qt/qt_button.h"
#include "platform/qt/qt_caption_label.h"

#include <QWidget>
#include <array>

namespace cuedrill::platform::qt {

/// The prompt and, beside it, the strip in which the logic positions the buttons. The strip is below the prompt where
/// the captions of the buttons, or the prompt, have too little room side by side.
class DialogLine : public QWidget {
public:
    using Buttons = std::array<PressButton*, 3>;

    /// Takes over the prompt and the strip. The buttons are children of the strip.
    DialogLine(CaptionLabel& prompt, QWidget& strip, const Buttons& buttons);

    /// Whether the strip is only as high as its buttons need.
    void set_tight(bool tight);
    [[nodiscard]] int height_for(int width, bool tight) const;

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override { return height_for(width, tight_); }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    struct Places {
        QRect prompt;
        QRect strip;
    };

    [[nodiscard]] Places places(int width, bool tight) const;
    [[nodiscard]] int strip_height(bool tight) const;
    void note_needed_width();
    void content_changed();
    void arrange();

    CaptionLabel& prompt_;
    QWidget& strip_;
    Buttons buttons_;
    bool tight_ = false;
    /// Width, in pixels, that the strip needed for the captions with most text so far. The widest counts, so that the
    /// strip stays where it is from one step of the dialog to the next.
    int needed_width_ = 0;
    int widest_prompt_ = 0; ///< width, in pixels, that a prompt needed in one line so far
};

} // namespace cuedrill::platform::qt
