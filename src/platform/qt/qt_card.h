#pragma once

#include <QWidget>

namespace cuedrill::platform::qt {

/// A surface with a hairline and round corners. A card around a text box takes the box's background and shows by its
/// line that the box has the focus.
class Card : public QWidget {
public:
    Card() = default;

    /// Puts `content` into the card. Its background becomes the card's, and the card is visible when it is.
    void surround(QWidget& content);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* content_ = nullptr;
};

} // namespace cuedrill::platform::qt
