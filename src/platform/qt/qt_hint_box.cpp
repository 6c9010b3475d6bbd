#include "platform/qt/qt_hint_box.h"

#include "platform/qt/qt_text.h"

namespace cuedrill::platform::qt {

QtHintBox::QtHintBox(const char* name, QtActionGate& gate, QtKeyFilter& keys)
    : QtHintBox(name, gate, keys, *new HintEdit)
{
}

QtHintBox::QtHintBox(const char* name, QtActionGate& gate, QtKeyFilter& keys, HintEdit& edit)
    : QtControl(edit, name), edit_(edit)
{
    edit_.clicked = [this, &gate] { gate.run(on_click); };
    keys.add(edit_, [this, &gate](const KeyPress& press) { return swallows(on_key, press, gate); });
}

void QtHintBox::set_text(std::string_view text)
{
    text_ = text;
    edit_.show_text(to_qt(text));
}

std::string QtHintBox::text() const
{
    return text_;
}

void QtHintBox::set_words(std::vector<common::TextRange> words)
{
    const QString text = QString::fromStdString(text_);
    std::vector<HintEdit::Word> positions;
    positions.reserve(words.size());
    for (const common::TextRange& word : words)
        positions.push_back({to_position(text, word.begin), to_position(text, word.end)});
    edit_.set_words(std::move(positions));
}

std::optional<std::size_t> QtHintBox::caret() const
{
    const std::optional<int> position = edit_.caret();
    if (!position)
        return std::nullopt;
    return to_place(QString::fromStdString(text_), *position);
}

void QtHintBox::set_name(std::string_view name)
{
    edit_.setAccessibleName(to_qt(name));
}

void QtHintBox::set_focus()
{
    edit_.setFocus(Qt::OtherFocusReason);
}

bool QtHintBox::has_focus() const
{
    return holds_focus();
}

} // namespace cuedrill::platform::qt
