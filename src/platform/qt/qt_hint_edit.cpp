#include "platform/qt/qt_hint_edit.h"

#include "platform/qt/qt_look.h"

#include <QAccessible>
#include <QApplication>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <utility>

namespace cuedrill::platform::qt {

namespace {

constexpr QChar placeholder(1);

} // namespace

void PlaceholderCells::set_font(const QFont& font)
{
    // A font may or may not have a glyph for the placeholder. Font merging is off, because a glyph from another font
    // could be higher than the line. Whatever this font draws is made invisible and brought to the width of a cell.
    QFont own = font;
    own.setStyleStrategy(QFont::NoFontMerging);
    const QFontMetricsF metrics(own);
    const double missing = metrics.horizontalAdvance(QLatin1Char(' ')) - metrics.horizontalAdvance(placeholder);
    format_ = QTextCharFormat();
    format_.setFontStyleStrategy(QFont::NoFontMerging);
    format_.setFontLetterSpacingType(QFont::AbsoluteSpacing);
    format_.setFontLetterSpacing(missing);
    format_.setForeground(Qt::transparent);
    rehighlight();
}

void PlaceholderCells::highlightBlock(const QString& text)
{
    for (qsizetype at = text.indexOf(placeholder); at >= 0; at = text.indexOf(placeholder, at + 1))
        setFormat(static_cast<int>(at), 1, format_);
}

HintEdit::HintEdit() : cells_(*new PlaceholderCells(*document()))
{
    set_up_text_area(*this);
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setUndoRedoEnabled(false);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, [this] { moved_ = true; });
}

void HintEdit::showEvent(QShowEvent* event)
{
    // Loading a font takes a millisecond, which the start of the program is spared.
    if (!std::exchange(has_own_font_, true)) {
        apply_font();
        cells_.set_font(font());
    }
    QPlainTextEdit::showEvent(event);
}

void HintEdit::set_points(double points)
{
    points_ = points;
    if (has_own_font_)
        apply_font();
}

void HintEdit::apply_font()
{
    QFont own = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (points_)
        own.setPointSizeF(*points_);
    setFont(own);
}

void HintEdit::show_text(const QString& text)
{
    words_.clear();
    press_.reset();
    setPlainText(text);
    moved_ = false;
}

std::optional<int> HintEdit::caret() const
{
    if (!moved_)
        return std::nullopt;
    return textCursor().selectionStart();
}

void HintEdit::doSetTextCursor(const QTextCursor& cursor)
{
    QPlainTextEdit::doSetTextCursor(cursor);
    // Assistive technology may put the cursor where it already is; no signal reports that.
    moved_ = true;
}

void HintEdit::changeEvent(QEvent* event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        cells_.set_font(font());
}

void HintEdit::for_each_line(const std::function<void(const QTextBlock&, const QTextLine&, QPointF)>& told) const
{
    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
        const QPointF origin = blockBoundingGeometry(block).translated(contentOffset()).topLeft();
        if (origin.y() > viewport()->height())
            return;
        for (int i = 0; i < block.layout()->lineCount(); ++i)
            told(block, block.layout()->lineAt(i), origin);
    }
}

std::optional<int> HintEdit::character_at(QPointF point) const
{
    std::optional<int> found;
    for_each_line([&](const QTextBlock& block, const QTextLine& line, QPointF origin) {
        if (line.naturalTextRect().translated(origin).contains(point))
            found = block.position() + line.xToCursor(point.x() - origin.x(), QTextLine::CursorOnCharacter);
    });
    return found;
}

void HintEdit::paintEvent(QPaintEvent* event)
{
    QPlainTextEdit::paintEvent(event);
    QPainter painter(viewport());
    const QTextCursor cursor = textCursor();
    for_each_line([&](const QTextBlock& block, const QTextLine& line, QPointF origin) {
        const double base_line = origin.y() + line.y() + line.ascent();
        for (int at = line.textStart(); at < line.textStart() + line.textLength(); ++at) {
            const int position = block.position() + at;
            if (document()->characterAt(position) != placeholder)
                continue;
            const auto [left, right] = std::minmax({line.cursorToX(at), line.cursorToX(at + 1)});
            const QRectF cell(origin.x() + left, origin.y() + line.y(), right - left, line.height());
            paint_placeholder(painter, cell, base_line,
                              position >= cursor.selectionStart() && position < cursor.selectionEnd());
        }
    });
}

/// Draws an open square on the base line, so that it is not taken for a letter or a missing glyph.
void HintEdit::paint_placeholder(QPainter& painter, const QRectF& cell, double base_line, bool selected) const
{
    QColor colour = palette().color(QPalette::Text);
    if (selected) {
        // A selection gives its own colour to the text, even to text meant to be invisible.
        const QPalette::ColorGroup group = hasFocus() ? QPalette::Active : QPalette::Inactive;
        painter.fillRect(cell, palette().brush(group, QPalette::Highlight));
        colour = palette().color(group, QPalette::HighlightedText);
    }
    const int line = std::max(1, static_cast<int>(cell.width() / 9.0));
    const int side = static_cast<int>(cell.width()) - 2 * line;
    const QRect square(static_cast<int>(std::lround(cell.center().x() - side / 2.0)),
                       static_cast<int>(std::lround(base_line)) - side, side, side);
    const QRect hole = square.adjusted(line, line, -line, -line);
    painter.fillRect(QRect(square.topLeft(), QSize(side, line)), colour);
    painter.fillRect(QRect(square.left(), hole.bottom() + 1, side, line), colour);
    painter.fillRect(QRect(square.left(), hole.top(), line, hole.height()), colour);
    painter.fillRect(QRect(hole.right() + 1, hole.top(), line, hole.height()), colour);
}

void HintEdit::keyPressEvent(QKeyEvent* event)
{
    const Word* const word = word_of_key(*event);
    if (word == nullptr) {
        QPlainTextEdit::keyPressEvent(event);
        return;
    }
    select(*word);
    if (word_reached)
        word_reached(textCursor().selectedText());
}

/// Selects the word without an accessibility event. A screen reader would speak the word that is no longer selected,
/// and only then the new one; the word is announced instead.
void HintEdit::select(const Word& word)
{
    // Moves the cursor itself to the beginning of the selection, where assistive technology finds it.
    QTextCursor cursor = textCursor();
    cursor.setPosition(word.end);
    cursor.setPosition(word.begin, QTextCursor::KeepAnchor);
    const QAccessible::UpdateHandler handler = QAccessible::installUpdateHandler([](QAccessibleEvent*) {});
    setTextCursor(cursor);
    QAccessible::installUpdateHandler(handler);
}

const HintEdit::Word* HintEdit::word_of_key(const QKeyEvent& event) const
{
    if (words_.empty() || (event.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return nullptr;
    switch (event.key()) {
    case Qt::Key_Home:
        return &words_.front();
    case Qt::Key_End:
        return &words_.back();
    case Qt::Key_Right:
    case Qt::Key_Down:
        return &next_word();
    case Qt::Key_Left:
    case Qt::Key_Up:
        return &previous_word();
    default:
        return nullptr;
    }
}

const HintEdit::Word& HintEdit::next_word() const
{
    const int from = caret().value_or(-1);
    const auto next =
        std::find_if(words_.begin(), words_.end(), [from](const Word& word) { return word.begin > from; });
    return next == words_.end() ? words_.back() : *next;
}

const HintEdit::Word& HintEdit::previous_word() const
{
    const int from = caret().value_or(-1);
    const auto previous =
        std::find_if(words_.rbegin(), words_.rend(), [from](const Word& word) { return word.end <= from; });
    return previous == words_.rend() ? words_.front() : *previous;
}

void HintEdit::mousePressEvent(QMouseEvent* event)
{
    press_.reset();
    if (event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier) {
        const std::optional<int> character = character_at(event->position());
        if (!character)
            return; // keep the cursor where the user has put it
        press_ = Press{*character, event->position()};
    }
    QPlainTextEdit::mousePressEvent(event);
}

void HintEdit::mouseReleaseEvent(QMouseEvent* event)
{
    QPlainTextEdit::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton || !press_)
        return;
    const Press press = *press_;
    press_.reset();
    if ((event->position() - press.point).manhattanLength() >= QApplication::startDragDistance())
        return;
    QTextCursor cursor = textCursor();
    cursor.setPosition(press.character);
    setTextCursor(cursor);
    if (clicked)
        clicked();
}

void HintEdit::mouseDoubleClickEvent(QMouseEvent* event)
{
    press_.reset();
    event->accept();
}

} // namespace cuedrill::platform::qt
