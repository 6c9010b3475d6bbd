#include "platform/qt/qt_menu_bar.h"

#include "platform/qt/qt_text.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QMenu>
#include <QMenuBar>

namespace cuedrill::platform::qt {

QtMenuEntry::QtMenuEntry(QAction& action, QtActionGate& gate) : m_action(action)
{
    QObject::connect(&m_action, &QAction::triggered, &m_action, [this] { m_action.setChecked(m_checked); });
    // Later, because a command may open a box: assistive technology waits for the answer to its request meanwhile.
    QObject::connect(
        &m_action, &QAction::triggered, &m_action,
        [this, &gate] {
            if (m_action.isEnabled())
                gate.run(on_click);
        },
        Qt::QueuedConnection);
}

void QtMenuEntry::set_visible(bool visible)
{
    m_visible = visible;
    m_action.setVisible(visible);
}

bool QtMenuEntry::visible() const
{
    return m_visible;
}

void QtMenuEntry::set_enabled(bool enabled)
{
    m_enabled = enabled;
    m_action.setEnabled(enabled);
    show_caption();
}

bool QtMenuEntry::enabled() const
{
    return m_enabled;
}

void QtMenuEntry::set_caption(std::string_view text)
{
    m_caption = text;
    show_caption();
}

/// The letter of a disabled entry does nothing, and must not stand in the way of an enabled one with the same letter:
/// the toolkit chooses no entry while two of a menu have it.
void QtMenuEntry::show_caption()
{
    const QString caption = to_qt(m_caption);
    m_action.setText(m_enabled ? caption : without_access_key(caption));
}

std::string QtMenuEntry::caption() const
{
    return m_caption;
}

void QtMenuEntry::set_checkable(bool checkable)
{
    m_action.setCheckable(checkable);
}

void QtMenuEntry::set_checked(bool checked)
{
    m_checked = checked;
    m_action.setChecked(checked);
}

MenuEntry& QtMenu::add_entry(std::string_view name, std::string_view caption)
{
    QAction* action = m_menu.addAction(QString());
    action->setObjectName(to_qt(name));
    action->setMenuRole(QAction::NoRole);
    m_entries.push_back(std::make_unique<QtMenuEntry>(*action, m_gate));
    m_entries.back()->set_caption(caption);
    return *m_entries.back();
}

QtMenuFocus::QtMenuFocus(QMenuBar& menu_bar) : m_menu_bar(menu_bar)
{
    m_menu_bar.installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, &QtMenuFocus::note_focus);
}

void QtMenuFocus::note_focus(QWidget* before, QWidget* now)
{
    if (now == &m_menu_bar && before != nullptr && before->window() == m_menu_bar.window())
        m_before = before;
}

bool QtMenuFocus::eventFilter(QObject* watched, QEvent* event)
{
    // On the shortcut of a menu the bar takes the widget with the focus for the place to go back to. That must not be
    // the bar itself.
    if (event->type() == QEvent::Shortcut && m_menu_bar.hasFocus() && m_before != nullptr)
        m_before->setFocus(Qt::MenuBarFocusReason);
    return QObject::eventFilter(watched, event);
}

Menu& QtMenuBar::add_menu(std::string_view name, std::string_view caption)
{
    QMenu* menu = m_menu_bar.addMenu(to_qt(caption));
    menu->setObjectName(to_qt(name));
    menu->setAccessibleName(menu->title().remove(QLatin1Char('&')));
    m_menus.push_back(std::make_unique<QtMenu>(*menu, m_gate));
    return *m_menus.back();
}

} // namespace cuedrill::platform::qt
