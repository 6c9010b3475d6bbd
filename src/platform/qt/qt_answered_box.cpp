#include "platform/qt/qt_answered_box.h"

#include "platform/qt/qt_look.h"
#include "platform/qt/qt_screen_room.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>

namespace cuedrill::platform::qt {

namespace {

constexpr QSize usual_details{560, 240};

/// Lines of a scrolled text that are seen at least.
constexpr int fewest_lines = 2;

/// Space between the text and the outer edge of the ring around it, in pixels.
constexpr int ring_gap = 4;

/// How far a key scrolls. With the arrow keys that is as far as the cursor of the label moves, so that it stays in
/// view.
QAbstractSlider::SliderAction action_of(const QKeyEvent& press)
{
    const bool to_an_end = press.modifiers().testFlag(Qt::ControlModifier);
    switch (press.key()) {
    case Qt::Key_Up:
        return QAbstractSlider::SliderSingleStepSub;
    case Qt::Key_Down:
        return QAbstractSlider::SliderSingleStepAdd;
    case Qt::Key_PageUp:
        return QAbstractSlider::SliderPageStepSub;
    case Qt::Key_PageDown:
        return QAbstractSlider::SliderPageStepAdd;
    case Qt::Key_Home:
        return to_an_end ? QAbstractSlider::SliderToMinimum : QAbstractSlider::SliderNoAction;
    case Qt::Key_End:
        return to_an_end ? QAbstractSlider::SliderToMaximum : QAbstractSlider::SliderNoAction;
    default:
        return QAbstractSlider::SliderNoAction;
    }
}

} // namespace

AnsweredBox::AnsweredBox(QWidget* parent, bool must_be_answered)
    : QMessageBox(parent), must_be_answered_(must_be_answered)
{
    setWindowFlag(Qt::WindowCloseButtonHint, !must_be_answered);
    if (QLabel* const label = text_label())
        label->installEventFilter(this);
}

QLabel* AnsweredBox::text_label() const
{
    return findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
}

/// The toolkit hides details behind a button; here they are the main content of the box.
void AnsweredBox::add_details(const QString& text, const QString& name)
{
    auto* const grid = qobject_cast<QGridLayout*>(layout());
    details_ = new QPlainTextEdit(text, this);
    details_->setReadOnly(true);
    // By default read-only text has no cursor, so neither the keyboard nor a screen reader can move through it.
    details_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    details_->setTabChangesFocus(true);
    details_->setAccessibleName(name);
    details_->setMinimumSize(usual_details);
    grid->addWidget(details_, grid->rowCount(), 0, 1, grid->columnCount());
}

bool AnsweredBox::event(QEvent* event)
{
    // The toolkit would give the box the size that it takes to be the right one.
    if (event->type() == QEvent::LayoutRequest && !fitted_.isEmpty())
        return QDialog::event(event);
    return QMessageBox::event(event);
}

void AnsweredBox::showEvent(QShowEvent* event)
{
    QMessageBox::showEvent(event);
    const QSize room = room_on_screen(*this);
    if (event->spontaneous() || (size() == size().boundedTo(room) && !is_word_cut()))
        return;
    fit(room);
    adjustPosition(parentWidget());
}

/// Whether there is a word that is wider than the width given to the text.
bool AnsweredBox::is_word_cut() const
{
    const QLabel* const label = text_label();
    return label != nullptr && label->minimumWidth() > 0 && label->minimumWidth() < label->minimumSizeHint().width();
}

/// Makes the box as large as the room at most. The details give way first.
void AnsweredBox::fit(QSize room)
{
    int too_high = height() - room.height();
    if (details_ != nullptr) {
        const int least = fewest_lines * details_->fontMetrics().lineSpacing() + 2 * details_->frameWidth();
        const int from_details = std::clamp(too_high, 0, std::max(usual_details.height() - least, 0));
        details_->setMinimumSize(0, usual_details.height() - from_details);
        too_high -= from_details;
    }
    QSize wish = size();
    if (too_high > 0 || is_word_cut()) {
        wish =
            wish.expandedTo(QSize(usual_details.width(), height() + style()->pixelMetric(QStyle::PM_ScrollBarExtent)));
        let_text_scroll();
    }
    fitted_ = wish.boundedTo(room);
    setFixedSize(fitted_);
}

/// Puts the label into an area that scrolls. The focus and the cursor stay in the label.
void AnsweredBox::let_text_scroll()
{
    QLabel* const label = text_label();
    if (label == nullptr)
        return;
    area_ = new QScrollArea(this);
    area_->setFrameShape(QFrame::NoFrame);
    area_->setFocusPolicy(Qt::NoFocus);
    area_->setWidgetResizable(true);
    area_->verticalScrollBar()->setSingleStep(label->fontMetrics().lineSpacing());
    delete layout()->replaceWidget(label, area_);
    label->setMinimumWidth(0); // a longer word scrolls, too
    area_->setWidget(label);
    area_->show();
    label->show();
}

/// Draws the ring around the text, for which the toolkit has none.
void AnsweredBox::paintEvent(QPaintEvent* event)
{
    QMessageBox::paintEvent(event);
    const QLabel* const label = text_label();
    if (label == nullptr || !label->hasFocus())
        return;
    const QRect text = area_ != nullptr ? area_->geometry() : label->geometry();
    QPainter painter(this);
    draw_focus_ring(painter, palette(), text.adjusted(-ring_gap, -ring_gap, ring_gap, ring_gap));
}

bool AnsweredBox::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        update();
    if (event->type() == QEvent::KeyPress && area_ != nullptr && watched == area_->widget())
        area_->verticalScrollBar()->triggerAction(action_of(static_cast<const QKeyEvent&>(*event)));
    return QMessageBox::eventFilter(watched, event);
}

void AnsweredBox::keyPressEvent(QKeyEvent* event)
{
    const bool letter = event->modifiers() == Qt::NoModifier || event->modifiers() == Qt::ShiftModifier;
    if ((letter && !event->text().isEmpty() && event->text().front().isLetter()) ||
        (must_be_answered_ && event->key() == Qt::Key_Escape)) {
        event->accept();
        return;
    }
    QMessageBox::keyPressEvent(event);
}

void AnsweredBox::closeEvent(QCloseEvent* event)
{
    if (must_be_answered_)
        event->ignore();
    else
        QMessageBox::closeEvent(event);
}

} // namespace cuedrill::platform::qt
