#include "platform/qt/qt_list_box.h"

#include "platform/qt/qt_text.h"

namespace cuedrill::platform::qt {
namespace {

int row_of(std::optional<std::size_t> line)
{
    return line ? static_cast<int>(*line) : LineView::no_row;
}

} // namespace

QtListBox::QtListBox(const char* name, QtActionGate& gate, QtKeyFilter& keys)
    : QtListBox(name, gate, keys, *new LineView)
{
}

QtListBox::QtListBox(const char* name, QtActionGate& gate, QtKeyFilter& keys, LineView& view)
    : QtControl(view, name), view_(view)
{
    view_.chosen = [this, &gate](const std::string& line) {
        gate.run([&] {
            if (on_click)
                on_click(line);
        });
    };
    keys.add(view_, [this](const KeyPress& press) { return take_key(press); });
}

bool QtListBox::take_key(const KeyPress& press)
{
    const bool chooses = press.key == Key::enter || press.character == " ";
    if (!chooses)
        return false;
    if (!press.auto_repeat)
        view_.choose(view_.currentIndex().row());
    return true;
}

void QtListBox::set_lines(std::vector<std::string> lines)
{
    view_.show_lines(std::move(lines));
}

void QtListBox::replace_lines(std::vector<std::string> lines, std::optional<std::size_t> marked)
{
    view_.replace_lines(std::move(lines), row_of(marked));
}

void QtListBox::mark_line(std::optional<std::size_t> line)
{
    view_.mark(row_of(line));
}

void QtListBox::set_name(std::string_view name)
{
    view_.setAccessibleName(to_qt(name));
}

void QtListBox::set_focus()
{
    view_.setFocus(Qt::OtherFocusReason);
}

bool QtListBox::has_focus() const
{
    return holds_focus();
}

} // namespace cuedrill::platform::qt
