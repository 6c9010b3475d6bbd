#pragma once

#include <QPlainTextEdit>
#include <QSyntaxHighlighter>
#include <QTextBlock>
#include <QTextLine>
#include <functional>
#include <optional>
#include <vector>

namespace cuedrill::platform::qt {

/// Keeps one cell free for each placeholder in a document with a fixed-pitch font, whatever the font draws for it.
class PlaceholderCells : public QSyntaxHighlighter {
public:
    explicit PlaceholderCells(QTextDocument& document) : QSyntaxHighlighter(&document) {}

    /// To be called when the font of the document has changed.
    void set_font(const QFont& font);

protected:
    void highlightBlock(const QString& text) override;

private:
    QTextCharFormat format_;
};

/// Shows text that cannot be changed, and draws placeholders in it. The cursor keys go from word to word. Positions are
/// those of the document.
class HintEdit : public QPlainTextEdit {
public:
    struct Word {
        int begin;
        int end;
    };

    HintEdit();

    void show_text(const QString& text);
    /// Lets the cursor keys go to these words, in order, until other text is shown; without any they move the caret.
    void set_words(std::vector<Word> words) { words_ = std::move(words); }
    /// Where the caret stands, or a selection begins; nothing as long as nobody has moved the caret.
    [[nodiscard]] std::optional<int> caret() const;

    /// The character that is drawn at `point` of the viewport.
    [[nodiscard]] std::optional<int> character_at(QPointF point) const;

    /// The left button went down and up on the text without dragging, with the caret now before that character.
    std::function<void()> clicked;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    /// Does nothing: the first press may have changed what is under the pointer.
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void doSetTextCursor(const QTextCursor& cursor) override;

private:
    struct Press {
        int character;
        QPointF point;
    };

    /// Calls `told` with each line that is seen and the origin of its coordinates in the viewport.
    void for_each_line(const std::function<void(const QTextBlock&, const QTextLine&, QPointF)>& told) const;
    void paint_placeholder(QPainter& painter, const QRectF& cell, double base_line, bool selected) const;
    /// The word that a key leads to; null when it leads to none.
    [[nodiscard]] const Word* word_of_key(const QKeyEvent& event) const;
    [[nodiscard]] const Word& next_word() const;
    [[nodiscard]] const Word& previous_word() const;

    PlaceholderCells& cells_; // the document's
    std::vector<Word> words_;
    std::optional<Press> press_;
    bool moved_ = false;
};

} // namespace cuedrill::platform::qt
