#pragma once

#include <QLabel>

namespace cuedrill::platform::qt {

/// One row with caption, bar and count. The text of the label is the count.
class LevelRow : public QLabel {
public:
    LevelRow();

    void set_caption(const QString& caption);
    /// Sets the filled part of the bar, 0 to 1.
    void set_share(double share);
    void set_marked(bool marked);

    [[nodiscard]] const QString& caption() const { return caption_; }
    [[nodiscard]] double share() const { return share_; }
    [[nodiscard]] bool marked() const { return marked_; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString caption_;
    double share_ = 0.0;
    bool marked_ = false;
};

} // namespace cuedrill::platform::qt
