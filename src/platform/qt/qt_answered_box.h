#pragma once

#include <QMessageBox>
#include <QSize>

class QLabel;
class QPlainTextEdit;
class QScrollArea;

namespace cuedrill::platform::qt {

/// A message box that ignores letters. The toolkit takes a bare "y" for Yes, even if the user was typing text when the
/// box appeared. Where it is too large for the screen, its details give way and its text scrolls; so does a word that
/// is wider.
class AnsweredBox : public QMessageBox {
public:
    AnsweredBox(QWidget* parent, bool must_be_answered);

    /// Shows a longer text below, in which the keyboard and assistive technology can move. Call this once.
    /// @param name of the text for assistive technology.
    void add_details(const QString& text, const QString& name);

    /// Shows the main text; null if the toolkit has built the box in another way.
    [[nodiscard]] QLabel* text_label() const;

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    [[nodiscard]] bool is_word_cut() const;
    void fit(QSize room);
    void let_text_scroll();

    bool must_be_answered_;
    QPlainTextEdit* details_ = nullptr;
    QScrollArea* area_ = nullptr; ///< contains a text that is too high
    QSize fitted_;                ///< the size of a box that would be too large; else empty
};

} // namespace cuedrill::platform::qt
