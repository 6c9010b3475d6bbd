#include "platform/qt/qt_dialog_line.h"

#include <QEvent>
#include <algorithm>

namespace cuedrill::platform::qt {

namespace {

constexpr int gap = 12;
constexpr int narrow_gap = 2;
constexpr int padding = 12; // above and below the caption of a button, beyond what the style has
constexpr int button_gap = 8;
constexpr int prompt_space = 6;

} // namespace

DialogLine::DialogLine(CaptionLabel& prompt, QWidget& strip, const Buttons& buttons)
    : prompt_(prompt), strip_(strip), buttons_(buttons)
{
    prompt_.setParent(this);
    strip_.setParent(this);
    strip_.installEventFilter(this);
}

void DialogLine::set_tight(bool tight)
{
    if (tight == tight_)
        return;
    tight_ = tight;
    updateGeometry();
    arrange();
}

int DialogLine::strip_height(bool tight) const
{
    return buttons_.front()->sizeHint().height() + (tight ? 0 : padding);
}

void DialogLine::note_needed_width()
{
    int widest = 0;
    int count = 0;
    for (const PressButton* button : buttons_) {
        if (button->isHidden())
            continue;
        // A short caption makes no upright button.
        widest = std::max({widest, button->needed_width(), 2 * button->sizeHint().height()});
        ++count;
    }
    needed_width_ = std::max(needed_width_, count * (widest + button_gap));
}

DialogLine::Places DialogLine::places(int width, bool tight) const
{
    const int height = strip_height(tight);
    const int usual = (width - gap) * 3 / 5;
    // What the prompt leaves where it stands in one line, so that short captions have no tiny buttons.
    const int beside = width - gap - widest_prompt_;
    for (const int strip : {usual, std::max(beside, needed_width_)}) {
        const int prompt = width - gap - strip;
        if (strip < needed_width_ || !prompt_.fits(prompt))
            continue;
        const int prompt_height = prompt_.heightForWidth(prompt);
        if (prompt_height <= height)
            return {QRect(0, (height - prompt_height) / 2, prompt, prompt_height),
                    QRect(width - strip, 0, strip, height)};
    }
    // Where room is scarce, the prompt has no space above and below.
    const int prompt_height = prompt_.heightForWidth(width) - (tight ? prompt_space : 0);
    return {QRect(0, 0, width, prompt_height), QRect(0, prompt_height + narrow_gap, width, height)};
}

int DialogLine::height_for(int width, bool tight) const
{
    return places(width, tight).strip.bottom() + 1;
}

QSize DialogLine::sizeHint() const
{
    return {0, strip_height(tight_)};
}

QSize DialogLine::minimumSizeHint() const
{
    return sizeHint();
}

void DialogLine::arrange()
{
    const Places now = places(width(), tight_);
    prompt_.setGeometry(now.prompt);
    strip_.setGeometry(now.strip);
}

void DialogLine::content_changed()
{
    widest_prompt_ = std::max(widest_prompt_, prompt_.one_line_width());
    updateGeometry();
    arrange();
}

void DialogLine::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrange();
}

bool DialogLine::event(QEvent* event)
{
    if (event->type() == QEvent::LayoutRequest) {
        // The prompt has a new text.
        content_changed();
    } else if (event->type() == QEvent::Show) {
        // The captions that the buttons got while the window was hidden have caused no event.
        note_needed_width();
        content_changed();
    }
    return QWidget::event(event);
}

bool DialogLine::eventFilter(QObject* watched, QEvent* event)
{
    // A button has a new caption, or has come or gone.
    if (event->type() == QEvent::LayoutRequest) {
        note_needed_width();
        content_changed();
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace cuedrill::platform::qt
