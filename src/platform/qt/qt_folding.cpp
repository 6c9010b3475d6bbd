#include "platform/qt/qt_folding.h"

#include "platform/qt/qt_card.h"
#include "platform/qt/qt_look.h"

#include <QEvent>
#include <QLayout>
#include <algorithm>
#include <array>
#include <initializer_list>

namespace cuedrill::platform::qt {

namespace {

constexpr QMargins narrow_margins{6, 3, 6, 3};
constexpr int narrow_gap = 3;
constexpr QMargins line_margins{10, 3, 10, 3}; // around the folded statistics

/// The height, in pixels, of a text area that shows this many lines of its type.
int usable_height(const QWidget& text, int lines)
{
    const int shown = lines * text.fontMetrics().lineSpacing() + 2 * static_cast<int>(text_margin);
    return std::max(text.minimumHeight(), shown) + 2 * card_inset;
}

} // namespace

const std::array<Folding::Fold, 11> Folding::folds{{
    {true, false, true, true, true, true, 2, 2, 0},
    {false, true, true, true, true, true, 2, 2, 4},
    {false, true, false, true, true, true, 2, 2, 3},
    {false, true, false, false, true, true, 2, 2, 2},
    {false, true, false, false, true, true, 1, 2, 2},
    {false, false, false, false, true, true, 1, 2, 2},
    {false, false, false, false, false, true, 1, 2, 2},
    {false, false, false, false, false, true, 0, 2, 2},
    {false, false, false, false, false, true, 0, 2, 1},
    {false, false, false, false, false, true, 0, 0, 0},
    {false, false, false, false, false, false, 0, 0, 0},
}};

Folding::Folding(QWidget& content, const FoldingParts& parts)
    : QObject(&content), content_(content), parts_(parts), wide_margins_(parts.lines.contentsMargins()),
      wide_gap_(parts.lines.spacing()), frame_margins_(parts.statistics.parentWidget()->layout()->contentsMargins()),
      status_height_(parts.status.minimumHeight())
{
    for (QWidget* watched :
         std::initializer_list<QWidget*>{&content_, &parts_.hint_and_list, &parts_.hint, &parts_.list})
        watched->installEventFilter(this);
    fold();
}

bool Folding::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Resize:
    case QEvent::LayoutRequest:
        if (watched == &content_)
            fold();
        break;
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
        fold();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void Folding::fold()
{
    const auto* const first =
        std::find_if(folds.begin(), folds.end() - 1, [this](const Fold& fold) { return fits(fold); });
    apply(*first);
}

int Folding::width_inside(const Fold& fold) const
{
    const QMargins margins = fold.wide_gaps ? wide_margins_ : narrow_margins;
    return content_.width() - margins.left() - margins.right();
}

/// A hint or a list needs the shared place even where the statistics have gone.
bool Folding::shows_place(const Fold& fold) const
{
    return fold.statistics || fold.statistics_line || !parts_.hint_and_list.isHidden();
}

int Folding::shared_height(const Fold& fold) const
{
    if (fold.statistics)
        return parts_.statistics.sizeHint().height() + frame_margins_.top() + frame_margins_.bottom();
    int height = 0;
    if (fold.statistics_line)
        height = parts_.folded_statistics.sizeHint().height() + line_margins.top() + line_margins.bottom();
    if (!parts_.hint_and_list.isHidden())
        height = std::max(height, usable_height(parts_.list.isHidden() ? parts_.hint : parts_.list, fold.hint_lines));
    return height;
}

bool Folding::fits(const Fold& fold) const
{
    const int width = width_inside(fold);
    if (fold.statistics &&
        parts_.statistics.minimumSizeHint().width() + frame_margins_.left() + frame_margins_.right() > width)
        return false;
    if (fold.figures && parts_.figures.minimumSizeHint().width() > width)
        return false;
    const QMargins margins = fold.wide_gaps ? wide_margins_ : narrow_margins;
    const int gap = fold.wide_gaps ? wide_gap_ : narrow_gap;
    int height = margins.top() + margins.bottom();
    const auto add = [&](int part) { height += part + gap; };
    if (fold.toolbar_rows > 0)
        add(parts_.toolbar.height_for(width, fold.toolbar_rows));
    if (fold.headings)
        height += parts_.headings.layout()->heightForWidth(width) + heading_gap;
    add(std::max(usable_height(parts_.question, fold.text_lines), usable_height(parts_.answer, fold.text_lines)));
    if (fold.figures)
        add(parts_.figures.sizeHint().height());
    if (shows_place(fold))
        add(shared_height(fold));
    add(parts_.dialog.height_for(width, !fold.wide_gaps));
    height += fold.whole_status ? parts_.status.heightForWidth(width) : parts_.status.sizeHint().height();
    return height <= content_.height();
}

void Folding::apply(const Fold& fold)
{
    parts_.lines.setContentsMargins(fold.wide_gaps ? wide_margins_ : narrow_margins);
    // Setting the same gap again would have the window laid out again, and this function called without end.
    if (const int gap = fold.wide_gaps ? wide_gap_ : narrow_gap; gap != parts_.lines.spacing())
        parts_.lines.setSpacing(gap);
    parts_.toolbar.set_most_rows(std::max(1, fold.toolbar_rows));
    const auto show = [](QWidget& part, bool shown) {
        if (part.isHidden() == shown)
            part.setVisible(shown);
    };
    show(parts_.toolbar, fold.toolbar_rows > 0);
    show(parts_.headings, fold.headings);
    show(parts_.figures, fold.figures);
    show(parts_.statistics, fold.statistics);
    show(parts_.folded_statistics, !fold.statistics);
    show(parts_.shared_place, shows_place(fold));
    parts_.statistics.parentWidget()->layout()->setContentsMargins(fold.statistics ? frame_margins_ : line_margins);
    parts_.dialog.set_tight(!fold.wide_gaps);
    parts_.status.set_wrapping(fold.whole_status);
    parts_.status.setMinimumHeight(fold.whole_status ? status_height_ : 0);
    const bool hint_or_list = !parts_.hint_and_list.isHidden();
    parts_.hint_and_list.setMinimumHeight(hint_or_list && !fold.statistics ? shared_height(fold) : 0);
    // The user scrolls through a list, so it gets a share of the window's height.
    const bool shares = hint_or_list && (!parts_.list.isHidden() || !fold.statistics);
    parts_.lines.setStretchFactor(&parts_.shared_place, shares ? 1 : 0);
    // At once and from the inside out. Left to the toolkit, this takes several turns of the event loop, and the user
    // sees the window in between.
    for (const QWidget* part : std::initializer_list<const QWidget*>{
             parts_.statistics.parentWidget(), &parts_.hint_and_list, &parts_.shared_place, &parts_.headings})
        part->layout()->activate();
    parts_.lines.activate();
}

} // namespace cuedrill::platform::qt
