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
constexpr int highest_level = 10; // a full bar

/// Mark and bar in front of a line, in pixels: as large as the type.
struct BarPlaces {
    explicit BarPlaces(const QFontMetrics& type)
        : mark_height(type.height() / 2.0), thickness(type.height() * 0.4), left(margin + type.height() * 3 / 4),
          length(type.height() * 5 / 2), text_left(left + length + type.height() / 2)
    {
    }

    double mark_height;
    double thickness;
    int left; ///< of the bar, behind the mark
    int length;
    int text_left;
};

/// The level with which a line begins, as "02 - "; std::nullopt if it begins with something else.
std::optional<int> level_of(const QString& line)
{
    const qsizetype end = line.indexOf(QLatin1String(" - "));
    bool is_number = false;
    const int level = end < 0 ? 0 : line.first(end).toInt(&is_number);
    return is_number ? std::optional(std::clamp(level, 0, highest_level)) : std::nullopt;
}

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
        const QPalette colours = colours_of(option, index);
        painter->fillRect(option.rect, colours.color(QPalette::Window));
        const QString line = view_.lines().shown(index.row());
        if (index.row() == view_.marked_row())
            draw_mark(*painter, option, colours.color(QPalette::WindowText));
        if (const std::optional<int> level = level_of(line))
            draw_level(*painter, option, colours, *level);
        painter->setPen(colours.color(QPalette::WindowText));
        painter->setFont(option.font);
        draw(*painter, option.rect.adjusted(text_left(option.fontMetrics), 0, -margin, 0), LineParts(line));
    }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const override
    {
        const int widest = view_.lines().widest_row();
        const int width = widest < 0 ? 0 : LineParts(view_.lines().shown(widest)).width(option.fontMetrics);
        return {text_left(option.fontMetrics) + width + margin, option.fontMetrics.height() + row_gap};
    }

private:
    /// Where the text begins: behind the mark and, in a list with levels, the bar.
    [[nodiscard]] int text_left(const QFontMetrics& type) const
    {
        const bool levels = view_.lines().rowCount() > 0 && level_of(view_.lines().shown(0)).has_value();
        return levels ? BarPlaces(type).text_left : margin;
    }

    /// The ground and the text of a row as colours of a window, for the bar.
    [[nodiscard]] QPalette colours_of(const QStyleOptionViewItem& option, const QModelIndex& index) const
    {
        QPalette colours = option.palette;
        colours.setColor(QPalette::Window, colours.color(QPalette::Base));
        colours.setColor(QPalette::WindowText, colours.color(QPalette::Text));
        if (index == view_.currentIndex() && view_.hasFocus()) {
            colours.setColor(QPalette::Window, colours.color(QPalette::Highlight));
            colours.setColor(QPalette::WindowText, colours.color(QPalette::HighlightedText));
            colours.setColor(QPalette::Highlight, colours.color(QPalette::HighlightedText));
        } else if (index == view_.currentIndex()) {
            colours.setColor(QPalette::Window, tinted(option.palette, 0.35));
        } else if (option.state.testFlag(QStyle::State_MouseOver)) {
            colours.setColor(QPalette::Window, tinted(option.palette, 0.15));
        }
        return colours;
    }

    /// The same triangle as that of the level of the last verdict.
    static void draw_mark(QPainter& painter, const QStyleOptionViewItem& row, const QColor& colour)
    {
        const double half = BarPlaces(row.fontMetrics).mark_height / 2;
        const QPointF middle(row.rect.left() + margin, row.rect.center().y() + 0.5);
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour);
        painter.drawPolygon(
            QPolygonF{middle - QPointF(0, half), middle + QPointF(half * 5 / 4, 0), middle + QPointF(0, half)});
        painter.restore();
    }

    static void draw_level(QPainter& painter, const QStyleOptionViewItem& row, const QPalette& colours, int level)
    {
        const BarPlaces places(row.fontMetrics);
        const QRectF bar(row.rect.left() + places.left, row.rect.center().y() - places.thickness / 2 + 0.5,
                         places.length, places.thickness);
        painter.setRenderHint(QPainter::Antialiasing);
        paint_bar(painter, colours, bar, static_cast<double>(level) / highest_level, Qt::Horizontal);
    }

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

/// When the list is shown it gets its height after its lines.
void LineView::resizeEvent(QResizeEvent* event)
{
    QListView::resizeEvent(event);
    if (keep_mark_in_view_ && currentIndex().row() == marked_row_)
        scrollTo(currentIndex(), PositionAtCenter);
}

void LineView::mark(int row)
{
    set_marked_row(row);
    keep_mark_in_view_ = marked_row_ != no_row;
    if (keep_mark_in_view_) {
        setCurrentIndex(model_.index(marked_row_));
        scrollTo(currentIndex(), PositionAtCenter);
    }
}

void LineView::set_marked_row(int row)
{
    marked_row_ = row < model_.rowCount() ? row : no_row;
    viewport()->update();
}

void LineView::show_lines(std::vector<std::string> lines)
{
    take(std::move(lines));
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
    if (hasFocus())
        begin_with_first_line();
}

void LineView::replace_lines(std::vector<std::string> lines, int marked)
{
    const bool mark_is_current = marked_row_ != no_row && currentIndex().row() == marked_row_;
    const int row = std::min(currentIndex().row(), static_cast<int>(lines.size()) - 1);
    const int top = verticalScrollBar()->value();
    const int left = horizontalScrollBar()->value();
    take(std::move(lines));
    set_marked_row(marked);
    const int current = mark_is_current && marked_row_ != no_row ? marked_row_ : row;
    if (current >= 0)
        setCurrentIndex(model_.index(current));
    verticalScrollBar()->setValue(top);
    horizontalScrollBar()->setValue(left);
}

void LineView::take(std::vector<std::string> lines)
{
    pressed_row_.reset();
    marked_row_ = no_row;
    keep_mark_in_view_ = false;
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
