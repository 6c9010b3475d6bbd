#pragma once

#include <QLabel>
#include <QStringList>

namespace cuedrill::platform::qt {

/// The figures of the course in one line, for windows without room for more. It draws as many of them as fit, from the
/// first on; the tool tip shows them all, and the text of the label is all of them.
class FoldedFigures : public QLabel {
public:
    FoldedFigures();

    /// @param figures each with its caption, the most important first.
    void set_figures(const QStringList& figures);

    /// What is drawn at the current width.
    [[nodiscard]] QString shown_text() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QStringList figures_;
};

} // namespace cuedrill::platform::qt
