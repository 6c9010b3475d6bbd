#pragma once

#include <QWidget>

namespace cuedrill::platform::qt {

/// Space, in pixels, between the border of a card and its content. It keeps the square corners of the content inside
/// the rounded ones of the card.
inline constexpr int card_inset = 3;

/// A surface with a hairline border and rounded corners. A card around a text box takes the box's background, and its
/// border shows the focus of the box.
class Card : public QWidget {
public:
    Card() = default;

    /// Puts `content` into the card. The card takes over its background and its visibility.
    void surround(QWidget& content);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* content_ = nullptr;
};

} // namespace cuedrill::platform::qt
