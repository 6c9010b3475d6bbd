#pragma once

#include <QPlainTextEdit>
#include <QSyntaxHighlighter>
#include <QTextBlock>
#include <QTextLine>
#include <functional>
#include <optional>
#include <vector>

namespace cuedrill::platform::qt {

/// Makes each placeholder exactly one cell wide in a document with a fixed-pitch font, whatever glyph the font has.
class PlaceholderCells : public QSyntaxHighlighter {
public:
    explicit PlaceholderCells(QTextDocument& document) : QSyntaxHighlighter(&document) {}

    /// Call this when the font of the document has changed.
    void set_font(const QFont& font);

protected:
    void highlightBlock(const QString& text) override;

private:
    QTextCharFormat format_;
};

/// Read-only text with placeholders, which it draws. The arrow keys go from word to word. Positions are those of the
/// document.
class HintEdit : public QPlainTextEdit {
public:
    struct Word {
        int begin;
        int end;
    };

    HintEdit();

    void show_text(const QString& text);
    /// Sets the words that the arrow keys go to, in order, until another text is shown. Without words they move the
    /// cursor.
    void set_words(std::vector<Word> words) { words_ = std::move(words); }
    /// The position of the cursor or the beginning of the selection; std::nullopt until the user has moved the cursor.
    [[nodiscard]] std::optional<int> caret() const;

    /// Sets the size of the type.
    void set_points(double points);

    /// The index of the character drawn at `point` of the viewport.
    [[nodiscard]] std::optional<int> character_at(QPointF point) const;

    /// The left button was pressed and released on the text without dragging; the cursor is now before that character.
    std::function<void()> clicked;

    /// A key has led to a word; gets its text.
    std::function<void(const QString& word)> word_reached;

protected:
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    /// Does nothing: the first press may have changed what is under the pointer.
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void doSetTextCursor(const QTextCursor& cursor) override;

private:
    void select(const Word& word);
    struct Press {
        int character;
        QPointF point;
    };

    /// Calls `told` with each visible line and its origin in viewport coordinates.
    void for_each_line(const std::function<void(const QTextBlock&, const QTextLine&, QPointF)>& told) const;
    void paint_placeholder(QPainter& painter, const QRectF& cell, double base_line, bool selected) const;
    void apply_font();
    /// The word that a key leads to; null if there is none.
    [[nodiscard]] const Word* word_of_key(const QKeyEvent& event) const;
    [[nodiscard]] const Word& next_word() const;
    [[nodiscard]] const Word& previous_word() const;

    PlaceholderCells& cells_; // owned by the document
    std::vector<Word> words_;
    std::optional<Press> press_;
    bool moved_ = false;
    std::optional<double> points_; ///< size of the type; std::nullopt means the system's
    bool has_own_font_ = false;
};

} // namespace cuedrill::platform::qt
