#include "platform/qt/qt_card.h"

#include "platform/qt/qt_look.h"

#include <QEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace cuedrill::platform::qt {

void Card::surround(QWidget& content)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(card_inset, card_inset, card_inset, card_inset);
    layout->addWidget(&content);
    content_ = &content;
    content.installEventFilter(this);
}

bool Card::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::FocusOut:
    case QEvent::PaletteChange:
        update();
        break;
    case QEvent::ShowToParent:
        setVisible(true);
        break;
    case QEvent::HideToParent:
        setVisible(false);
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void Card::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool focused = content_ != nullptr && content_->hasFocus();
    const double line = focused ? focus_width : 1.0;
    painter.setPen(QPen(focused ? focus_colour(palette()) : hairline(palette()), line));
    if (content_ != nullptr)
        painter.setBrush(content_->palette().color(QPalette::Base));
    else
        painter.setBrush(blend(palette().color(QPalette::Window), palette().color(QPalette::Base), 0.5));
    const double half = line / 2.0;
    painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), corner_radius, corner_radius);
}

} // namespace cuedrill::platform::qt
