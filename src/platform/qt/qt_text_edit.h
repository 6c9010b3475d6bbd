#pragma once

#include <QPlainTextEdit>

namespace cuedrill::platform::qt {

/// A text edit that drops NUL characters from pasted or dropped text, as an import does, and that can show its text in
/// the middle.
class TextEdit : public QPlainTextEdit {
public:
    TextEdit();

    /// Whether the text stands in the middle, both ways. A text that is higher than the edit begins at the top and
    /// scrolls.
    void set_centred(bool centred);
    [[nodiscard]] bool centred() const { return centred_; }

protected:
    void insertFromMimeData(const QMimeData* source) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void place_text();
    [[nodiscard]] int room_above() const;

    bool centred_ = false;
};

} // namespace cuedrill::platform::qt
