#include "platform/qt/qt_folded_figures.h"

#include "platform/qt/qt_look.h"
#include "platform/qt/qt_text.h"

#include <QPainter>

namespace cuedrill::platform::qt {

namespace {

QString joined(const QStringList& figures)
{
    return figures.join(QStringLiteral("   \u00b7   "));
}

} // namespace

FoldedFigures::FoldedFigures()
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void FoldedFigures::set_figures(const QStringList& figures)
{
    if (figures == figures_)
        return;
    figures_ = figures;
    setText(joined(figures));
    setToolTip(plain_tool_tip(text()));
}

QString FoldedFigures::shown_text() const
{
    QStringList shown = figures_;
    while (!shown.isEmpty() && fontMetrics().horizontalAdvance(joined(shown)) > contentsRect().width())
        shown.removeLast();
    return joined(shown);
}

QSize FoldedFigures::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(text()), fontMetrics().height() + 2};
}

QSize FoldedFigures::minimumSizeHint() const
{
    return {0, sizeHint().height()};
}

void FoldedFigures::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setPen(quiet_text(palette()));
    painter.drawText(contentsRect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown_text());
}

} // namespace cuedrill::platform::qt
