#include "platform/qt/qt_text_edit.h"

#include <QEvent>
#include <QMimeData>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextOption>

namespace cuedrill::platform::qt {

TextEdit::TextEdit()
{
    connect(this, &QPlainTextEdit::textChanged, this, &TextEdit::place_text);
}

void TextEdit::set_centred(bool centred)
{
    if (centred == centred_)
        return;
    centred_ = centred;
    QTextOption option = document()->defaultTextOption();
    option.setAlignment(centred ? Qt::AlignHCenter : Qt::AlignLeft);
    document()->setDefaultTextOption(option);
    place_text();
}

void TextEdit::insertFromMimeData(const QMimeData* source)
{
    QString text = source != nullptr ? source->text() : QString();
    text.remove(QChar(QChar::Null));
    // The toolkit crashes on data without any format, which an empty X11 clipboard supplies.
    if (text.isEmpty())
        return;
    QMimeData plain;
    plain.setText(text);
    QPlainTextEdit::insertFromMimeData(&plain);
}

void TextEdit::resizeEvent(QResizeEvent* event)
{
    QPlainTextEdit::resizeEvent(event);
    place_text();
}

void TextEdit::changeEvent(QEvent* event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        place_text();
}

/// Puts free space above the text. The document has no vertical alignment of its own.
void TextEdit::place_text()
{
    const QMargins margins(0, room_above(), 0, 0);
    if (margins != viewportMargins())
        setViewportMargins(margins);
}

/// The free space above a centred text, in pixels; 0 if the text does not fit.
int TextEdit::room_above() const
{
    if (!centred_ || document()->isEmpty())
        return 0;
    const int room = viewportMargins().top() + viewport()->height();
    double height = document()->documentMargin();
    for (QTextBlock block = document()->firstBlock(); block.isValid() && height <= room; block = block.next())
        height += blockBoundingRect(block).height();
    return height <= room ? static_cast<int>((room - height) / 2) : 0;
}

} // namespace cuedrill::platform::qt
