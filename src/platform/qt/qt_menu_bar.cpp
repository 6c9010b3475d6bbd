#include "platform/qt/qt_menu_bar.h"

#include "platform/qt/qt_text.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QMenu>
#include <QMenuBar>

namespace cuedrill::platform::qt {

QtMenuEntry::QtMenuEntry(QAction& action, QtActionGate& gate) : action_(action)
{
    QObject::connect(&action_, &QAction::triggered, &action_, [this] { action_.setChecked(checked_); });
    // Queued, because a command may open a modal box, and assistive technology blocks until its request is answered.
    QObject::connect(
        &action_, &QAction::triggered, &action_,
        [this, &gate] {
            if (action_.isEnabled())
                gate.run(on_click);
        },
        Qt::QueuedConnection);
}

void QtMenuEntry::set_visible(bool visible)
{
    visible_ = visible;
    action_.setVisible(visible);
}

bool QtMenuEntry::visible() const
{
    return visible_;
}

void QtMenuEntry::set_enabled(bool enabled)
{
    enabled_ = enabled;
    action_.setEnabled(enabled);
    show_caption();
}

bool QtMenuEntry::enabled() const
{
    return enabled_;
}

void QtMenuEntry::set_caption(std::string_view text)
{
    caption_ = text;
    show_caption();
}

/// A disabled entry loses its access letter, so that it does not block an enabled one with the same letter: the toolkit
/// runs no entry if two of a menu share it.
void QtMenuEntry::show_caption()
{
    const QString caption = to_qt(caption_);
    action_.setText(enabled_ ? caption : without_access_key(caption));
}

std::string QtMenuEntry::caption() const
{
    return caption_;
}

void QtMenuEntry::set_checkable(bool checkable)
{
    action_.setCheckable(checkable);
}

void QtMenuEntry::set_checked(bool checked)
{
    checked_ = checked;
    action_.setChecked(checked);
}

MenuEntry& QtMenu::add_entry(std::string_view name, std::string_view caption)
{
    QAction* action = menu_.addAction(QString());
    action->setObjectName(to_qt(name));
    action->setMenuRole(QAction::NoRole);
    entries_.push_back(std::make_unique<QtMenuEntry>(*action, gate_));
    entries_.back()->set_caption(caption);
    // A screen reader says by itself that an entry is checked, but not that it can be checked and is not.
    QObject::connect(action, &QAction::hovered, action, [action, tell = tell_] {
        if (action->isCheckable() && !action->isChecked())
            tell(QStringLiteral("not checked"));
    });
    return *entries_.back();
}

QtMenuFocus::QtMenuFocus(QMenuBar& menu_bar) : menu_bar_(menu_bar)
{
    menu_bar_.installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, &QtMenuFocus::note_focus);
}

void QtMenuFocus::note_focus(QWidget* before, QWidget* now)
{
    if (now == &menu_bar_ && before != nullptr && before->window() == menu_bar_.window())
        before_ = before;
}

bool QtMenuFocus::eventFilter(QObject* watched, QEvent* event)
{
    // On a menu's shortcut, the bar remembers the focus widget to return to. That must not be the bar itself.
    if (event->type() == QEvent::Shortcut && menu_bar_.hasFocus() && before_ != nullptr)
        before_->setFocus(Qt::MenuBarFocusReason);
    return QObject::eventFilter(watched, event);
}

Menu& QtMenuBar::add_menu(std::string_view name, std::string_view caption)
{
    QMenu* menu = menu_bar_.addMenu(to_qt(caption));
    menu->setObjectName(to_qt(name));
    menu->setAccessibleName(menu->title().remove(QLatin1Char('&')));
    menus_.push_back(std::make_unique<QtMenu>(*menu, gate_, tell_));
    return *menus_.back();
}

} // namespace cuedrill::platform::qt
