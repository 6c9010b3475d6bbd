#include "platform/qt/qt_line_view.h"

#include "platform/qt/qt_accessible_lines.h"
#include "platform/qt/qt_look.h"
#include "platform/qt/qt_text.h"

#include <QAbstractItemDelegate>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleHints>
#include <QTimer>
#include <algorithm>
#include <utility>

namespace cuedrill::platform::qt {

namespace {

constexpr int margin = 6; // on either side of a line, in pixels
constexpr int row_gap = 2;

/// A line in two parts: the figures at its beginning, which may form columns, and the rest from the first word on.
/// Drawn in one piece, the figures would get the font of the rest, which is not always the fixed-pitch one.
struct LineParts {
    explicit LineParts(const QString& line)
    {
        const auto letters = std::find_if(line.begin(), line.end(), [](QChar character) {
            return character.isLetter() || character.isMark() || character.isSurrogate();
        });
        const qsizetype word = line.first(letters - line.begin()).lastIndexOf(QLatin1Char(' ')) + 1;
        lead = line.first(word);
        rest = line.sliced(word);
    }

    [[nodiscard]] int width(const QFontMetrics& metrics) const
    {
        return metrics.horizontalAdvance(lead) + metrics.horizontalAdvance(rest);
    }

    QString lead;
    QString rest;
};

/// Consumes the second press of a double click near `place`, because the line chosen by the first one may have put
/// another control or a box under the pointer. The list itself still gets the press and recognises the double click.
class SecondPress : public QObject {
public:
    SecondPress(QPoint place, QWidget& list) : QObject(&list), place_(place)
    {
        qApp->installEventFilter(this);
        QTimer::singleShot(QGuiApplication::styleHints()->mouseDoubleClickInterval(), this, &QObject::deleteLater);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const bool press = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
        return (press && watched != parent() && is_near(static_cast<const QMouseEvent&>(*event))) ||
               QObject::eventFilter(watched, event);
    }

private:
    [[nodiscard]] bool is_near(const QMouseEvent& press) const
    {
        return (press.globalPosition().toPoint() - place_).manhattanLength() <=
               QGuiApplication::styleHints()->mouseDoubleClickDistance();
    }

    QPoint place_;
};

/// Draws the lines. All rows have the same height, and the width of the widest line.
class LineDelegate : public QAbstractItemDelegate {
public:
    explicit LineDelegate(LineView& view) : QAbstractItemDelegate(&view), view_(view) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const QPalette& palette = option.palette;
        QColor text = palette.color(QPalette::Text);
        if (index == view_.currentIndex() && view_.hasFocus()) {
            painter->fillRect(option.rect, palette.color(QPalette::Highlight));
            text = palette.color(QPalette::HighlightedText);
        } else if (index == view_.currentIndex()) {
            painter->fillRect(option.rect, tinted(palette, 0.35));
        } else if (option.state.testFlag(QStyle::State_MouseOver)) {
            painter->fillRect(option.rect, tinted(palette, 0.15));
        }
        painter->setPen(text);
        painter->setFont(option.font);
        draw(*painter, option.rect.adjusted(margin, 0, -margin, 0), LineParts(view_.lines().shown(index.row())));
    }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const override
    {
        const int widest = view_.lines().widest_row();
        const int width = widest < 0 ? 0 : LineParts(view_.lines().shown(widest)).width(option.fontMetrics);
        return {width + 2 * margin, option.fontMetrics.height() + row_gap};
    }

private:
    static void draw(QPainter& painter, const QRect& place, const LineParts& line)
    {
        // Left-aligned, even for right-to-left text.
        constexpr int flags = Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextSingleLine;
        const int lead = painter.fontMetrics().horizontalAdvance(line.lead);
        painter.drawText(place, flags, line.lead);
        painter.setLayoutDirection(Qt::LayoutDirectionAuto);
        painter.drawText(place.adjusted(lead, 0, 0, 0), flags, line.rest);
    }

    static QColor tinted(const QPalette& palette, double share)
    {
        return blend(palette.color(QPalette::Base), palette.color(QPalette::Highlight), share);
    }

    LineView& view_;
};

} // namespace

LineView::LineView() : model_(*new LineModel(this))
{
    make_lines_accessible();
    setModel(&model_);
    setItemDelegate(new LineDelegate(*this));
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setFrameShape(QFrame::NoFrame);
    setMinimumSize(smallest_text_area);
    setUniformItemSizes(true);
    viewport()->setAttribute(Qt::WA_Hover);
    auto* const entry = new QAction(QStringLiteral("&Copy"), this);
    entry->setShortcut(QKeySequence::Copy);
    entry->setShortcutContext(Qt::WidgetShortcut);
    connect(entry, &QAction::triggered, this, [this] { copy(); });
    addAction(entry);
    setContextMenuPolicy(Qt::ActionsContextMenu);
}

void LineView::showEvent(QShowEvent* event)
{
    // By default one step is as wide as the widest line. Measuring loads the font, which takes a millisecond that the
    // start of the program is spared.
    horizontalScrollBar()->setSingleStep(fontMetrics().horizontalAdvance(QStringLiteral("step")));
    QListView::showEvent(event);
}

void LineView::set_points(double points)
{
    QFont scaled = font();
    scaled.setPointSizeF(points);
    setFont(scaled);
}

void LineView::show_lines(std::vector<std::string> lines)
{
    take(std::move(lines));
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
    if (hasFocus())
        begin_with_first_line();
}

void LineView::replace_lines(std::vector<std::string> lines)
{
    const int row = std::min(currentIndex().row(), static_cast<int>(lines.size()) - 1);
    const int top = verticalScrollBar()->value();
    const int left = horizontalScrollBar()->value();
    take(std::move(lines));
    if (row >= 0)
        setCurrentIndex(model_.index(row));
    verticalScrollBar()->setValue(top);
    horizontalScrollBar()->setValue(left);
}

void LineView::take(std::vector<std::string> lines)
{
    pressed_row_.reset();
    model_.set_lines(std::move(lines));
    doItemsLayout();
}

void LineView::choose(int row)
{
    if (row < 0 || row >= model_.rowCount())
        return;
    setCurrentIndex(model_.index(row));
    const std::string line = model_.line(row);
    if (chosen)
        chosen(line);
}

void LineView::keyboardSearch(const QString& /*text*/)
{
    // Typed characters are handled by the program's own key rules.
}

void LineView::focusInEvent(QFocusEvent* event)
{
    QListView::focusInEvent(event);
    if (event->reason() != Qt::MouseFocusReason)
        begin_with_first_line();
    // Queued, so that it follows the toolkit's own report that the list has the focus.
    QMetaObject::invokeMethod(
        this, [this] { tell_focus(); }, Qt::QueuedConnection);
}

/// Makes the first line current if none is, so that the keyboard focus is always on a line.
void LineView::begin_with_first_line()
{
    if (!currentIndex().isValid())
        setCurrentIndex(model_.index(0));
}

/// Tells assistive technology which line has the focus.
void LineView::tell_focus()
{
    if (!hasFocus() || !currentIndex().isValid())
        return;
    QAccessibleEvent news(this, QAccessible::Focus);
    news.setChild(currentIndex().row());
    QAccessible::updateAccessibility(&news);
}

void LineView::keyPressEvent(QKeyEvent* event)
{
    const bool sideways = event->key() == Qt::Key_Left || event->key() == Qt::Key_Right;
    if (sideways)
        QAbstractScrollArea::keyPressEvent(event); // scroll: there is no item to the left or right
    else
        QListView::keyPressEvent(event);
}

void LineView::mousePressEvent(QMouseEvent* event)
{
    pressed_row_.reset();
    const QModelIndex index = indexAt(event->position().toPoint());
    if (!index.isValid())
        return;
    // No auto-scroll, so that the line is still under the pointer when the button comes up.
    setAutoScroll(false);
    setCurrentIndex(index);
    setAutoScroll(true);
    if (event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier)
        pressed_row_ = index.row();
}

void LineView::mouseMoveEvent(QMouseEvent* event)
{
    event->accept();
}

void LineView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const std::optional<int> pressed = std::exchange(pressed_row_, std::nullopt);
    if (!pressed || indexAt(event->position().toPoint()).row() != *pressed)
        return;
    // Deletes itself after the double-click interval.
    new SecondPress(event->globalPosition().toPoint(), *viewport());
    choose(*pressed);
}

void LineView::mouseDoubleClickEvent(QMouseEvent* event)
{
    pressed_row_.reset();
    event->accept();
}

void LineView::copy() const
{
    const int row = currentIndex().row();
    if (row >= 0)
        QGuiApplication::clipboard()->setText(to_qt(model_.line(row)));
}

} // namespace cuedrill::platform::qt
