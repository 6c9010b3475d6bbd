#include "platform/qt/qt_text_box.h"

#include "platform/qt/qt_look.h"
#include "platform/qt/qt_text.h"

#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QTextDocument>
#include <QTextOption>

namespace cuedrill::platform::qt {

namespace {

constexpr std::string_view fixed_pitch_name = "FixedSys";
constexpr double text_margin = 6.0;

} // namespace

QtTextBox::QtTextBox(const char* name, QtGuard& guard) : QtTextBox(name, guard, *new QPlainTextEdit)
{
}

QtTextBox::QtTextBox(const char* name, QtGuard& guard, QPlainTextEdit& edit)
    : QtControl(edit, name), m_edit(edit), m_watcher(edit, [this, &guard](QEvent::Type event) {
          if (on_focus && (event == QEvent::FocusIn || event == QEvent::FocusOut))
              guard.run([this, event] { on_focus(event == QEvent::FocusIn); });
      })
{
    m_edit.setFrameShape(QFrame::NoFrame);
    m_edit.setTabChangesFocus(true);
    m_edit.setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_edit.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_edit.document()->setDocumentMargin(text_margin);
    m_edit.setMinimumSize(120, 72);
}

void QtTextBox::set_text(std::string_view text)
{
    m_edit.setPlainText(to_qt(text));
}

std::string QtTextBox::text() const
{
    // The raw text, because the plain one turns no-break spaces into ordinary ones. Its lines end with U+2029, and with
    // U+2028 where Shift+Enter was pressed.
    QString raw = m_edit.document()->toRawText();
    raw.replace(QChar(QChar::ParagraphSeparator), QLatin1Char('\n'));
    raw.replace(QChar(QChar::LineSeparator), QLatin1Char('\n'));
    return from_qt_lines(raw);
}

void QtTextBox::set_name(std::string_view name)
{
    m_edit.setAccessibleName(to_qt(name));
}

void QtTextBox::set_background(std::optional<common::Colour> colour)
{
    set_fixed_background(m_edit, colour);
}

void QtTextBox::set_font(const Font& font)
{
    QFont wanted =
        font.name == fixed_pitch_name ? QFontDatabase::systemFont(QFontDatabase::FixedFont) : QFont(to_qt(font.name));
    wanted.setPointSize(font.points);
    wanted.setBold(font.bold);
    m_edit.setFont(wanted);
}

void QtTextBox::set_locked(bool locked)
{
    m_edit.setReadOnly(locked);
    if (locked)
        m_edit.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

} // namespace cuedrill::platform::qt
