#include "platform/qt/qt_text_box.h"

#include "platform/qt/qt_look.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/qt_text_edit.h"

#include <QFontDatabase>
#include <QTextCursor>
#include <QTextDocument>

namespace cuedrill::platform::qt {

namespace {

/// Whether the name stands for the system's fixed-pitch font: its general name, or a font that is not installed.
bool is_systems_fixed_font(const std::string& name)
{
    constexpr std::string_view general_name = "FixedSys";
    constexpr std::string_view often_missing = "Courier New";
    return name == general_name || (name == often_missing && !QFontDatabase::hasFamily(to_qt(name)));
}

} // namespace

QtTextBox::QtTextBox(const char* name, QtActionGate& gate, QtKeyFilter& keys)
    : QtTextBox(name, gate, keys, *new TextEdit)
{
}

QtTextBox::QtTextBox(const char* name, QtActionGate& gate, QtKeyFilter& keys, TextEdit& edit)
    : QtControl(edit, name), edit_(edit)
{
    set_up_text_area(edit_);
    keys.add(edit_, [this, &gate](const KeyPress& press) { return swallows(on_key, press, gate); });
}

void QtTextBox::set_text(std::string_view text)
{
    edit_.setPlainText(to_qt(text));
}

std::string QtTextBox::text() const
{
    return from_qt(lines());
}

void QtTextBox::clear()
{
    QTextCursor cursor(edit_.document());
    cursor.select(QTextCursor::Document);
    cursor.removeSelectedText();
}

QString QtTextBox::lines() const
{
    // The raw text, because toPlainText() turns no-break spaces into ordinary ones. Its lines end with U+2029, or with
    // U+2028 after Shift+Enter.
    QString raw = edit_.document()->toRawText();
    raw.replace(QChar(QChar::ParagraphSeparator), QLatin1Char('\n'));
    raw.replace(QChar(QChar::LineSeparator), QLatin1Char('\n'));
    return with_cr_lf(raw);
}

std::size_t QtTextBox::caret() const
{
    return to_place(lines(), edit_.textCursor().selectionStart());
}

void QtTextBox::set_caret(std::size_t place)
{
    QTextCursor cursor(edit_.document());
    cursor.setPosition(to_position(lines(), place));
    edit_.setTextCursor(cursor);
}

void QtTextBox::insert(std::size_t place, std::string_view text)
{
    QTextCursor cursor(edit_.document());
    cursor.setPosition(to_position(lines(), place));
    // An undo step of its own, so that undo does not also remove what was typed before.
    cursor.beginEditBlock();
    cursor.insertText(to_qt(text));
    cursor.endEditBlock();
    edit_.setTextCursor(cursor);
}

void QtTextBox::set_name(std::string_view name)
{
    edit_.setAccessibleName(to_qt(name));
}

void QtTextBox::set_background(std::optional<common::Colour> colour)
{
    set_fixed_background(edit_, colour);
}

void QtTextBox::set_font(const Font& font)
{
    font_ = font;
    apply_font();
}

void QtTextBox::set_scale(double scale)
{
    if (scale == scale_)
        return;
    scale_ = scale;
    if (font_)
        apply_font();
}

void QtTextBox::apply_font()
{
    QFont wanted = is_systems_fixed_font(font_->name) ? QFontDatabase::systemFont(QFontDatabase::FixedFont)
                                                      : QFont(to_qt(font_->name));
    wanted.setPointSizeF(font_->points * scale_);
    wanted.setBold(font_->bold);
    edit_.setFont(wanted);
}

void QtTextBox::set_locked(bool locked)
{
    edit_.setReadOnly(locked);
    if (locked)
        edit_.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    edit_.set_centred(locked && centred_when_locked_);
}

void QtTextBox::centre_when_locked()
{
    centred_when_locked_ = true;
    edit_.set_centred(edit_.isReadOnly());
}

QPlainTextEdit& QtTextBox::widget()
{
    return edit_;
}

void QtTextBox::set_focus()
{
    edit_.setFocus(Qt::OtherFocusReason);
}

bool QtTextBox::has_focus() const
{
    return holds_focus();
}

} // namespace cuedrill::platform::qt
