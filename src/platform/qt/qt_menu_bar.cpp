#include "platform/qt/qt_menu_bar.h"

#include "platform/qt/qt_text.h"

#include <QAction>
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
}

bool QtMenuEntry::enabled() const
{
    return m_enabled;
}

void QtMenuEntry::set_caption(std::string_view text)
{
    m_caption = text;
    m_action.setText(to_qt(text));
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

Menu& QtMenuBar::add_menu(std::string_view name, std::string_view caption)
{
    QMenu* menu = m_menu_bar.addMenu(to_qt(caption));
    menu->setObjectName(to_qt(name));
    menu->setAccessibleName(menu->title().remove(QLatin1Char('&')));
    m_menus.push_back(std::make_unique<QtMenu>(*menu, m_gate));
    return *m_menus.back();
}

} // namespace cuedrill::platform::qt
