#include "platform/qt/qt_hint_box.h"

#include "platform/qt/qt_text.h"

namespace cuedrill::platform::qt {

QtHintBox::QtHintBox(const char* name, QtActionGate& gate, QtKeyFilter& keys)
    : QtHintBox(name, gate, keys, *new HintEdit)
{
}

QtHintBox::QtHintBox(const char* name, QtActionGate& gate, QtKeyFilter& keys, HintEdit& edit)
    : QtControl(edit, name), m_edit(edit)
{
    m_edit.clicked = [this, &gate] { gate.run(on_click); };
    keys.add_control(m_edit, [this, &gate](const KeyPress& press) { return swallows(on_key, press, gate); });
}

void QtHintBox::set_text(std::string_view text)
{
    m_text = text;
    m_edit.show_text(to_qt(text));
}

std::string QtHintBox::text() const
{
    return m_text;
}

void QtHintBox::set_words(std::vector<common::TextRange> words)
{
    const QString text = QString::fromStdString(m_text);
    std::vector<HintEdit::Word> positions;
    positions.reserve(words.size());
    for (const common::TextRange& word : words)
        positions.push_back({to_position(text, word.begin), to_position(text, word.end)});
    m_edit.set_words(std::move(positions));
}

std::optional<std::size_t> QtHintBox::caret() const
{
    const std::optional<int> position = m_edit.caret();
    if (!position)
        return std::nullopt;
    return to_place(QString::fromStdString(m_text), *position);
}

void QtHintBox::set_name(std::string_view name)
{
    m_edit.setAccessibleName(to_qt(name));
}

void QtHintBox::set_focus()
{
    m_edit.setFocus(Qt::OtherFocusReason);
}

bool QtHintBox::has_focus() const
{
    return holds_focus();
}

} // namespace cuedrill::platform::qt
